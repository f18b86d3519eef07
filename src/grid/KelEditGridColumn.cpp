#include "grid/KelEditGridColumn.h"

namespace quarv {

void KelEditGridColumn::Init(const QString& AName, qint32 AWidth, qint32 AType) {
    Name = AName;
    Width = AWidth;
    ColType = AType;
    FileNameOnly = true;
}

}  // namespace quarv
