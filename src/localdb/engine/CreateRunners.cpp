#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/NewObject.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableBuilder.h"
#include "localdb/engine/TableChange.h"
#include "localdb/engine/TableMaker.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/tsql/CreateDatabase.h"
#include "localdb/tsql/CreateIndex.h"
#include "localdb/tsql/CreateTable.h"

namespace quarv::localdb::engine {

namespace {

void Done(ResultSink& sink) {
    sink.StatementDone(StatementKind::Other, -1, false);
}

TableInfo FindTable(Metadata& metadata, const tsql::ObjectName& name) {
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (!object || object->type != u"U") throw SqlError(1088, {name.ToText()}, name.line);
    return metadata.LoadTable(*object);
}

}  // namespace

void RunCreateDatabase(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateDatabase&>(statement);
    if (frame.Session().transactions.Count() > 0) {
        throw SqlError(226, {QStringLiteral("CREATE DATABASE")});
    }
    frame.Session().databases.Create(node.name);
    Done(sink);
}

void RunCreateTable(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateTable&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(node.name);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    ObjectInfo object = NewObject(metadata, node.name, QStringLiteral("U"));
    object.id = metadata.NextObjectId();
    if (TemporaryTables::IsTemporary(object.name)) {
        if (!node.foreignKeys.empty()) {
            throw SqlError(40517, {QStringLiteral("FOREIGN KEY of a temporary table")});
        }
        session.temporaries.Name(object, metadata, session.nestLevel);
    } else if (metadata.Find(object.schema, object.name)) {
        throw SqlError(2714, {object.name});
    }
    try {
        TableInfo table = TableBuilder(node, frame, metadata).Build(object.id, object);
        TableMaker(session.store, metadata).Create(table);
    } catch (const SqlError& error) {
        throw ErrorSummary::OfConstraint(error);
    }
    writing.Commit();
    Done(sink);
}

void RunCreateIndex(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateIndex&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(node.table);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const TableInfo before = FindTable(metadata, node.table);
    TableInfo table = before;
    IndexInfo index = BuildIndex(frame, table, node.index, node.table.ToText());
    TableChange(frame, metadata, before).StoreComputed(table);
    TableMaker(session.store, metadata).AddIndex(table, index);
    try {
        TableStorage(session.store, metadata).CreateIndex(table, index);
    } catch (const SqlError& error) {
        if (error.Number() != 1505) throw;
        throw ErrorSummary(error).EndingStatement();
    }
    writing.Commit();
    Done(sink);
}

}  // namespace quarv::localdb::engine
