// KelEditGridColumnList: the grid's columns in order, at 1-based positions with a 16-bit count. The
// host makes it; grid and host share it and its columns.
#pragma once

#include "grid/GridItems.h"
#include "grid/KelEditGridColumn.h"

namespace quarv {

class KelEditGridColumnList {
  public:
    // Appends, and writes the column's Index and, unless it is the first, its Left: where the
    // column before it ends now. Raises Overflow where that place does not fit 32 bits or the list
    // is full, and ObjectNotSet for no column; then nothing is added.
    void Add(ColumnRef col);
    // A new column, appended.
    ColumnRef AddColumn(const QString& Name, qint32 Width, qint32 ColType);
    // Makes room for `n` columns and ten more where there is none for `n`.
    void EnsureCanHold(qint16 n) { items_.EnsureCanHold(n); }
    qint16 Count() const { return items_.Count(); }
    // The storage keeps its size.
    void Clear() { items_.Clear(); }

    // Nothing above the count; raises SubscriptOutOfRange outside the storage.
    const ColumnRef& Items(qint16 Index) const { return items_.At(Index); }
    // Appends the columns of `r`, which are shared: their Left and Index become those of this list.
    void Copy(const KelEditGridColumnList& r);

    // The first column of that name in any letter case; nothing where there is none.
    ColumnRef Find(const QString& SName) const;
    // The position of this very column; -1 where it is not in the list.
    qint16 IndexOf(const ColumnRef& col) const { return items_.IndexOf(col.get()); }
    // The first column with Left < x <= Left + Width, twips; -1 where there is none.
    qint16 FindFromX(qint32 x) const;

  private:
    GridItems<KelEditGridColumn> items_;
};

using ColumnListRef = std::shared_ptr<KelEditGridColumnList>;

}  // namespace quarv
