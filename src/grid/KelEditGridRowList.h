// KelEditGridRowList: the grid's rows in order, at 1-based positions with a 16-bit count. The host
// makes it; grid and host share it and its rows.
#pragma once

#include "grid/GridItems.h"
#include "grid/KelEditGridRow.h"

namespace quarv {

class KelEditGridRowList {
  public:
    // Room for one row more no longer fits 16 bits.
    static constexpr qint16 MaxCount = 32757;

    // Appends and numbers the visible rows anew, each time over all of them. Raises Overflow where
    // the list is full and ObjectNotSet for no row; then nothing is added.
    void Add(const RowRef& row);
    // As Add, but numbers nothing: for a host that fills the list and then numbers it once.
    void AddUnnumbered(const RowRef& row) { items_.Add(row); }
    // Makes room for `n` rows and ten more where there is none for `n`.
    void EnsureCanHold(qint16 n) { items_.EnsureCanHold(n); }
    qint16 Count() const { return items_.Count(); }
    // The storage keeps its size.
    void Clear() { items_.Clear(); }

    // Nothing above the count; raises SubscriptOutOfRange outside the storage.
    const RowRef& Items(qint16 Index) const { return items_.At(Index); }
    // Closes the gap. Numbers nothing anew and tells the row nothing. A position beyond the count
    // takes the last row; one below 1, and an empty list, raise SubscriptOutOfRange.
    void Remove(qint16 Index) { items_.Remove(Index); }
    // Appends the rows of `r`, which are shared.
    void Copy(const KelEditGridRowList& r);

    // Numbers the rows that are not deleted from 1 and gives their number. A deleted row keeps the
    // number it had.
    qint16 RenumberVisibleFields();
    // The position of this very row; -1 where it is not in the list.
    qint16 IndexOf(const RowRef& row) const { return items_.IndexOf(row.get()); }
    // The first row that is not deleted; nothing where there is none.
    RowRef FirstVisible() const;

  private:
    GridItems<KelEditGridRow> items_;
};

using RowListRef = std::shared_ptr<KelEditGridRowList>;

}  // namespace quarv
