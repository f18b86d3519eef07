#include "grid/KelEditGridColumnList.h"

#include "base/RUtils.h"
#include "grid/Checked32.h"

namespace quarv {

void KelEditGridColumnList::Add(ColumnRef col) {
    if (!col) throw RuntimeError(RuntimeError::ObjectNotSet);
    qint32 left = col->Left;
    if (Count() > 0) {
        const KelEditGridColumn& last = *Items(Count());
        left = Narrow32(static_cast<qint64>(last.Left) + last.Width);
    }
    items_.Add(col);
    col->Left = left;
    col->Index = Count();
}

ColumnRef KelEditGridColumnList::AddColumn(const QString& Name, qint32 Width, qint32 ColType) {
    auto col = std::make_shared<KelEditGridColumn>();
    col->Init(Name, Width, ColType);
    Add(col);
    return col;
}

// A list copied into itself must not run after its own growing end.
void KelEditGridColumnList::Copy(const KelEditGridColumnList& r) {
    const qint16 count = r.Count();
    for (qint16 i = 1; i <= count; ++i) Add(ColumnRef(r.Items(i)));
}

ColumnRef KelEditGridColumnList::Find(const QString& SName) const {
    for (qint16 i = 1; i <= Count(); ++i)
        if (SameText(Items(i)->Name, SName)) return Items(i);
    return nullptr;
}

qint16 KelEditGridColumnList::FindFromX(qint32 x) const {
    for (qint16 i = 1; i <= Count(); ++i) {
        const KelEditGridColumn& col = *Items(i);
        if (col.Left < x && x <= static_cast<qint64>(col.Left) + col.Width) return i;
    }
    return -1;
}

}  // namespace quarv
