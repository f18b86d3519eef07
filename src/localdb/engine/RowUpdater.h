// RowUpdater: runs one UPDATE: computes the new values of every row that is meant and puts them in
// their place. Where a key changes, all old rows go before the first new one comes, so that only
// the outcome of the whole statement has to be free of equal keys.
#pragma once

#include "localdb/engine/ChangeQuery.h"
#include "localdb/engine/Frame.h"
#include "localdb/engine/OutputRows.h"
#include "localdb/engine/RowChecker.h"
#include "localdb/engine/RowChecks.h"
#include "localdb/engine/RowSpool.h"
#include "localdb/tsql/Update.h"

namespace quarv::localdb::engine {

class RowUpdater {
  public:
    // Raises SqlError 207, 264, 8102 and what binding raises.
    RowUpdater(Frame& frame, BindContext& context, const tsql::Update& update);

    // Of the database that is changed.
    const std::string& Prefix() { return query_.Target().metadata.Prefix(); }
    // Inside the caller's transaction.
    void Run(ResultSink& sink);
    // Sends what OUTPUT asks for; behind the commit.
    void SendOutput(ResultSink& sink);
    int64_t Count() const { return count_; }

  private:
    void BindAssignment(const tsql::Update::Assignment& assignment, bool assigns);
    size_t FindColumn(const tsql::ObjectName& name) const;
    BoundPtr BindValue(const tsql::Update::Assignment& assignment, std::optional<size_t> column);
    BoundPtr AssignTo(const QString& variable, BoundPtr value);
    // Kept from being computed once for all rows.
    BoundPtr ForEachRow(BoundPtr value) const;
    bool ChangesKey() const;
    void BindOutput(const tsql::OutputClause& clause);
    void ReadRow(const SqliteStatement& rows);
    void ChangeInPlace(SqliteStatement& rows, ResultSink& sink);
    void ChangeByMoving(SqliteStatement& rows, ResultSink& sink);
    void BindKey(SqliteStatement& statement, const SqliteStatement& rows, int first) const;

    Frame& frame_;
    BindContext& context_;
    ChangeQuery query_;
    const TableInfo& table_;
    const RowChecker checker_;
    RowChecks checks_;
    struct Target {
        size_t column;
        size_t item;  // of the query, or Stamped
    };
    static constexpr size_t Stamped = SIZE_MAX;  // a rowversion: set by itself
    std::vector<Target> targets_;
    bool moves_ = false;
    // By column, the item with its old value; where rows move or something asks for them.
    std::vector<size_t> old_;
    std::vector<OwnedValue> before_, row_;  // by column, the old and the new row
    std::optional<OutputRows> output_;
    std::vector<size_t> others_;  // the items that OUTPUT takes from other tables
    std::vector<OwnedValue> other_;
    int64_t count_ = 0;
};

}  // namespace quarv::localdb::engine
