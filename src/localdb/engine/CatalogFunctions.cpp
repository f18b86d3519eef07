#include "localdb/engine/CatalogFunctions.h"

#include <sqlite3.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <array>
#include <cctype>
#include <optional>

#include "localdb/engine/Collation.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/Utf8.h"
#include "localdb/engine/ViewTables.h"
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

// The end of what begins with a quote at `at`; a doubled closing quote does not end it.
size_t QuotedEnd(std::string_view text, size_t at) {
    const char close = text[at] == '[' ? ']' : text[at];
    for (size_t i = at + 1; i < text.size(); ++i) {
        if (text[i] != close) continue;
        if (i + 1 == text.size() || text[i + 1] != close) return i + 1;
        ++i;
    }
    return text.size();
}

std::string Unquoted(std::string_view quoted) {
    const char close = quoted.back();
    std::string name;
    for (size_t i = 1; i + 1 < quoted.size(); ++i) {
        name += quoted[i];
        if (quoted[i] == close) ++i;
    }
    return name;
}

bool IsNameByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) || byte >= 0x80 || c == '_' || c == '@' || c == '#' || c == '$';
}

// Whether the source of an expression names a column: no text, no function, no variable.
bool Mentions(std::string_view source, std::string_view name) {
    size_t end = 0;
    for (size_t at = 0; at < source.size(); at = end) {
        const char first = source[at];
        end = at + 1;
        if (first == '\'' || first == '[' || first == '"') {
            end = QuotedEnd(source, at);
            if (first == '\'' || end - at < 2) continue;
            if (Collation::Compare(Unquoted(source.substr(at, end - at)), name) == 0) return true;
        } else if (IsNameByte(first)) {
            while (end < source.size() && IsNameByte(source[end])) ++end;
            const char next = end < source.size() ? source[end] : ' ';
            if (next == '(' || next == '\'') continue;
            if (Collation::Compare(source.substr(at, end - at), name) == 0) return true;
        }
    }
    return false;
}

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (!text) return {};
    return {text, static_cast<size_t>(sqlite3_value_bytes(value))};
}

void MentionsColumn(sqlite3_context* context, int, sqlite3_value** values) {
    sqlite3_result_int(context, Mentions(TextOf(values[0]), TextOf(values[1])));
}

void ReturnJson(sqlite3_context* context, const QJsonArray& array) {
    const QByteArray text = QJsonDocument(array).toJson(QJsonDocument::Compact);
    sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

// [["database", "schema", "name"], ...] of the tables that a view's source names.
void ViewTables(sqlite3_context* context, int, sqlite3_value** values) {
    QJsonArray tables;
    for (const tsql::ObjectName& name : TablesOfView(FromUtf8(TextOf(values[0])))) {
        tables.append(QJsonArray({name.database, name.schema, name.name}));
    }
    ReturnJson(context, tables);
}

// [[reference, depth, "database", "schema", "table", "column" or null], ...] likewise.
void ViewColumns(sqlite3_context* context, int, sqlite3_value** values) {
    QJsonArray columns;
    for (const ViewColumn& column : ColumnsOfView(FromUtf8(TextOf(values[0])))) {
        const QJsonValue name = column.name.isEmpty() ? QJsonValue() : QJsonValue(column.name);
        columns.append(QJsonArray({column.reference, column.depth, column.table.database,
                                   column.table.schema, column.table.name, name}));
    }
    ReturnJson(context, columns);
}

// The rows of a storage table ("d5.t100001"); null where it is none.
void RowCount(sqlite3_context* context, int, sqlite3_value** values) {
    const std::string_view name = TextOf(values[0]);
    const size_t point = name.find('.');
    const auto digits = [](std::string_view text) {
        return text.size() > 1 && text.find_first_not_of("0123456789", 1) == text.npos;
    };
    if (point == name.npos || !digits(name.substr(0, point)) || !digits(name.substr(point + 1))) {
        return;
    }
    const std::string sql = "SELECT count(*) FROM " + std::string(name);
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(sqlite3_context_db_handle(context), sql.c_str(), -1, &statement,
                           nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
        sqlite3_result_int64(context, sqlite3_column_int64(statement, 0));
    }
    sqlite3_finalize(statement);
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
    sqlite3_create_function_v2(handle, "q_mentions", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               MentionsColumn, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "q_view_tables", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                               nullptr, ViewTables, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "q_view_columns", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                               nullptr, ViewColumns, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "q_row_count", 1, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr,
                               RowCount, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(handle, "q_checks", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                               HasCheckOption, nullptr, nullptr, nullptr);
    for (const Entry& entry : Table) {
        sqlite3_create_function_v2(handle, entry.name, 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                   nullptr, entry.function, nullptr, nullptr, nullptr);
    }
}

}  // namespace quarv::localdb::engine
