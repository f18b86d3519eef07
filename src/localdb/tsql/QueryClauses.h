// QueryClauses: the parts of a query that other statements have too: a select item, FROM and WHERE,
// TOP, and the table that a statement changes.
#pragma once

#include "localdb/tsql/Query.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

// In QueryParser.cpp.
SelectItem ParseSelectItem(TokenReader& reader);
TableSourcePtr ParseTableSource(TokenReader& reader);
void ParseTop(TokenReader& reader, Query& query);
void SkipTableHints(TokenReader& reader);

// TOP of a statement that changes rows; `statement` names it where a form of TOP is refused.
void ParseTopRows(TokenReader& reader, Query& rows, const QString& statement);
// [FROM sources] [WHERE condition]
void ParseFromAndWhere(TokenReader& reader, Query& rows);
// A table's name or a table variable.
ObjectName ParseTableName(TokenReader& reader);
// The same with hints behind it.
void ParseTarget(TokenReader& reader, NamedTable& target);
// (name, ...); empty where no parenthesis stands here.
std::vector<QString> ParseColumnNames(TokenReader& reader);
// True where "=" or a compound assignment stands behind a name of any number of parts, whose first
// part is the token `ahead` - 1.
bool AtAssignSign(TokenReader& reader, size_t ahead);

}  // namespace quarv::localdb::tsql
