#include <algorithm>
#include <array>

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/OdbcTypes.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::SystemCall;
using engine::TypeClass;
using engine::TypeKind;

enum Argument : size_t { DataType, OdbcVersion };

constexpr int MaxBytes = 8000;
constexpr int MaxDigits = 38;

// SQL_PRED_BASIC and SQL_SEARCHABLE of "SQLGetTypeInfo Function".
constexpr int MaxTimeScale = 7;
constexpr int64_t NotSearchable = 0;
constexpr int64_t OnlyLike = 1;
constexpr int64_t WithoutLike = 2;
constexpr int64_t WithLike = 3;

std::vector<Column> TypeInfoColumns() {
    return {Sysname("TYPE_NAME", false),
            SmallInt("DATA_TYPE", false),
            Int("PRECISION"),
            VarChar("LITERAL_PREFIX", 32),
            VarChar("LITERAL_SUFFIX", 32),
            VarChar("CREATE_PARAMS", 32),
            SmallInt("NULLABLE", false),
            SmallInt("CASE_SENSITIVE", false),
            SmallInt("SEARCHABLE", false),
            SmallInt("UNSIGNED_ATTRIBUTE"),
            SmallInt("MONEY", false),
            SmallInt("AUTO_INCREMENT"),
            Sysname("LOCAL_TYPE_NAME"),
            SmallInt("MINIMUM_SCALE"),
            SmallInt("MAXIMUM_SCALE"),
            SmallInt("SQL_DATA_TYPE", false),
            SmallInt("SQL_DATETIME_SUB"),
            Int("NUM_PREC_RADIX"),
            SmallInt("INTERVAL_PRECISION"),
            SmallInt("USERTYPE")};
}

// What the type's class says about all of its types.
struct ClassRules {
    const char* prefix = nullptr;
    const char* suffix = nullptr;
    const char* parameters = nullptr;
    bool number = false;
};

ClassRules RulesOf(const OdbcType& type) {
    const bool wide = engine::IsUnicode(type.kind);
    const bool fixed = engine::IsFixedLength(type.kind);
    switch (engine::FactsOf(type.kind).cls) {
        case TypeClass::Guid:
            return {"'", "'", nullptr, false};
        case TypeClass::Binary: {
            const bool plain = type.length != 0;
            return {"0x", nullptr, plain ? nullptr : fixed ? "length" : "max length", false};
        }
        case TypeClass::Text:
            if (type.length != 0) return {wide ? "N'" : "'", "'", nullptr, false};
            return {wide ? "N'" : "'", "'", fixed ? "length" : "max length", false};
        case TypeClass::Moment:
            return {"'", "'", type.precision == 0 ? "scale" : nullptr, false};
        case TypeClass::Money:
            return {"$", nullptr, nullptr, true};
        case TypeClass::Decimal:
            return {nullptr, nullptr, "precision,scale", true};
        default:
            return {nullptr, nullptr, nullptr, type.kind != TypeKind::Bit};
    }
}

int64_t LargestPrecision(const OdbcType& type) {
    if (type.precision != 0) return type.precision;
    const engine::TypeFacts& facts = engine::FactsOf(type.kind);
    if (facts.cls == TypeClass::Decimal) return MaxDigits;
    if (facts.cls == TypeClass::Moment) return facts.precision;
    return engine::IsUnicode(type.kind) ? MaxBytes / 2 : MaxBytes;
}

OwnedValue Maybe(const char* text) {
    return text ? Value(QString::fromLatin1(text)) : Null();
}

OwnedValue NumberIf(bool present, int64_t number) {
    return present ? Value(number) : Null();
}

// The old long texts are found by LIKE alone, what is no text by everything else.
int64_t Searchable(const OdbcType& type) {
    if (type.kind == TypeKind::Image || type.kind == TypeKind::Xml) return NotSearchable;
    if (engine::IsOldLong(type.kind)) return OnlyLike;
    const TypeClass cls = engine::FactsOf(type.kind).cls;
    return cls == TypeClass::Text || cls == TypeClass::Moment ? WithLike : WithoutLike;
}

// `identity`: the type's row as that of an identity column.
std::vector<OwnedValue> TypeRow(const OdbcType& type, bool identity, int64_t version) {
    const ClassRules rules = RulesOf(type);
    const TypeClass cls = engine::FactsOf(type.kind).cls;
    const bool decimal = cls == TypeClass::Decimal;
    const bool timed = engine::HasTimeScale(type.kind);
    const bool ranged = decimal || timed;
    const bool scaled = type.scale >= 0;
    QString name = QString::fromUtf16(engine::FactsOf(type.kind).name);
    if (identity) name += QStringLiteral(" identity");
    return {Value(name),
            Value(int64_t{type.Code(version)}),
            Value(LargestPrecision(type)),
            Maybe(rules.prefix),
            Maybe(rules.suffix),
            Maybe(rules.parameters),
            Value(int64_t{identity ? 0 : 1}),
            Value(int64_t{0}),
            Value(Searchable(type)),
            NumberIf(rules.number, type.kind == TypeKind::TinyInt ? 1 : 0),
            Value(int64_t{cls == TypeClass::Money ? 1 : 0}),
            NumberIf(rules.number, identity ? 1 : 0),
            Value(name),
            NumberIf(scaled || ranged, ranged ? 0 : type.scale),
            NumberIf(scaled || ranged, decimal ? MaxDigits
                                       : timed ? MaxTimeScale
                                               : type.scale),
            Value(int64_t{type.sqlType}),
            NumberIf(type.subcode != 0, type.subcode),
            NumberIf(rules.number, 10),
            Null(),
            Value(int64_t{0})};
}

bool MayBeIdentity(const OdbcType& type) {
    return engine::FactsOf(type.kind).cls == TypeClass::Integer && type.kind != TypeKind::Bit;
}

int RunTypeInfo(SystemCall& call) {
    const int64_t version = call.IsNull(OdbcVersion) ? 2 : call.Integer(OdbcVersion);
    const int64_t asked = call.IsNull(DataType) ? 0 : call.Integer(DataType);
    std::vector<OdbcType> types(OdbcTypes::All().begin(), OdbcTypes::All().end());
    std::stable_sort(types.begin(), types.end(), [version](const auto& a, const auto& b) {
        return a.Code(version) < b.Code(version);
    });
    call.Begin(TypeInfoColumns());
    for (const OdbcType& type : types) {
        if (asked != 0 && asked != type.Code(version)) continue;
        call.Row(TypeRow(type, false, version));
        if (MayBeIdentity(type)) call.Row(TypeRow(type, true, version));
    }
    call.End();
    return 0;
}

}  // namespace

std::vector<engine::SystemProcedure> TypesProcedures() {
    const std::vector<engine::SystemParameter> parameters = {Optional(Int("@data_type")),
                                                             Optional(TinyInt("@ODBCVer"))};
    return {{QStringLiteral("sp_datatype_info"), parameters, RunTypeInfo},
            {QStringLiteral("sp_datatype_info_100"), parameters, RunTypeInfo}};
}

}  // namespace quarv::localdb::catalog
