// RowInserter: puts rows into one table: gives left-out columns their defaults and identity values,
// converts, checks nulls and lengths, and says which key was there already. Lives for one INSERT.
#pragma once

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/Frame.h"
#include "localdb/engine/RowChecker.h"
#include "localdb/engine/RowChecks.h"
#include "localdb/tsql/Query.h"

namespace quarv::localdb::engine {

struct ChangedSource;
class OutputRows;
class RowSpool;

class RowInserter {
  public:
    // `columns` are the names as written; none: all but the identity column. Raises SqlError 207,
    // 264, 544 or 8101.
    RowInserter(Frame& frame, BindContext& context, Metadata& metadata, const TableInfo& table,
                const std::vector<QString>& columns);

    // Where rows that were put in are told of; borrowed.
    void SetOutput(OutputRows* output) { output_ = output; }
    // The view that the rows are put in through; borrowed.
    void SetView(const ChangedSource* view) { view_ = view; }
    // At most so many rows are put in.
    void SetLimit(int64_t rows) { limit_ = rows; }

    // Every column's default.
    void InsertDefaults();
    // Rows as written, DEFAULT included; each column's values are of one type. Raises SqlError.
    void InsertRows(const std::vector<tsql::ExpressionList>& rows, ResultSink& sink);
    void InsertQuery(const tsql::Query& query, ResultSink& sink);
    void InsertSpool(RowSpool& rows, ResultSink& sink);
    // Keeps the identity values that were used.
    void Finish();
    int64_t Count() const { return count_; }
    // The table's identity with the last value that was used.
    std::optional<IdentityInfo> Identity() const;

  private:
    void FindColumns(const std::vector<QString>& names);
    // Of a table that has an identity column.
    size_t IdentityPlace() const;
    void CheckIdentity() const;
    void CheckGiven(size_t column) const;
    void CheckCount(size_t given, bool fromQuery) const;
    // The type that the column's values of all rows have; nothing where they have none.
    static std::optional<SqlType> CommonType(const std::vector<std::vector<BoundPtr>>& rows,
                                             size_t column);
    void InsertBound(std::vector<BoundPtr>& values);
    // Puts in the defaults of the columns that no value is given for.
    void FillRest(std::vector<OwnedValue>& row);
    bool IsFull() const { return limit_ && count_ >= *limit_; }
    OwnedValue DefaultValue(size_t column);
    void Insert(std::vector<OwnedValue>& row);
    void TakeIdentity(const OwnedValue& value);

    Frame& frame_;
    BindContext& context_;
    Metadata& metadata_;
    const TableInfo& table_;
    const RowChecker checker_;
    RowChecks checks_;
    const bool namesGiven_;
    std::vector<size_t> targets_;     // the table's columns that values are given for
    std::vector<BoundPtr> defaults_;  // by column; bound when first needed
    std::vector<bool> given_;         // by column
    SqliteStatement insert_;
    std::optional<int64_t> lastIdentity_;
    bool identityChanged_ = false;
    int64_t count_ = 0;
    std::optional<int64_t> limit_;
    OutputRows* output_ = nullptr;
    const ChangedSource* view_ = nullptr;
};

}  // namespace quarv::localdb::engine
