// StoredForm: how values of each type lie in a record: integers, money and moments as INTEGER,
// decimals of up to 18 digits as scaled INTEGER and longer ones as 17 ordered bytes, floats as
// REAL, text as UTF-8, binaries as BLOB, a datetimeoffset as text of its UTC and its offset,
// compared by the collation "tsql_offset", a uniqueidentifier as BLOB in the order of its sorting.
// Every read checks what it finds: a file may hold anything.
#pragma once

#include "localdb/engine/Datum.h"
#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"

struct sqlite3_context;
struct sqlite3_stmt;
struct sqlite3_value;

namespace quarv::localdb::engine {

bool IsLongDecimal(const SqlType& type);
// The storage class that a column of the type is declared with.
const char* StoredClass(const SqlType& type);

void BindStored(sqlite3_stmt* statement, int index, const SqlValue& value, const SqlType& type);
void ReturnStored(sqlite3_context* context, const SqlValue& value, const SqlType& type);
// The value's text points into the record. Raises SqlError 945 where the record does not hold what
// the type says.
SqlValue ReadStored(sqlite3_value* value, const SqlType& type);
// Order of two stored datetimeoffsets: by their UTC alone.
int CompareStoredOffsets(std::string_view a, std::string_view b);
// A result column of the current row; raises likewise.
SqlValue ReadColumn(sqlite3_stmt* statement, int column, const SqlType& type);
// The same as a datum for a sink; raises likewise.
void ReadDatum(sqlite3_stmt* statement, int column, const SqlType& type, Datum& datum);
// A computed value as a datum; its text points where the value's does.
Datum ToDatum(const SqlValue& value);
// The value that a datum of the type stands for; its text points where the datum's does.
SqlValue FromDatum(const Datum& datum, const SqlType& type);

}  // namespace quarv::localdb::engine
