// ChangeQuery: the query behind UPDATE and DELETE: which rows of the target are meant, and what of
// each is read before anything changes. Finds the target among the sources of FROM. Lives for one
// statement.
#pragma once

#include "localdb/engine/ChangedSource.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TargetTable.h"

namespace quarv::localdb::engine {

class ChangeQuery {
  public:
    // `rows` has FROM, WHERE and TOP. `verb` is UPDATE or DELETE. Raises SqlError.
    ChangeQuery(BindContext& context, const tsql::NamedTable& target, const tsql::Query& rows,
                const QString& verb);

    // The table that the target means: its own name, that behind an alias of FROM, or that behind a
    // view or another query. Raises SqlError 8154 and what TargetPath raises.
    static tsql::ObjectName TargetName(const tsql::NamedTable& target, const tsql::Query& rows,
                                       BindContext& context, const QString& verb);
    TargetTable& Target() { return target_; }
    // The names that expressions over a row can mean.
    const Scope& Names() const { return binder_.Names(); }
    // The target among them.
    const Source& TargetSource() const { return binder_.Names().Sources()[changed_.place]; }
    // A column of the table, whatever the target shows of it.
    const SourceColumn& BaseColumn(size_t column) const { return changed_.base[column]; }
    // The table's column that the target calls so; nothing where there is none. Raises SqlError
    // 4406 for a computed column of a view.
    const ColumnInfo* FindColumn(const QString& name) const;
    // A table, and not a view or another query.
    bool IsTable() const { return changed_.IsTable(); }
    const ChangedSource& Changed() const { return changed_; }
    // More than the target alone is read.
    bool IsJoin() const { return query_->from->left != nullptr; }
    bool IsLimited() const { return query_->top != nullptr; }

    // One more item of each row; gives its place.
    size_t Add(BoundPtr item);
    // The value that the target's column has before the change.
    size_t AddOld(size_t column);
    // What tells the row to change: the storage's key columns, else its row number.
    const std::vector<SqlType>& KeyTypes() const { return changed_.keyTypes; }
    // " WHERE c1 = ?3 AND c2 = ?4", the parameters from `first` on.
    std::string KeyCondition(int first) const;

    // The items of all rows, the key first, each row of the target once; all are read before the
    // first is given out, so that the target can change meanwhile. At most `limit` rows; 0: all.
    SqliteStatement Prepare(const Environment& environment, Store& store, int64_t limit);
    const BoundQuery& Query() const { return *query_; }

  private:
    void FindKey();
    void AddKey();
    void RequireKey();

    QueryBinder binder_;
    TargetPath path_;
    TargetTable target_;
    ChangedSource changed_;
    std::unique_ptr<BoundQuery> query_;
    std::unique_ptr<SqlWriter> writer_;
};

}  // namespace quarv::localdb::engine
