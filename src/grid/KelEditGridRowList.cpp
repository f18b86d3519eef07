#include "grid/KelEditGridRowList.h"

namespace quarv {

void KelEditGridRowList::Add(const RowRef& row) {
    items_.Add(row);
    RenumberVisibleFields();
}

// A list copied into itself must not run after its own growing end.
void KelEditGridRowList::Copy(const KelEditGridRowList& r) {
    const qint16 count = r.Count();
    for (qint16 i = 1; i <= count; ++i) Add(RowRef(r.Items(i)));
}

qint16 KelEditGridRowList::RenumberVisibleFields() {
    qint16 visible = 0;
    for (qint16 i = 1; i <= Count(); ++i) {
        KelEditGridRow& row = *Items(i);
        if (row.IsDeleted()) continue;
        row.SetVisibleIndex(++visible);
    }
    return visible;
}

RowRef KelEditGridRowList::FirstVisible() const {
    for (qint16 i = 1; i <= Count(); ++i)
        if (!Items(i)->IsDeleted()) return Items(i);
    return nullptr;
}

}  // namespace quarv
