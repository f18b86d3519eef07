#include "localdb/engine/StoredForm.h"

#include <sqlite3.h>

#include <array>

#include "localdb/engine/DecimalMath.h"
#include "localdb/engine/Guid.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

[[noreturn]] void Damaged() {
    throw SqlError(945, {QString()});
}

std::string_view BlobOf(sqlite3_value* value) {
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
    const auto size = static_cast<size_t>(sqlite3_value_bytes(value));
    return bytes ? std::string_view(bytes, size) : std::string_view();
}

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, static_cast<size_t>(sqlite3_value_bytes(value))};
}

// A datetimeoffset: its UTC in eleven letters of six bits, then its offset from -840 in two.
constexpr size_t UtcLetters = 11, OffsetLetters = 2;
constexpr int MaxOffset = 14 * 60;
constexpr char FirstLetter = '0';
using OffsetText = std::array<char, UtcLetters + OffsetLetters>;

void PutLetters(char* out, size_t count, uint64_t number) {
    while (count > 0) {
        out[--count] = static_cast<char>(FirstLetter + static_cast<char>(number & 63));
        number >>= 6;
    }
}

uint64_t TakeLetters(std::string_view letters) {
    uint64_t number = 0;
    for (const char letter : letters) {
        if (letter < FirstLetter || letter > FirstLetter + 63) Damaged();
        number = number << 6 | static_cast<uint64_t>(letter - FirstLetter);
    }
    return number;
}

OffsetText StoreOffset(const SqlValue& value) {
    OffsetText out;
    PutLetters(out.data(), UtcLetters, static_cast<uint64_t>(value.integer));
    PutLetters(out.data() + UtcLetters, OffsetLetters,
               static_cast<uint64_t>(value.offset + MaxOffset));
    return out;
}

SqlValue LoadOffset(std::string_view text) {
    if (text.size() != UtcLetters + OffsetLetters) Damaged();
    const uint64_t utc = TakeLetters(text.substr(0, UtcLetters));
    const uint64_t offset = TakeLetters(text.substr(UtcLetters));
    if (utc > static_cast<uint64_t>(Moment::LastTick) || offset > 2 * MaxOffset) Damaged();
    SqlValue value = SqlValue::Integer(static_cast<int64_t>(utc));
    value.offset = static_cast<int16_t>(static_cast<int>(offset) - MaxOffset);
    return value;
}

}  // namespace

bool IsLongDecimal(const SqlType& type) {
    return ClassOf(type) == TypeClass::Decimal && type.precision > 18;
}

const char* StoredClass(const SqlType& type) {
    switch (ClassOf(type)) {
        case TypeClass::Text:
            return "TEXT";
        case TypeClass::Real:
            return "REAL";
        case TypeClass::Decimal:
            return IsLongDecimal(type) ? "BLOB" : "INTEGER";
        case TypeClass::Binary:
        case TypeClass::Guid:
            return "BLOB";
        case TypeClass::Moment:
            return type.kind == TypeKind::DateTimeOffset ? "TEXT" : "INTEGER";
        default:
            return "INTEGER";
    }
}

void BindStored(sqlite3_stmt* statement, int index, const SqlValue& value, const SqlType& type) {
    switch (value.kind) {
        case SqlValue::Kind::Null:
            sqlite3_bind_null(statement, index);
            break;
        case SqlValue::Kind::Integer:
            if (type.kind == TypeKind::DateTimeOffset) {
                const OffsetText text = StoreOffset(value);
                sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_TRANSIENT,
                                    SQLITE_UTF8);
            } else {
                sqlite3_bind_int64(statement, index, value.integer);
            }
            break;
        case SqlValue::Kind::Bytes:
            sqlite3_bind_blob64(statement, index, value.text.data() ? value.text.data() : "",
                                value.text.size(), SQLITE_TRANSIENT);
            break;
        case SqlValue::Kind::Real:
            sqlite3_bind_double(statement, index, value.real);
            break;
        case SqlValue::Kind::Text:
            sqlite3_bind_text64(statement, index, value.text.data() ? value.text.data() : "",
                                value.text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        case SqlValue::Kind::Wide:
            if (IsLongDecimal(type)) {
                char bytes[DecimalMath::StoredBytes];
                DecimalMath::Store(value.wide, bytes);
                sqlite3_bind_blob(statement, index, bytes, sizeof bytes, SQLITE_TRANSIENT);
            } else {
                sqlite3_bind_int64(statement, index, static_cast<int64_t>(value.wide));
            }
    }
}

