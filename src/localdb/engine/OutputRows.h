// OutputRows: what the OUTPUT clause of INSERT, UPDATE or DELETE gives: computed from each changed
// row, kept until the change is whole, then put into a table or sent. Lives for one statement.
#pragma once

#include "localdb/engine/Frame.h"
#include "localdb/engine/RowExpression.h"
#include "localdb/engine/RowSpool.h"
#include "localdb/tsql/Output.h"

namespace quarv::localdb::engine {

class OutputRows {
  public:
    using Row = std::vector<OwnedValue>;

    // Which of the two rows the statement has.
    struct Sides {
        bool inserted;
        bool deleted;
    };

    // `sources` are the names of FROM, or nothing. Raises SqlError 158, 10705 and what binding
    // raises.
    OutputRows(Frame& frame, BindContext& context, const tsql::OutputClause& clause,
               const TableInfo& table, Sides sides, const Scope* sources);

    // The columns of FROM's tables that the clause names; `others` of Add are their values.
    std::vector<BoundPtr> CopyOthers() const;
    // Rows with every column of the table; a side that the statement has not is nothing.
    void Add(const Row* inserted, const Row* deleted, const Row& others = {});
    // Puts the rows into the table that INTO names. Inside the caller's transaction.
    void Store(ResultSink& sink);
    // Sends the rows, behind the statement's commit.
    void Send(ResultSink& sink);

  private:
    void BindItem(const tsql::SelectItem& item);
    void AddItem(const QString& name, BoundPtr value);
    void PlaceLeaves(const BoundExpression& node);
    size_t PlaceOf(const BoundColumn& column);

    Frame& frame_;
    BindContext& context_;
    const tsql::OutputClause& clause_;
    const TableInfo& table_;
    Scope scope_;
    std::vector<Column> columns_;
    std::vector<BoundPtr> items_;
    std::vector<const BoundColumn*> others_;
    std::vector<SqlValue> leaves_;                            // inserted, deleted, others
    Row row_;                                                 // one row of the result
    std::vector<std::pair<size_t, RowExpression>> computed_;  // columns that are not stored
    Row inserted_;                                            // with them
    TextArena arena_;
    std::unique_ptr<RowSpool> spool_;
};

}  // namespace quarv::localdb::engine
