// sys.types and systypes: the system's types, sysname and the alias types.
#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/catalog/ViewBuilder.h"
#include "localdb/engine/Collation.h"

namespace quarv::localdb::catalog {

using engine::Collation;
using engine::SystemView;

namespace {

constexpr const char* Schema = "sys";
constexpr int SysnameNumber = 256;

// The widest value of a kind, which sys.types shows.
engine::SqlType WidestOf(engine::TypeKind kind) {
    const engine::TypeFacts& facts = engine::FactsOf(kind);
    if (facts.cls == engine::TypeClass::Decimal) return engine::MakeType(kind, 0, 38, 38);
    return engine::MakeType(kind, 0, 0, engine::HasTimeScale(kind) ? 7 : 0);
}

// name, number, own number, length, precision, scale, collation and nullability of a kind.
std::string TypeRow(const QString& name, engine::TypeKind kind, int number) {
    const engine::SqlType type = WidestOf(kind);
    const engine::TypeFacts& facts = engine::FactsOf(kind);
    const bool xml = kind == engine::TypeKind::Xml, sysname = number == SysnameNumber;
    const bool text = facts.cls == engine::TypeClass::Text && !xml;
    const bool sized = facts.bytes == 0 && facts.cls != engine::TypeClass::Decimal;
    const int length = sysname ? 256 : xml ? -1 : sized ? 8000 : engine::ByteLength(type);
    const bool counted = facts.cls != engine::TypeClass::Text;
    const bool nullable = kind != engine::TypeKind::RowVersion && !sysname;
    return "('" + name.toStdString() + "', " + std::to_string(facts.number) + ", " +
           std::to_string(number) + ", 4, " + std::to_string(length) + ", " +
           std::to_string(counted ? engine::PrecisionOf(type) : 0) + ", " +
           std::to_string(counted ? engine::ScaleOf(type) : 0) + ", " +
           (text ? '\'' + std::string(Collation::Name) + '\'' : "NULL") + ", " +
           std::to_string(nullable) + ", 0)";
}

// One row for each type, of the form of TypeRow.
std::string TypeRows() {
    std::string rows;
    for (int kind = 0; kind <= static_cast<int>(engine::TypeKind::Xml); ++kind) {
        const engine::TypeFacts& facts = engine::FactsOf(static_cast<engine::TypeKind>(kind));
        rows += TypeRow(QString::fromUtf16(facts.name), facts.kind, facts.number) + ", ";
    }
    rows += TypeRow(QStringLiteral("sysname"), engine::TypeKind::NVarChar, SysnameNumber);
    return "FROM (SELECT * FROM (VALUES " + rows +
           ") UNION ALL SELECT c.name, q_type_number(c.type), c.user_type, c.schema_id,"
           " q_byte_length(c.type), " +
           PrecisionOfType + ", " + ScaleOfType + ", " + CollationOfType() +
           ", c.nullable, 1 FROM $q_types c) t";
}

SystemView Types() {
    ViewBuilder view(Schema, "types");
    view.Add(Sysname("name", false), "t.column1")
        .Add(TinyInt("system_type_id", false), "t.column2")
        .Add(Int("user_type_id", false), "t.column3")
        .Add(Int("schema_id", false), "t.column4")
        .AddNulls({Int("principal_id")})
        .Add(SmallInt("max_length", false), "t.column5")
        .Add(TinyInt("precision", false), "t.column6")
        .Add(TinyInt("scale", false), "t.column7")
        .Add(Sysname("collation_name"), "t.column8")
        .Add(Bit("is_nullable"), "t.column9")
        .Add(Bit("is_user_defined", false), "t.column10")
        .Add(Bit("is_assembly_type", false), "0")
        .Add(Int("default_object_id", false), "0")
        .Add(Int("rule_object_id", false), "0")
        .Add(Bit("is_table_type", false), "0");
    return view.From(TypeRows());
}

// The types of variable length.
constexpr const char* IsVariable = "t.column2 IN (165, 167, 231)";
// As "Transact-SQL Reference", sys.systypes, counts digits: characters of texts, bytes of the rest.
constexpr const char* OldPrecision =
    "CASE WHEN t.column2 IN (239, 231) THEN t.column5 / 2"
    " WHEN t.column6 > 0 THEN t.column6 ELSE t.column5 END";
constexpr const char* OldScale =
    "CASE WHEN t.column2 IN (48, 52, 56, 127, 106, 108, 60, 122, 41, 42, 43, 61, 58)"
    " THEN t.column7 END";

SystemView OldTypes() {
    ViewBuilder view(Schema, "systypes");
    view.Add(Sysname("name", false), "t.column1")
        .Add(TinyInt("xtype", false), "t.column2")
        .Add(TinyInt("status"), "CASE t.column9 WHEN 0 THEN 1 ELSE 0 END")
        .Add(SmallInt("xusertype"), "t.column3")
        .Add(SmallInt("length", false), "t.column5")
        .Add(TinyInt("xprec", false), "t.column6")
        .Add(TinyInt("xscale", false), "t.column7")
        .Add(Int("tdefault", false), "0")
        .Add(Int("domain", false), "0")
        .Add(SmallInt("uid"), "t.column4")
        .Add(SmallInt("reserved"), "0")
        .Add(Int("collationid"), "CASE WHEN t.column8 IS NOT NULL THEN 872468488 END")
        .Add(SmallInt("usertype"), OldTypeNumber("t.column2", "t.column3"))
        .Add(Bit("variable"), IsVariable)
        .Add(Bit("allownulls"), "t.column9")
        .Add(TinyInt("type", false), OldWireNumber("t.column2"))
        .AddNulls({VarChar("printfmt", 255)})
        .Add(SmallInt("prec"), OldPrecision)
        .Add(TinyInt("scale"), OldScale)
        .Add(Sysname("collation"), "t.column8");
    return view.From(TypeRows());
}

}  // namespace

std::vector<SystemView> TypeViews() {
    return {Types(), OldTypes()};
}

}  // namespace quarv::localdb::catalog
