// TableEditGridRow: one row of a table as the grid shows it: each field as it is now and as the
// database was last known to hold it, and the key as it was read. It belongs to the row list given
// to the grid. It knows no connection and none of the key's names.
#pragma once

#include <vector>

#include "grid/KelEditGridRow.h"
#include "platform/ado/Recordset.h"

namespace quarv {

class StringList;

class TableEditGridRow : public KelEditGridRow {
  public:
    // Takes the fields of the current row in place of what was held, and those named by `PK` as
    // its key. Raises what the record set raises, 3265 where it has no field of such a name.
    void Init(const ado::Recordset& rs, const StringList& PK);

    // Positions are 1-based: of a key column in the list given to Init, or of a grid column, which
    // stand in the order of the fields. One outside raises SubscriptOutOfRange.
    const Value& PKValue(qint16 Index) const;
    const Value& OriginalValue(qint16 Index) const;
    // What the column holds now counts as what the database holds.
    void CopyNewToOriginal(qint16 Index);
    // "[name]=literal" for each key column, joined by " and ". The values are those that Init
    // read, and a null key gives "=NULL", which no row matches. Raises SubscriptOutOfRange where
    // `PK` is longer than the row's key.
    QString PrimaryKeyClause(const StringList& PK) const;

    qint16 VisibleIndex() const override { return visibleIndex_; }
    void SetVisibleIndex(qint16 position) override { visibleIndex_ = position; }
    // Always 2, whatever was written: such a row is never hidden as deleted.
    qint32 PersistStatus() const override { return 2; }
    void SetPersistStatus(qint32) override {}
    // A null is the text "NULL".
    Value ColumnValue(qint16 ColNum) const override;
    // Takes any value of any kind.
    void SetColumnValue(qint16 ColNum, const Value& value) override;

  private:
    using Values = std::vector<Value>;

    // Where grid column `column` lies. A position below all 16-bit ones raises Overflow.
    size_t FieldOf(qint16 column) const;

    Values newValues_;
    Values originalValues_;
    Values keyValues_;
    qint16 visibleIndex_ = 0;
};

}  // namespace quarv
