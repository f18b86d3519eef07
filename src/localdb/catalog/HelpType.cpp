#include "localdb/catalog/HelpType.h"

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/engine/Collation.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::catalog {

namespace {

using engine::ClassOf;
using engine::SqlType;
using engine::SystemCall;
using engine::TypeClass;
using engine::TypeKind;

std::vector<Column> TypeColumns(const char* name) {
    return {Sysname(name, false),
            Sysname("Storage_type"),
            SmallInt("Length"),
            Int("Prec"),
            Int("Scale"),
            VarChar("Nullable", 35),
            Sysname("Default_name"),
            Sysname("Rule_name"),
            Sysname("Collation")};
}

// Characters of text, digits of everything else.
OwnedValue Precision(const SqlType& type) {
    const bool text = ClassOf(type) == TypeClass::Text;
    const bool bytes = ClassOf(type) == TypeClass::Binary;
    return Value(int64_t{text || bytes ? type.length : engine::PrecisionOf(type)});
}

OwnedValue Scale(const SqlType& type) {
    const TypeClass cls = ClassOf(type);
    const bool none = cls == TypeClass::Text || cls == TypeClass::Binary ||
                      cls == TypeClass::Real || cls == TypeClass::Guid;
    return none ? Null() : Value(int64_t{engine::ScaleOf(type)});
}

void Row(SystemCall& call, const engine::AliasType& type) {
    const bool text = ClassOf(type.type) == TypeClass::Text && type.type.kind != TypeKind::Xml;
    const QString none = QStringLiteral("none");
    call.Row({Value(type.name), Value(type.type.Name()),
              Value(int64_t{engine::ByteLength(type.type)}), Precision(type.type), Scale(type.type),
              Value(type.nullable ? QStringLiteral("yes") : QStringLiteral("no")), Value(none),
              Value(none), text ? Value(QString::fromLatin1(engine::Collation::Name)) : Null()});
}

// A system type at its widest, as sys.types shows it.
std::optional<engine::AliasType> SystemType(const QString& name) {
    const std::optional<TypeKind> kind = engine::FindTypeKind(name);
    if (!kind) return std::nullopt;
    engine::AliasType type;
    type.name = QString::fromUtf16(engine::FactsOf(*kind).name);
    type.nullable = *kind != TypeKind::RowVersion;
    type.type = engine::MakeType(*kind);
    const TypeClass cls = ClassOf(type.type);
    if (engine::SameName(name, QStringLiteral("sysname"))) {
        type.name = name.toLower();
        type.type = engine::SysnameType();
        type.nullable = false;
    } else if (cls == TypeClass::Decimal) {
        type.type = engine::MakeType(*kind, 0, 38, 38);
    } else if (engine::HasTimeScale(*kind)) {
        type.type = engine::MakeType(*kind, 0, 0, 7);
    } else if (engine::IsOldLong(*kind) || *kind == TypeKind::Xml) {
        type.type = engine::MakeType(*kind, SqlType::Max);
    } else if (cls == TypeClass::Text || cls == TypeClass::Binary) {
        type.type = engine::MakeType(*kind, engine::IsUnicode(*kind) ? 4000 : 8000);
    }
    return type;
}

}  // namespace

bool HelpType(SystemCall& call, const QString& name) {
    const std::optional<tsql::ObjectName> parts = tsql::ParseLooseName(name);
    if (!parts || !parts->database.isEmpty()) return false;
    const bool sys = engine::SameName(parts->schema, QStringLiteral("sys"));
    std::optional<engine::AliasType> type;
    if (parts->schema.isEmpty() || sys) type = SystemType(parts->name);
    if (!type) type = call.GetMetadata().FindType(parts->schema, parts->name);
    if (!type) return false;
    call.Begin(TypeColumns("Type_name"));
    Row(call, *type);
    call.End();
    return true;
}

void HelpAllTypes(SystemCall& call) {
    call.Begin(TypeColumns("User_type"));
    for (const engine::AliasType& type : call.GetMetadata().AllTypes()) Row(call, type);
    call.End();
}

}  // namespace quarv::localdb::catalog
