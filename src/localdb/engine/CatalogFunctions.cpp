#include "localdb/engine/CatalogFunctions.h"

#include <sqlite3.h>

#include <array>
#include <optional>

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/CreateView.h"

namespace quarv::localdb::engine {

namespace {

using Number = std::optional<int>;

constexpr int LargestLong = 2147483647;

// Characters and bytes alike; a rowversion is neither.
bool HasLength(const SqlType& type) {
    const TypeClass cls = ClassOf(type);
    return cls == TypeClass::Text ||
           (cls == TypeClass::Binary && type.kind != TypeKind::RowVersion);
}

Number CharLength(const SqlType& type) {
    if (!HasLength(type)) return std::nullopt;
    if (!IsOldLong(type.kind)) return type.length;
    return IsUnicode(type.kind) ? LargestLong / 2 : LargestLong;
}

Number OctetLength(const SqlType& type) {
    if (!HasLength(type)) return std::nullopt;
    if (!IsOldLong(type.kind)) return ByteLength(type);
    return IsUnicode(type.kind) ? LargestLong - 1 : LargestLong;
}

Number MomentDigits(const SqlType& type) {
    return ClassOf(type) == TypeClass::Moment ? Number(PrecisionOf(type)) : std::nullopt;
}

Number Bytes(const SqlType& type) {
    return ByteLength(type);
}

bool IsCounted(const SqlType& type) {
    return IsNumber(type) && type.kind != TypeKind::Bit;
}

Number Precision(const SqlType& type) {
    return IsCounted(type) ? Number(PrecisionOf(type)) : std::nullopt;
}

// Floats count binary digits.
Number Radix(const SqlType& type) {
    if (!IsCounted(type)) return std::nullopt;
    return ClassOf(type) == TypeClass::Real ? 2 : 10;
}

Number Scale(const SqlType& type) {
    const bool exact = IsCounted(type) && ClassOf(type) != TypeClass::Real;
    return exact ? Number(ScaleOf(type)) : std::nullopt;
}

Number MomentScale(const SqlType& type) {
    if (ClassOf(type) != TypeClass::Moment) return std::nullopt;
    return ScaleOf(type);
}

Number SystemNumber(const SqlType& type) {
    return FactsOf(type.kind).number;
}

template <Number (*Function)(const SqlType&)>
void AsNumber(sqlite3_context* context, int, sqlite3_value** values) {
    try {
        const Number number = Function(UnpackType(sqlite3_value_int64(values[0])));
        if (number) sqlite3_result_int(context, *number);
    } catch (const SqlError&) {
        sqlite3_result_error_code(context, SQLITE_CORRUPT);
    }
}

template <bool WithLength>
void AsText(sqlite3_context* context, int, sqlite3_value** values) {
    try {
        const SqlType type = UnpackType(sqlite3_value_int64(values[0]));
        const QByteArray text = (WithLength ? type.ToText() : type.Name()).toUtf8();
        sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()),
                            SQLITE_TRANSIENT);
    } catch (const SqlError&) {
        sqlite3_result_error_code(context, SQLITE_CORRUPT);
    }
}

// The first `count` UTF-16 units of a text.
void Left(sqlite3_context* context, int, sqlite3_value** values) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
    if (!text) return;
    const auto size = static_cast<size_t>(sqlite3_value_bytes(values[0]));
    const auto count = static_cast<size_t>(sqlite3_value_int(values[1]));
    const std::string_view front = TakeUtf16({text, size}, count);
    sqlite3_result_text64(context, front.data(), front.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

// Whether the text is that of a view WITH CHECK OPTION.
void HasCheckOption(sqlite3_context* context, int, sqlite3_value** values) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
    bool has = false;
    try {
        if (text) {
            const tsql::StatementList statements = tsql::ParseBatch(QString::fromUtf8(text));
            has = statements.size() == 1 &&
                  statements.front()->type == tsql::StatementType::CreateView &&
                  static_cast<const tsql::CreateView&>(*statements.front()).checkOption;
        }
    } catch (const std::exception&) {
        // What cannot be read has no option either.
    }
    sqlite3_result_int(context, has);
}

using SqlFunction = void (*)(sqlite3_context*, int, sqlite3_value**);

struct Entry {
    const char* name;
    SqlFunction function;
};

constexpr std::array<Entry, 11> Table = {{{"q_type_name", AsText<false>},
                                          {"q_type_text", AsText<true>},
                                          {"q_type_number", AsNumber<SystemNumber>},
                                          {"q_char_length", AsNumber<CharLength>},
                                          {"q_octet_length", AsNumber<OctetLength>},
                                          {"q_byte_length", AsNumber<Bytes>},
                                          {"q_precision", AsNumber<Precision>},
                                          {"q_radix", AsNumber<Radix>},
                                          {"q_scale", AsNumber<Scale>},
                                          {"q_moment_digits", AsNumber<MomentDigits>},
                                          {"q_moment_scale", AsNumber<MomentScale>}}};

}  // namespace

void RegisterCatalogFunctions(sqlite3* handle) {
    sqlite3_create_function_v2(handle, "q_left", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               Left, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "q_checks", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               HasCheckOption, nullptr, nullptr, nullptr);
    for (const Entry& entry : Table) {
        sqlite3_create_function_v2(handle, entry.name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                   nullptr, entry.function, nullptr, nullptr, nullptr);
    }
}

}  // namespace quarv::localdb::engine
