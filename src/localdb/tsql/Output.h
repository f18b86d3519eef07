// OutputClause: OUTPUT items [INTO table [(columns)]] of INSERT, UPDATE and DELETE.
#pragma once

#include "localdb/tsql/Query.h"

namespace quarv::localdb::tsql {

struct OutputClause {
    std::vector<SelectItem> items;
    std::unique_ptr<ObjectName> into;  // nothing: to the client
    std::vector<QString> columns;      // of INTO; empty: all but the identity column
    int line = 0;
};

// The clause at the reader's place; nothing where none stands there.
std::unique_ptr<OutputClause> ParseOutput(TokenReader& reader);

}  // namespace quarv::localdb::tsql
