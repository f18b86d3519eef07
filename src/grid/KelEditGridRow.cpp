#include "grid/KelEditGridRow.h"

namespace quarv {

KelEditGridRow::~KelEditGridRow() = default;

qint16 KelEditGridRow::VisibleIndex() const {
    return 0;
}

void KelEditGridRow::SetVisibleIndex(qint16) {}

qint32 KelEditGridRow::PersistStatus() const {
    return 0;
}

void KelEditGridRow::SetPersistStatus(qint32) {}

Value KelEditGridRow::ColumnValue(qint16) const {
    return {};
}

void KelEditGridRow::SetColumnValue(qint16, const Value&) {}

bool KelEditGridRow::IsEmpty() const {
    return false;
}

std::shared_ptr<KelEditGridColumnList> KelEditGridRow::CreateColumnList(Value&) {
    return nullptr;
}

}  // namespace quarv
