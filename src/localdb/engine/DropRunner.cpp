#include "localdb/engine/StatementRunner.h"
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
    if (node.kind == tsql::DropKind::Table) {
        TableStorage(session.store, metadata).Drop(metadata.LoadTable(*object));
    }
    metadata.RemoveObject(object->id);
    writing.Commit();
}

void DropIndex(const tsql::DropObject& node, const tsql::DropObject::Target& target, Frame& frame) {
    const KindWords& words = WordsOf(node.kind);
    SessionState& session = frame.Session();
    const QString full = target.table.ToText() + u'.' + target.name.name;
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(target.table);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const std::optional<ObjectInfo> object = metadata.Find(target.table.schema, target.table.name);
    if (!object || object->type != u"U") RaiseMissing(words, full, target.name.line);
    const TableInfo table = metadata.LoadTable(*object);
    for (const IndexInfo& index : table.indexes) {
        if (!SameName(index.name, target.name.name)) continue;
        if (index.constraintId != 0) {
            const QString kind =
                index.primary ? QStringLiteral("PRIMARY KEY") : QStringLiteral("UNIQUE KEY");
            throw SqlError(3723, {full, kind}, target.name.line);
        }
        TableStorage(session.store, metadata).DropIndex(table, index);
        metadata.RemoveIndex(table.object.id, index.id);
        writing.Commit();
        return;
    }
    if (!node.ifExists) RaiseMissing(words, full, target.name.line);
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

}  // namespace

void RunDrop(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::DropObject&>(statement);
    for (const tsql::DropObject::Target& target : node.targets) {
        if (node.kind == tsql::DropKind::Index) {
            DropIndex(node, target, frame);
        } else if (node.kind == tsql::DropKind::Database) {
            DropDatabase(node, target.name, frame);
        } else {
            DropSchemaObject(node, target.name, frame);
        }
    }
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
