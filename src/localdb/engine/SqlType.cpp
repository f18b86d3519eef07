#include "localdb/engine/SqlType.h"

#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

QString SqlType::Name() const {
    return QString::fromUtf16(FactsOf(kind).name);
}

QString SqlType::ToText() const {
    switch (kind) {
        case TypeKind::Decimal:
        case TypeKind::Numeric:
            return QStringLiteral("%1(%2,%3)").arg(Name()).arg(precision).arg(scale);
        case TypeKind::Char:
        case TypeKind::VarChar:
        case TypeKind::NChar:
        case TypeKind::NVarChar:
        case TypeKind::Binary:
        case TypeKind::VarBinary:
            return QStringLiteral("%1(%2)").arg(
                Name(), length == Max ? QStringLiteral("max") : QString::number(length));
        case TypeKind::Time:
        case TypeKind::DateTime2:
        case TypeKind::DateTimeOffset:
            return QStringLiteral("%1(%2)").arg(Name()).arg(scale);
        default:
            return Name();
    }
}

}  // namespace quarv::localdb::engine
