// CatalogColumns: short ways to write the result columns of catalogue views and procedures, and the
// values of their rows.
#pragma once

#include "localdb/engine/SystemObjects.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::catalog {

using engine::Column;
using engine::OwnedValue;

// Each may hold null unless `nullable` is false.
Column Sysname(const char* name, bool nullable = true);
Column NVarChar(const char* name, int length, bool nullable = true);
Column VarChar(const char* name, int length, bool nullable = true);
Column NChar(const char* name, int length, bool nullable = true);
Column Char(const char* name, int length, bool nullable = true);
Column Int(const char* name, bool nullable = true);
Column BigInt(const char* name, bool nullable = true);
Column SmallInt(const char* name, bool nullable = true);
Column TinyInt(const char* name, bool nullable = true);
Column Bit(const char* name, bool nullable = true);
Column DateTime(const char* name, bool nullable = true);
Column Binary(const char* name, int length, bool nullable = true);
Column Image(const char* name, bool nullable = true);
Column VarBinary(const char* name, int length, bool nullable = true);
Column Guid(const char* name, bool nullable = true);
Column Numeric38(const char* name, bool nullable = true);  // numeric(38,0)

// A procedure's parameter of the column's name and type.
engine::SystemParameter Optional(const Column& column);
engine::SystemParameter Required(const Column& column);

// Storage SQL for the collation of the packed type "c.type": null for what is no text.
const std::string& CollationOfType();

// Storage SQL for the digits of the packed type "c.type", as the sys views count them: 0 for none.
extern const char* const PrecisionOfType;
extern const char* const ScaleOfType;

// Storage SQL for the number of a type as systypes.usertype has it, of its own and of its user's
// number; and for systypes.type, of its own number.
std::string OldTypeNumber(const std::string& number, const std::string& userNumber);
std::string OldWireNumber(const std::string& number);

// A null QString is null.
OwnedValue Value(const QString& text);
OwnedValue Value(int64_t number);
OwnedValue WideValue(int64_t number);  // of a numeric
OwnedValue Null();

}  // namespace quarv::localdb::catalog
