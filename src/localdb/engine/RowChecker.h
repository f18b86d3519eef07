// RowChecker: what a table asks of the values that a statement puts into it: no null where none may
// be, no text that is too long, no key that is there already. Lives for one statement.
#pragma once

#include "localdb/engine/BindContext.h"
#include "localdb/engine/Metadata.h"

namespace quarv::localdb::engine {

class RowChecker {
  public:
    // `verb` is INSERT or UPDATE, as messages name the statement. Borrows the table.
    RowChecker(const Metadata& metadata, const TableInfo& table, QString verb);

    // The expression as the column takes it: texts keep their length, so that Check can see it.
    static BoundPtr ConvertTo(BoundPtr value, const ColumnInfo& column);
    // The type that ConvertTo makes of `from`.
    static SqlType AssignmentType(const SqlType& from, const SqlType& to);
    // The column's default; null where it has none.
    static BoundPtr BindDefault(BindContext& context, const ColumnInfo& column);

    // Gives every rowversion column of a new or changed row its next value.
    static void Stamp(Metadata& metadata, const TableInfo& table, std::vector<OwnedValue>& row);
    // Brings the value to the column's form. Raises SqlError 515 or 2628.
    void Check(const ColumnInfo& column, OwnedValue& value) const;
    // The value in the column's form, its text where it was or in the arena. Raises likewise.
    SqlValue Fit(const ColumnInfo& column, const SqlValue& value, TextArena& arena) const;
    // Raises SqlError 2601 or 2627. `text` is the storage's own; `row` has every column.
    [[noreturn]] void RaiseDuplicate(const std::string& text,
                                     const std::vector<OwnedValue>& row) const;

  private:
    // The table as messages name it, with its database.
    QString FullName() const;
    [[noreturn]] void RaiseNull(const ColumnInfo& column) const;
    // Whether the value has another length than the column gives it. Raises SqlError 2628.
    bool MustFit(const ColumnInfo& column, const SqlValue& value) const;
    static SqlValue Resize(const ColumnInfo& column, const SqlValue& value, TextArena& arena);

    const QString database_;
    const TableInfo& table_;
    const QString verb_;
};

}  // namespace quarv::localdb::engine
