// QueryParts: the parsers of a query's parts, for each other; Query.h is the way in.
#pragma once

#include "localdb/tsql/Query.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

// SELECT ... up to HAVING: one arm of a set operation; in QueryParser.cpp.
std::unique_ptr<Query> ParseSpecification(TokenReader& reader);
// ORDER BY, OFFSET and FETCH, where they stand here.
void ParseOrder(TokenReader& reader, Query& query);
// "BY" and the items behind it.
std::vector<OrderItem> ParseOrderList(TokenReader& reader);
// GROUP BY and HAVING, where they stand here; in GroupingParser.cpp.
void ParseGrouping(TokenReader& reader, Query& query);

// Hints that change no result are read and let go; others are refused by name. In QueryHints.cpp.
void SkipJoinHint(TokenReader& reader);
// OPTION (...), where it stands here.
void ParseOptions(TokenReader& reader, Query& query);

}  // namespace quarv::localdb::tsql
