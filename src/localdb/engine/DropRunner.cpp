#include <algorithm>

#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableChange.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/tsql/DropObject.h"

namespace quarv::localdb::engine {

namespace {

struct KindWords {
    tsql::DropKind kind;
    const char16_t* type;       // of q_objects
    const char16_t* statement;  // DROP ...
    const char16_t* noun;       // as messages call it
};

constexpr KindWords Kinds[] = {
    {tsql::DropKind::Table, u"U", u"TABLE", u"table"},
    {tsql::DropKind::View, u"V", u"VIEW", u"view"},
    {tsql::DropKind::Procedure, u"P", u"PROCEDURE", u"procedure"},
    {tsql::DropKind::Database, u"", u"DATABASE", u"database"},
    {tsql::DropKind::Index, u"", u"INDEX", u"index"},
};

const KindWords& WordsOf(tsql::DropKind kind) {
    return Kinds[static_cast<size_t>(kind)];
}

[[noreturn]] void RaiseMissing(const KindWords& words, const QString& name, int line) {
    throw SqlError(3701, {QStringLiteral("drop"), QString::fromUtf16(words.noun), name}, line);
}

// An object of that name, but of another kind.
[[noreturn]] void RaiseOtherKind(const KindWords& words, const ObjectInfo& object, int line) {
    for (const KindWords& other : Kinds) {
        if (object.type != QStringView(other.type)) continue;
        throw SqlError(3705,
                       {QString::fromUtf16(words.statement), object.name, object.name,
                        QString::fromUtf16(other.noun), QString::fromUtf16(other.statement)},
                       line);
    }
    RaiseMissing(words, object.name, line);
}

// A key of another table that refers to it keeps it.
void DropTable(const ObjectInfo& object, Store& store, Metadata& metadata) {
    TableInfo table = metadata.LoadTable(object);
    metadata.LoadConstraints(table);
    for (const ForeignKeyInfo& key : table.references) {
        if (!key.IsWithinTable()) throw SqlError(3726, {object.name});
    }
    TableStorage(store, metadata).Drop(table);
}

void DropSchemaObject(const tsql::DropObject& node, const tsql::ObjectName& name, Frame& frame) {
    const KindWords& words = WordsOf(node.kind);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(name);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (!object) {
        if (node.ifExists) return;
        RaiseMissing(words, name.ToText(), name.line);
    }
    if (object->type != QStringView(words.type)) RaiseOtherKind(words, *object, name.line);
    if (node.kind == tsql::DropKind::Table) DropTable(*object, session.store, metadata);
    metadata.RemoveObject(object->id);
    writing.Commit();
}

// Raises SqlError 3723 where a constraint rests on the index.
void CheckIndexIsFree(const TableInfo& table, const IndexInfo& index, const QString& full,
                      int line) {
    if (index.constraintId != 0) {
        const QString kind =
            index.primary ? QStringLiteral("PRIMARY KEY") : QStringLiteral("UNIQUE KEY");
        throw SqlError(3723, {full, kind}, line);
    }
    for (const ForeignKeyInfo& key : table.references) {
        if (key.keyIndex != index.id) continue;
        throw SqlError(3723, {full, QStringLiteral("FOREIGN KEY")}, line);
    }
}

void DropIndex(const tsql::DropObject& node, const tsql::DropObject::Target& target, Frame& frame) {
    const KindWords& words = WordsOf(node.kind);
    SessionState& session = frame.Session();
    const QString full = target.table.ToText() + u'.' + target.name.name;
    const int line = target.name.line;
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(target.table);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const std::optional<ObjectInfo> object = metadata.Find(target.table.schema, target.table.name);
    TableInfo table;
    if (object && object->type == u"U") table = metadata.LoadTable(*object);
    const IndexInfo* found = table.FindIndex(target.name.name);
    if (!found) {
        if (node.ifExists) return;
        RaiseMissing(words, full, line);
    }
    metadata.LoadConstraints(table);
    CheckIndexIsFree(table, *found, full, line);
    if (found->storageKey) {
        TableInfo after = table;
        std::erase_if(after.indexes, [&found](const auto& other) { return other.id == found->id; });
        TableChange(frame, metadata, table).Rebuild(after);
    } else {
        TableStorage(session.store, metadata).DropIndex(table, *found);
    }
    metadata.RemoveIndex(table.object.id, found->id);
    metadata.Touch(table.object.id);
    writing.Commit();
}

void DropDatabase(const tsql::DropObject& node, const tsql::ObjectName& name, Frame& frame) {
    SessionState& session = frame.Session();
    if (session.transactions.Count() > 0) throw SqlError(226, {QStringLiteral("DROP DATABASE")});
    if (node.ifExists && !session.databases.Find(name.name)) return;
    if (const std::optional<DatabaseEntry> entry = session.databases.Find(name.name)) {
        if (entry->id != session.database.id) session.store.Detach(entry->id);
    }
    session.databases.Drop(name.name);
}

void DropTarget(const tsql::DropObject& node, const tsql::DropObject::Target& target,
                Frame& frame) {
    switch (node.kind) {
        case tsql::DropKind::Index:
            DropIndex(node, target, frame);
            break;
        case tsql::DropKind::Database:
            DropDatabase(node, target.name, frame);
            break;
        default:
            DropSchemaObject(node, target.name, frame);
    }
}

// One object that cannot go keeps none of the others.
bool ConcernsOneTarget(int number) {
    return number == 3701 || number == 3705 || number == 3723 || number == 3726;
}

}  // namespace

void RunDrop(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::DropObject&>(statement);
    std::optional<ErrorSummary> failed;
    for (const tsql::DropObject::Target& target : node.targets) {
        try {
            DropTarget(node, target, frame);
        } catch (const SqlError& error) {
            if (!ConcernsOneTarget(error.Number())) throw;
            ErrorSummary summary(error);
            if (failed) summary.After(*failed);
            failed.emplace(summary);
        }
    }
    if (failed) throw *failed;
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
