#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableBuilder.h"
#include "localdb/engine/TableChange.h"
#include "localdb/engine/TableMaker.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/CreateDatabase.h"
#include "localdb/tsql/CreateIndex.h"
#include "localdb/tsql/CreateProcedure.h"
#include "localdb/tsql/CreateTable.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/ExpressionText.h"

namespace quarv::localdb::engine {

namespace {

constexpr int FirstUserSchema = 5;

void Done(ResultSink& sink) {
    sink.StatementDone(StatementKind::Other, -1, false);
}

// The system's own schemas take no objects.
ObjectInfo NewObject(Metadata& metadata, const tsql::ObjectName& name, const QString& type) {
    const std::optional<int> schema = metadata.FindSchema(name.schema);
    const bool system = schema && *schema > Metadata::DboSchema && *schema < FirstUserSchema;
    if (!schema || system) throw SqlError(2760, {name.schema}, name.line);
    ObjectInfo object;
    object.schemaId = *schema;
    object.schema = *schema == Metadata::DboSchema ? QStringLiteral("dbo") : name.schema;
    object.name = name.name;
    object.type = type;
    return object;
}

// The columns of a view as the catalogue shows them.
void StoreViewColumns(Metadata& metadata, int64_t objectId, const tsql::CreateView& view,
                      const BoundQuery& query) {
    const QString& name = view.name.name;
    if (!view.columns.empty() && view.columns.size() != query.columns.size()) {
        const bool more = view.columns.size() > query.columns.size();
        throw SqlError(more ? 4502 : 8158, {name});
    }
    std::vector<ColumnInfo> columns;
    for (size_t i = 0; i < query.columns.size(); ++i) {
        ColumnInfo column;
        column.id = static_cast<int>(i) + 1;
        column.name = view.columns.empty() ? query.columns[i].name : view.columns[i];
        column.type = query.columns[i].type;
        column.nullable = query.columns[i].nullable;
        if (column.name.isEmpty()) throw SqlError(4511, {QString::number(column.id)});
        for (const ColumnInfo& other : columns) {
            if (SameName(other.name, column.name)) throw SqlError(4506, {column.name, name});
        }
        columns.push_back(column);
        metadata.AddColumn(objectId, column);
    }
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
    TableInfo table = TableBuilder(node, frame, metadata).Build(object.id, object);
    TableMaker(session.store, metadata).Create(table);
    writing.Commit();
    Done(sink);
}

void RunCreateView(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateView&>(statement);
    SessionState& session = frame.Session();
    if (!node.name.database.isEmpty()) throw SqlError(166, {QStringLiteral("CREATE/ALTER VIEW")});
    BindContext context = frame.NewContext();
    Metadata metadata = context.CurrentMetadata();
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    ObjectInfo object = NewObject(metadata, node.name, QStringLiteral("V"));
    object.definition = node.source;
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> query = binder.BindSub(*node.query);
    const int64_t id = metadata.AddObject(object);
    StoreViewColumns(metadata, id, node, *query);
    writing.Commit();
    Done(sink);
}

void RunCreateProcedure(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::CreateProcedure&>(statement);
    SessionState& session = frame.Session();
    if (!node.name.database.isEmpty()) {
        throw SqlError(166, {QStringLiteral("CREATE/ALTER PROCEDURE")});
    }
    Metadata metadata(session.store, frame.Database());
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    ObjectInfo object = NewObject(metadata, node.name, QStringLiteral("P"));
    object.definition = node.source;
    const int64_t id = metadata.AddObject(object);
    int number = 0;
    VariableTable names;
    for (const tsql::ParameterDefinition& definition : node.parameters) {
        ParameterInfo parameter;
        parameter.name = definition.name;
        parameter.type = BindType(definition.type, ++number);
        names.Declare(parameter.name, parameter.type);
        parameter.output = definition.output;
        if (definition.defaultValue) {
            parameter.defaultText = tsql::DefaultText(*definition.defaultValue);
        }
        metadata.AddParameter(id, number, parameter);
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
    TableStorage(session.store, metadata).CreateIndex(table, index);
    writing.Commit();
    Done(sink);
}

}  // namespace quarv::localdb::engine
