#include "localdb/engine/StoredForm.h"

#include <sqlite3.h>

#include "localdb/engine/DecimalMath.h"
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
            sqlite3_bind_int64(statement, index, value.integer);
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
            sqlite3_result_int64(context, value.integer);
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
            return SqlValue::Text({reinterpret_cast<const char*>(sqlite3_value_text(value)),
                                   static_cast<size_t>(sqlite3_value_bytes(value))});
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
            if (found != SQLITE_INTEGER) Damaged();
            return SqlValue::Integer(sqlite3_value_int64(value));
    }
}

Datum ToDatum(const SqlValue& value) {
    Datum datum;
    datum.null = value.IsNull();
    datum.integer = value.integer;
    datum.real = value.real;
    datum.text = value.text;
    datum.negative = value.wide < 0;
    datum.magnitude =
        datum.negative ? -static_cast<UInt128>(value.wide) : static_cast<UInt128>(value.wide);
    return datum;
}

SqlValue ReadColumn(sqlite3_stmt* statement, int column, const SqlType& type) {
    return ReadStored(sqlite3_column_value(statement, column), type);
}

void ReadDatum(sqlite3_stmt* statement, int column, const SqlType& type, Datum& datum) {
    datum = ToDatum(ReadColumn(statement, column, type));
}

}  // namespace quarv::localdb::engine
