// KelEditGridRow: one row as the grid sees it. A host's row class implements the members; each
// default does nothing, so that a host implements only what it has. The grid stores no values: it
// reads and writes them here.
#pragma once

#include <memory>

#include "base/Value.h"

namespace quarv {

class KelEditGridColumnList;

class KelEditGridRow {
  public:
    // A row of this PersistStatus is deleted: hidden, and without a number among the visible ones.
    static constexpr qint32 Deleted = 1;

    virtual ~KelEditGridRow();

    // 1-based position among the rows that are not hidden. Only a row list writes it.
    virtual qint16 VisibleIndex() const;
    virtual void SetVisibleIndex(qint16 position);

    // Deleted, or any other number, whose meaning is the host's.
    virtual qint32 PersistStatus() const;
    virtual void SetPersistStatus(qint32 status);

    // The value of the cell in column `ColNum` (the column's 1-based Index).
    virtual Value ColumnValue(qint16 ColNum) const;
    virtual void SetColumnValue(qint16 ColNum, const Value& value);

    // True while the row holds nothing: a new row that is left so is dropped.
    virtual bool IsEmpty() const;
    // Columns of the row's own; nothing where it has none. The grid never asks.
    virtual std::shared_ptr<KelEditGridColumnList> CreateColumnList(Value& Canvas);

    bool IsDeleted() const { return PersistStatus() == Deleted; }

  protected:
    KelEditGridRow() = default;
    KelEditGridRow(const KelEditGridRow&) = default;
    KelEditGridRow& operator=(const KelEditGridRow&) = default;
};

using RowRef = std::shared_ptr<KelEditGridRow>;

}  // namespace quarv
