#include <sqlite3.h>

#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableMaker.h"
#include "localdb/engine/TargetTable.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/tsql/Select.h"

namespace quarv::localdb::engine {

namespace {

// The identity of the one table that the rows come from: a join or a group takes it away.
std::optional<IdentityInfo> InheritedIdentity(const tsql::Query& query, const BoundQuery& bound,
                                              BindContext& context) {
    const bool single = query.from.size() == 1 && !bound.grouped && !bound.distinct &&
                        query.from.front()->kind == tsql::TableSourceKind::Table;
    if (!single) return std::nullopt;
    const auto& name = static_cast<const tsql::NamedTable&>(*query.from.front()).name;
    if (name.isVariable) return context.TableVariable(name)->identity;
    Metadata metadata = context.MetadataFor(name);
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    return object && object->type == u"U" ? metadata.LoadTable(*object).identity : std::nullopt;
}

void AddColumns(TableInfo& table, const BoundQuery& query,
                const std::optional<IdentityInfo>& inherited) {
    int identities = 0;
    for (const Column& column : query.columns) identities += column.identity ? 1 : 0;
    for (const BoundPtr& item : query.items) {
        if (ClassOf(item->type) == TypeClass::Text) RequireServerCollation(item->Collates().id);
    }
    for (const Column& source : query.columns) {
        if (source.name.isEmpty()) throw SqlError(1038);
        if (table.FindColumn(source.name)) {
            throw SqlError(2705, {source.name, TemporaryTables::WrittenName(table.object.name)});
        }
        ColumnInfo column;
        column.id = static_cast<int>(table.columns.size()) + 1;
        column.name = source.name;
        column.type = source.type;
        column.nullable = source.nullable;
        // An empty text has one character of room.
        if (ClassOf(column.type) == TypeClass::Text && column.type.length == 0) {
            column.type.length = 1;
        }
        if (source.identity && identities == 1 && inherited) {
            column.identity = true;
            column.nullable = false;
            table.identity = inherited;
            table.identity->columnId = column.id;
            table.identity->last.reset();
        }
        table.columns.push_back(column);
    }
}

TableInfo Describe(const tsql::ObjectName& name, Metadata& metadata, SessionState& session) {
    const std::optional<int> schema = metadata.FindSchema(name.schema);
    if (!schema) throw SqlError(2760, {name.schema}, name.line);
    TableInfo table;
    table.object.schemaId = *schema;
    table.object.schema = metadata.SchemaName(*schema);
    table.object.name = name.name;
    table.object.type = QStringLiteral("U");
    table.object.id = metadata.NextObjectId();
    session.temporaries.Name(table.object, metadata, session.nestLevel);
    return table;
}

// The rows as they are; each column has the type of its item.
int64_t Fill(const TableInfo& table, const BoundQuery& query, Metadata& metadata, Frame& frame) {
    SqlWriter writer(frame);
    std::string columns;
    for (const ColumnInfo& column : table.columns) {
        columns += (columns.empty() ? "" : ", ") + column.StorageName();
    }
    writer.Text("INSERT INTO " + metadata.Prefix() + table.StorageName() + "(" + columns + ") ");
    query.Write(writer);
    Store& store = frame.Session().store;
    writer.Prepare(store).Run();
    return sqlite3_changes64(store.Handle());
}

void RememberIdentity(const TableInfo& table, Metadata& metadata, Store& store) {
    if (!table.identity) return;
    const std::string column = table.FindColumn(table.identity->columnId)->StorageName();
    const std::string most = table.identity->increment > 0 ? "max(" : "min(";
    SqliteStatement row = store.Prepare("SELECT " + most + column + ") FROM " + metadata.Prefix() +
                                        table.StorageName());
    if (row.Step() && !row.IsNull(0)) metadata.SetLastIdentity(table.object.id, row.Integer(0));
}

}  // namespace

void RunSelectInto(const tsql::Query& query, Frame& frame, ResultSink& sink) {
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(*query.into);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> bound = binder.Bind(query);
    if (!bound->assigned.empty()) throw SqlError(194, {}, query.line);
    if (session.options.rowCount > 0 && !bound->top && !bound->offset) {
        bound->top = std::make_unique<BoundConstant>(SqlValue::Integer(session.options.rowCount),
                                                     MakeType(TypeKind::BigInt));
    }
    TableInfo table = Describe(*query.into, metadata, session);
    AddColumns(table, *bound, InheritedIdentity(query, *bound, context));
    TableMaker(session.store, metadata).Create(table);
    const int64_t count = Fill(table, *bound, metadata, frame);
    RememberIdentity(table, metadata, session.store);
    writing.Commit();
    session.rowCount = count;
    sink.StatementDone(StatementKind::Select, session.options.noCount ? -1 : count, false);
}

}  // namespace quarv::localdb::engine
