// InformationNames: the groups of three columns that the views of INFORMATION_SCHEMA name things
// by.
#pragma once

#include "localdb/catalog/ViewBuilder.h"

namespace quarv::localdb::catalog {

// "TABLE" gives TABLE_CATALOG, TABLE_SCHEMA and TABLE_NAME of the object "o" in the schema "s".
void AddName(ViewBuilder& view, const std::string& what);
// The same by expressions for the schema's and the thing's names; all is null where those are.
void AddNameOf(ViewBuilder& view, const std::string& what, const std::string& schema,
               const std::string& name, bool nullable = false);
void AddNoName(ViewBuilder& view, const std::string& what);

// Of the three columns of a collation or a character set the name alone is given.
void AddOnlyName(ViewBuilder& view, const std::string& what, const std::string& expression);

// NUMERIC_PRECISION to DATETIME_PRECISION of the packed type "c.type".
void AddDigits(ViewBuilder& view);
// Storage SQL: the character set of "c.type".
extern const char* const CharacterSetOfType;

}  // namespace quarv::localdb::catalog
