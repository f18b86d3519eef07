#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

struct Place {
    const tsql::TypeName& name;
    QString ordinal;

    SqlError Error(int number, const QStringList& inserts) const {
        return SqlError(number, inserts, name.line);
    }
};

void CheckPlain(const Place& place) {
    if (place.name.arguments.empty() && !place.name.max) return;
    throw place.Error(2716, {place.ordinal, place.name.name});
}

// Also binary and varbinary, which are counted alike.
SqlType BindTextType(const Place& place, TypeKind kind) {
    const tsql::TypeName& name = place.name;
    if (IsOldLong(kind) || kind == TypeKind::Xml) {
        CheckPlain(place);
        return MakeType(kind, SqlType::Max);
    }
    if (name.max) {
        if (IsFixedLength(kind)) {
            throw place.Error(102, {QStringLiteral("max")});
        }
        return MakeType(kind, SqlType::Max);
    }
    if (name.arguments.size() > 1) {
        throw place.Error(2716, {place.ordinal, name.name});
    }
    const int length = name.arguments.empty() ? 1 : name.arguments.front();
    const int limit = IsUnicode(kind) ? 4000 : 8000;
    if (length < 1) {
        throw place.Error(1001, {QString::number(name.line), QString::number(length)});
    }
    if (length > limit) {
        throw place.Error(131, {QString::number(length), QStringLiteral("type"), name.name,
                                QString::number(limit)});
    }
    return MakeType(kind, length);
}

SqlType BindBinaryType(const Place& place, TypeKind kind) {
    if (kind == TypeKind::RowVersion || kind == TypeKind::Image) {
        CheckPlain(place);
        return MakeType(kind, kind == TypeKind::Image ? SqlType::Max : 0);
    }
    return BindTextType(place, kind);
}

SqlType BindTimeType(const Place& place, TypeKind kind) {
    const std::vector<int>& arguments = place.name.arguments;
    if (place.name.max || arguments.size() > 1) {
        throw place.Error(2716, {place.ordinal, place.name.name});
    }
    const int scale = arguments.empty() ? 7 : arguments.front();
    if (scale < 0 || scale > 7) {
        throw place.Error(1002, {QString::number(place.name.line), QString::number(scale)});
    }
    return MakeType(kind, 0, 0, scale);
}

SqlType BindDecimalType(const Place& place, TypeKind kind) {
    const std::vector<int>& arguments = place.name.arguments;
    const int precision = arguments.empty() ? 18 : arguments[0];
    const int scale = arguments.size() > 1 ? arguments[1] : 0;
    if (precision < 1) {
        throw place.Error(1001, {QString::number(place.name.line), QString::number(precision)});
    }
    if (precision > 38) {
        throw place.Error(2750, {place.ordinal, QString::number(precision), QStringLiteral("38")});
    }
    if (scale > precision) {
        throw place.Error(2751,
                          {place.ordinal, QString::number(scale), QString::number(precision)});
    }
    return MakeType(kind, 0, precision, scale);
}

}  // namespace

SqlType BindType(const tsql::TypeName& name, int ordinal) {
    const Place place{name, QString::number(ordinal)};
    const bool dbo = name.schema.isEmpty() || name.schema.compare(u"sys", Qt::CaseInsensitive) == 0;
    const std::optional<TypeKind> kind = dbo ? FindTypeKind(name.name) : std::nullopt;
    if (!kind && dbo && IsRefusedType(name.name)) {
        throw place.Error(40517, {QStringLiteral("data type ") + name.name.toLower()});
    }
    if (!kind) {
        const QString written = name.schema.isEmpty() ? name.name : name.schema + u'.' + name.name;
        throw place.Error(2715, {place.ordinal, written});
    }
    switch (FactsOf(*kind).cls) {
        case TypeClass::Text:
            if (name.name.compare(u"sysname", Qt::CaseInsensitive) == 0) return SysnameType();
            return BindTextType(place, *kind);
        case TypeClass::Decimal:
            return BindDecimalType(place, *kind);
        case TypeClass::Binary:
            return BindBinaryType(place, *kind);
        case TypeClass::Moment:
            if (HasTimeScale(*kind)) return BindTimeType(place, *kind);
            break;
        default:
            break;
    }
    // float(1..24) is real, float(25..53) is float; nothing else takes a width.
    if (*kind == TypeKind::Float && name.arguments.size() == 1) {
        const int bits = name.arguments.front();
        if (bits < 1 || bits > 53) {
            throw place.Error(1001, {QString::number(name.line), QString::number(bits)});
        }
        return MakeType(bits <= 24 ? TypeKind::Real : TypeKind::Float);
    }
    CheckPlain(place);
    return MakeType(*kind);
}

}  // namespace quarv::localdb::engine
