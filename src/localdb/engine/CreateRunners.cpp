#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableBuilder.h"
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

void Done(ResultSink& sink) {
    sink.StatementDone(StatementKind::Other, -1, false);
}

// Only dbo takes new objects.
ObjectInfo NewObject(Metadata& metadata, const tsql::ObjectName& name, const QString& type) {
    const std::optional<int> schema = metadata.FindSchema(name.schema);
    if (!schema || *schema != Metadata::DboSchema) throw SqlError(2760, {name.schema}, name.line);
    ObjectInfo object;
    object.schemaId = *schema;
    object.schema = QStringLiteral("dbo");
    object.name = name.name;
    object.type = type;
    return object;
}

// A temporary table hides one of the same name that an outer level made, and no other.
void NameTemporary(ObjectInfo& object, int64_t id, Metadata& metadata, SessionState& session) {
    if (!TemporaryTables::IsTemporary(object.name)) return;
    const std::optional<ObjectInfo> same = metadata.Find(object.schema, object.name);
    if (same && session.temporaries.IsOfLevel(same->id, session.nestLevel)) {
        throw SqlError(2714, {object.name});
    }
    object.name = TemporaryTables::StoredName(object.name, id);
    session.temporaries.Made(id, session.nestLevel);
}

ObjectInfo Constraint(const QString& name, const QString& type, const QString& definition) {
    ObjectInfo object;
    object.schema = QStringLiteral("dbo");
    object.name = name;
    object.type = type;
    object.definition = definition;
    return object;
}

void StoreTable(Metadata& metadata, TableInfo& table, const TableBuilder& builder) {
    metadata.AddObject(table.object);
    for (size_t i = 0; i < table.columns.size(); ++i) {
        ColumnInfo& column = table.columns[i];
        if (!column.defaultText.isEmpty()) {
            column.defaultId = metadata.AddObject(
                Constraint(builder.DefaultName(table, i), QStringLiteral("D"), column.defaultText),
                table.object.id);
        }
        metadata.AddColumn(table.object.id, column);
    }
    if (table.identity) metadata.AddIdentity(table.object.id, *table.identity);
    for (IndexInfo& index : table.indexes) {
        const QString type = index.primary ? QStringLiteral("PK") : QStringLiteral("UQ");
        index.constraintId =
            metadata.AddObject(Constraint(index.name, type, QString()), table.object.id);
        metadata.AddIndex(table.object.id, index);
    }
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

IndexInfo BuildIndex(const tsql::CreateIndex& node, const TableInfo& table) {
    IndexInfo index;
    index.name = node.name;
    index.unique = node.unique;
    index.clustered = node.clustered;
    index.id = 1;
    for (const IndexInfo& other : table.indexes) {
        if (SameName(other.name, node.name)) {
            throw SqlError(1913, {node.name, node.table.ToText()});
        }
        if (node.clustered && other.clustered) {
            throw SqlError(1902, {node.table.ToText(), other.name});
        }
        index.id = std::max(index.id, other.id);
    }
    index.id = node.clustered ? 1 : index.id + 1;
    for (const tsql::KeyColumn& key : node.keys) {
        const ColumnInfo& column = FindKeyColumn(table, key.name);
        for (const IndexInfo::Key& other : index.keys) {
            if (other.columnId == column.id) throw SqlError(1909, {key.name});
        }
        index.keys.push_back({column.id, key.descending});
    }
    return index;
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
    const int64_t id = metadata.NextObjectId();
    NameTemporary(object, id, metadata, session);
    TableBuilder builder(node, context);
    TableInfo table = builder.Build(id, object);
    StoreTable(metadata, table, builder);
    TableStorage(session.store, metadata).Create(table);
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
    const TableInfo table = FindTable(metadata, node.table);
    const IndexInfo index = BuildIndex(node, table);
    metadata.AddIndex(table.object.id, index);
    TableStorage(session.store, metadata).CreateIndex(table, index);
    writing.Commit();
    Done(sink);
}

}  // namespace quarv::localdb::engine
