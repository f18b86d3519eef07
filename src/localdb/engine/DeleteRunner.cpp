#include <sqlite3.h>

#include "localdb/engine/ChangeQuery.h"
#include "localdb/engine/OutputRows.h"
#include "localdb/engine/RowChecks.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/tsql/Delete.h"

namespace quarv::localdb::engine {

namespace {

// What OUTPUT asks for, and where its values stand among the query's items.
struct DeleteOutput {
    DeleteOutput(const tsql::OutputClause& clause, ChangeQuery& query, Frame& frame,
                 BindContext& context)
        : rows(frame, context, clause, query.Target().table, {false, true}, &query.Names()) {
        const size_t columns = query.Target().table.columns.size();
        for (size_t i = 0; i < columns; ++i) old.push_back(query.AddOld(i));
        for (BoundPtr& item : rows.CopyOthers()) others.push_back(query.Add(std::move(item)));
        before.resize(old.size());
        other.resize(others.size());
    }
    void Add(const ChangeQuery& query, const SqliteStatement& row) {
        const auto read = [&](size_t item) {
            return ReadColumn(row.Handle(), static_cast<int>(item),
                              query.Query().items[item]->type);
        };
        for (size_t i = 0; i < old.size(); ++i) before[i] = read(old[i]);
        for (size_t i = 0; i < others.size(); ++i) other[i] = read(others[i]);
        rows.Add(nullptr, &before, other);
    }

    OutputRows rows;
    std::vector<size_t> old, others;
    std::vector<OwnedValue> before, other;
};

// Row by row: what is to go was found before the first row goes.
int64_t DeleteEach(ChangeQuery& query, DeleteOutput* output, Frame& frame, RowChecks& checks,
                   ResultSink& sink) {
    SessionState& session = frame.Session();
    const std::vector<ColumnInfo>& columns = query.Target().table.columns;
    std::vector<size_t> old;
    for (size_t i = 0; checks.NeedsDeletedRows() && i < columns.size(); ++i) {
        old.push_back(query.AddOld(i));
    }
    std::vector<OwnedValue> row(old.size());
    SqliteStatement rows = query.Prepare(frame, session.store, session.options.rowCount);
    SqliteStatement remove =
        session.store.Prepare("DELETE FROM " + query.Target().metadata.Prefix() +
                              query.Target().table.StorageName() + query.KeyCondition(1));
    const std::vector<SqlType>& keys = query.KeyTypes();
    int64_t count = 0;
    while (rows.Step()) {
        if (sink.Cancelled()) throw Cancelled();
        if (output) output->Add(query, rows);
        for (size_t i = 0; i < keys.size(); ++i) {
            const int column = static_cast<int>(i);
            remove.Bind(column + 1, ReadColumn(rows.Handle(), column, keys[i]), keys[i]);
        }
        for (size_t i = 0; i < old.size(); ++i) {
            row[i] = ReadColumn(rows.Handle(), static_cast<int>(old[i]), columns[i].type);
        }
        remove.Run();
        if (!old.empty()) checks.Deleted(row);
        ++count;
    }
    checks.Finish();
    return count;
}

int64_t DeleteAll(ChangeQuery& query, Store& store) {
    store.Run("DELETE FROM " + query.Target().metadata.Prefix() +
              query.Target().table.StorageName());
    return sqlite3_changes64(store.Handle());
}

}  // namespace

void RunDelete(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Delete&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    const tsql::ObjectName target =
        ChangeQuery::TargetName(node.target, node.rows, context, QStringLiteral("DELETE"));
    Transactions::Writing writing(session.transactions, context.MetadataFor(target).Prefix());
    ChangeQuery query(context, node.target, node.rows, QStringLiteral("DELETE"));
    RowChecks checks(frame, query.Target().metadata, query.Target().table,
                     QStringLiteral("DELETE"));
    if (node.output && !query.IsTable()) {
        throw SqlError(40517, {QStringLiteral("OUTPUT of a view")}, node.line);
    }
    const bool all = query.IsTable() && !checks.NeedsDeletedRows() && !query.IsJoin() &&
                     !query.IsLimited() && !node.rows.where && !node.output &&
                     session.options.rowCount == 0;
    std::optional<DeleteOutput> output;
    if (node.output) output.emplace(*node.output, query, frame, context);
    const int64_t count = all ? DeleteAll(query, session.store)
                              : DeleteEach(query, output ? &*output : nullptr, frame, checks, sink);
    if (output) output->rows.Store(sink);
    writing.Commit();
    session.rowCount = count;
    if (output) output->rows.Send(sink);
    sink.StatementDone(StatementKind::Delete, session.options.noCount ? -1 : count, false);
}

void RunTruncate(const tsql::Statement& statement, Frame& frame, ResultSink& sink) {
    const auto& node = static_cast<const tsql::Truncate&>(statement);
    SessionState& session = frame.Session();
    BindContext context = frame.NewContext();
    Metadata metadata = context.MetadataFor(node.table);
    Transactions::Writing writing(session.transactions, metadata.Prefix());
    const std::optional<ObjectInfo> object = metadata.Find(node.table.schema, node.table.name);
    if (!object) throw SqlError(4701, {node.table.name}, node.table.line);
    if (object->type != u"U") throw SqlError(4708, {node.table.name}, node.table.line);
    TableInfo table = metadata.LoadTable(*object);
    metadata.LoadConstraints(table);
    for (const ForeignKeyInfo& key : table.references) {
        if (!key.IsWithinTable()) throw SqlError(4712, {node.table.name}, node.table.line);
    }
    session.store.Run("DELETE FROM " + metadata.Prefix() + table.StorageName());
    if (table.identity) metadata.ResetIdentity(object->id);
    writing.Commit();
    session.rowCount = 0;
    sink.StatementDone(StatementKind::Other, -1, false);
}

}  // namespace quarv::localdb::engine