void ReturnStored(sqlite3_context* context, const SqlValue& value, const SqlType& type) {
    switch (value.kind) {
        case SqlValue::Kind::Null:
            sqlite3_result_null(context);
            break;
        case SqlValue::Kind::Integer:
            if (type.kind == TypeKind::DateTimeOffset) {
                const OffsetText text = StoreOffset(value);
                sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT,
                                      SQLITE_UTF8);
            } else {
                sqlite3_result_int64(context, value.integer);
            }
            break;
        case SqlValue::Kind::Bytes:
            sqlite3_result_blob64(context, value.text.data() ? value.text.data() : "",
                                  value.text.size(), SQLITE_TRANSIENT);
            break;
        case SqlValue::Kind::Real:
            sqlite3_result_double(context, value.real);
            break;
        case SqlValue::Kind::Text:
            sqlite3_result_text64(context, value.text.data() ? value.text.data() : "",
                                  value.text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
            break;
        case SqlValue::Kind::Wide:
            if (IsLongDecimal(type)) {
                char bytes[DecimalMath::StoredBytes];
                DecimalMath::Store(value.wide, bytes);
                sqlite3_result_blob(context, bytes, sizeof bytes, SQLITE_TRANSIENT);
            } else {
                sqlite3_result_int64(context, static_cast<int64_t>(value.wide));
            }
    }
}

SqlValue ReadStored(sqlite3_value* value, const SqlType& type) {
    const int found = sqlite3_value_type(value);
    if (found == SQLITE_NULL) return {};
    switch (ClassOf(type)) {
        case TypeClass::Text:
            if (found != SQLITE_TEXT) Damaged();
            return SqlValue::Text(TextOf(value));
        case TypeClass::Guid:
            if (found != SQLITE_BLOB || sqlite3_value_bytes(value) != Guid::Size) Damaged();
            return SqlValue::Bytes(BlobOf(value));
        case TypeClass::Binary:
            if (found != SQLITE_BLOB) Damaged();
            return SqlValue::Bytes(BlobOf(value));
        case TypeClass::Real:
            if (found != SQLITE_FLOAT && found != SQLITE_INTEGER) Damaged();
            return SqlValue::Real(sqlite3_value_double(value));
        case TypeClass::Decimal: {
            if (!IsLongDecimal(type)) {
                if (found != SQLITE_INTEGER) Damaged();
                return SqlValue::Wide(sqlite3_value_int64(value));
            }
            const std::optional<Int128> wide =
                found == SQLITE_BLOB ? DecimalMath::Load(BlobOf(value)) : std::nullopt;
            if (!wide) Damaged();
            return SqlValue::Wide(*wide);
        }
        default:
            if (type.kind == TypeKind::DateTimeOffset) {
                if (found != SQLITE_TEXT) Damaged();
                return LoadOffset(TextOf(value));
            }
            if (found != SQLITE_INTEGER) Damaged();
            return SqlValue::Integer(sqlite3_value_int64(value));
    }
}

Datum ToDatum(const SqlValue& value) {
    Datum datum;
    datum.null = value.IsNull();
    datum.integer = value.integer;
    datum.real = value.real;
    datum.offsetMinutes = value.offset;
    datum.text = value.text;
    datum.bytes = std::as_bytes(std::span(value.text.data(), value.text.size()));
    datum.negative = value.wide < 0;
    datum.magnitude =
        datum.negative ? -static_cast<UInt128>(value.wide) : static_cast<UInt128>(value.wide);
    return datum;
}

int CompareStoredOffsets(std::string_view a, std::string_view b) {
    return a.substr(0, UtcLetters).compare(b.substr(0, UtcLetters));
}

SqlValue FromDatum(const Datum& datum, const SqlType& type) {
    if (datum.null) return {};
    switch (ClassOf(type)) {
        case TypeClass::Text:
            return SqlValue::Text(datum.text);
        case TypeClass::Real:
            return SqlValue::Real(datum.real);
        case TypeClass::Decimal: {
            const auto wide = static_cast<Int128>(datum.magnitude);
            return SqlValue::Wide(datum.negative ? -wide : wide);
        }
        case TypeClass::Binary:
        case TypeClass::Guid:
            return SqlValue::Bytes(
                {reinterpret_cast<const char*>(datum.bytes.data()), datum.bytes.size()});
        default: {
            SqlValue value = SqlValue::Integer(datum.integer);
            value.offset = datum.offsetMinutes;
            return value;
        }
    }
}

SqlValue ReadColumn(sqlite3_stmt* statement, int column, const SqlType& type) {
    return ReadStored(sqlite3_column_value(statement, column), type);
}

void ReadDatum(sqlite3_stmt* statement, int column, const SqlType& type, Datum& datum) {
    datum = ToDatum(ReadColumn(statement, column, type));
}

}  // namespace quarv::localdb::engine
