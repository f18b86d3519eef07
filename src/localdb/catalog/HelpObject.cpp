#include "localdb/catalog/HelpObject.h"

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

namespace {

using engine::ClassOf;
using engine::ColumnInfo;
using engine::SqlType;
using engine::SystemCall;
using engine::TypeClass;
using engine::TypeKind;

constexpr const char* ObjectTypeSql =
    "CASE o.type WHEN 'U' THEN 'user table' WHEN 'V' THEN 'view' WHEN 'P' THEN 'stored procedure'"
    " WHEN 'PK' THEN 'primary key cns' WHEN 'UQ' THEN 'unique key cns'"
    " WHEN 'D' THEN 'default (maybe cns)' WHEN 'C' THEN 'check cns'"
    " WHEN 'F' THEN 'foreign key cns' END";

// Whether the columns list shows the type's digits: numbers but bit, and dates without a clock.
bool ShowsDigits(const SqlType& type) {
    if (type.kind == TypeKind::Date || engine::HasTimeScale(type.kind)) return true;
    return engine::IsNumber(type) && type.kind != TypeKind::Bit;
}

bool HasScale(const SqlType& type) {
    return ShowsDigits(type) && ClassOf(type) != TypeClass::Real;
}

OwnedValue Padded(int number) {
    return Value(QString::number(number).leftJustified(5, u' '));
}

OwnedValue Blank() {
    return Value(QString(5, u' '));
}

OwnedValue CollationOf(const SqlType& type) {
    const bool text = ClassOf(type) == TypeClass::Text;
    return text ? Value(QString::fromLatin1(engine::Collation::Name)) : Null();
}

QString TypeNameOf(const ColumnInfo& column) {
    if (column.userType != 0) return column.userTypeName;
    return column.isSysname ? QStringLiteral("sysname") : column.type.Name();
}

std::vector<OwnedValue> ColumnRow(const ColumnInfo& column) {
    const SqlType& type = column.type;
    const bool digits = ShowsDigits(type);
    const bool bytes = type.kind == TypeKind::Char || type.kind == TypeKind::VarChar;
    const QString none = QStringLiteral("(n/a)");
    const QString yes = QStringLiteral("yes"), no = QStringLiteral("no");
    OwnedValue scale = Blank();
    if (digits) scale = HasScale(type) ? Padded(engine::ScaleOf(type)) : Null();
    return {Value(column.name),
            Value(TypeNameOf(column)),
            Value(column.IsComputed() ? yes : no),
            Value(int64_t{engine::ByteLength(type)}),
            digits ? Padded(engine::PrecisionOf(type)) : Blank(),
            scale,
            Value(column.nullable ? yes : no),
            Value(bytes ? no : none),
            Value(bytes ? (column.nullable ? yes : no) : none),
            CollationOf(type)};
}

QString TypeNameOf(SystemCall& call, const engine::ParameterInfo& parameter) {
    if (parameter.userType == 0) return parameter.type.Name();
    const std::optional<engine::AliasType> alias = call.GetMetadata().FindType(parameter.userType);
    return alias ? alias->name : parameter.type.Name();
}

// Characters of text, digits of everything else.
OwnedValue ParameterPrecision(const SqlType& type) {
    if (ClassOf(type) == TypeClass::Text) return Value(int64_t{type.length});
    return Value(int64_t{engine::PrecisionOf(type)});
}

OwnedValue ParameterScale(const SqlType& type) {
    const bool counted = HasScale(type) || ClassOf(type) == TypeClass::Moment;
    return counted ? Value(int64_t{engine::ScaleOf(type)}) : Null();
}

}  // namespace

void HelpAllObjects(SystemCall& call) {
    call.Query({Sysname("Name", false), NVarChar("Owner", 128), NVarChar("Object_type", 31)},
               "SELECT o.name, s.name, " + std::string(ObjectTypeSql) +
                   " AS kind FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
                   " ORDER BY s.name, kind DESC, o.name",
               {});
}

void HelpHead(SystemCall& call, const engine::ObjectInfo& object) {
    call.Query({Sysname("Name", false), NVarChar("Owner", 128), NVarChar("Type", 31),
                DateTime("Created_datetime", false)},
               "SELECT o.name, s.name, " + std::string(ObjectTypeSql) +
                   ", o.created FROM $q_objects o JOIN $q_schemas s ON s.schema_id = o.schema_id"
                   " WHERE o.object_id = " +
                   std::to_string(object.id),
               {});
}

void HelpColumns(SystemCall& call, const engine::TableInfo& table) {
    call.Begin({Sysname("Column_name", false), NVarChar("Type", 128), VarChar("Computed", 35),
                Int("Length"), Char("Prec", 5), Char("Scale", 5), VarChar("Nullable", 35),
                VarChar("TrimTrailingBlanks", 35), VarChar("FixedLenNullInSource", 35),
                Sysname("Collation")});
    for (const ColumnInfo& column : table.columns) call.Row(ColumnRow(column));
    call.End();
}

void HelpIdentity(SystemCall& call, const engine::TableInfo& table) {
    call.Begin({NVarChar("Identity", 128), Numeric38("Seed"), Numeric38("Increment"),
                Int("Not For Replication")});
    const ColumnInfo* column =
        table.identity ? table.FindColumn(table.identity->columnId) : nullptr;
    if (column) {
        call.Row({Value(column->name), WideValue(table.identity->seed),
                  WideValue(table.identity->increment), Value(int64_t{0})});
    } else {
        call.Row({Value(QStringLiteral("No identity column defined.")), Null(), Null(), Null()});
    }
    call.End();
}

void HelpRowGuid(SystemCall& call, const engine::TableInfo& table) {
    QString name = QStringLiteral("No rowguidcol column defined.");
    for (const ColumnInfo& column : table.columns) {
        if (column.rowGuid) name = column.name;
    }
    call.Begin({NVarChar("RowGuidCol", 128)});
    call.Row({Value(name)});
    call.End();
}

void HelpFilegroup(SystemCall& call) {
    call.Begin({NVarChar("Data_located_on_filegroup", 128)});
    call.Row({Value(QStringLiteral("PRIMARY"))});
    call.End();
}

void HelpParameters(SystemCall& call, const engine::ObjectInfo& object) {
    const std::vector<engine::ParameterInfo> parameters =
        call.GetMetadata().LoadParameters(object.id);
    if (parameters.empty()) return;
    call.Begin({Sysname("Parameter_name", false), NVarChar("Type", 128), SmallInt("Length"),
                Int("Prec"), Int("Scale"), Int("Param_order"), Sysname("Collation")});
    int64_t order = 0;
    for (const engine::ParameterInfo& parameter : parameters) {
        const SqlType& type = parameter.type;
        call.Row({Value(parameter.name), Value(TypeNameOf(call, parameter)),
                  Value(int64_t{engine::ByteLength(type)}), ParameterPrecision(type),
                  ParameterScale(type), Value(++order), CollationOf(type)});
    }
    call.End();
}

}  // namespace quarv::localdb::catalog
