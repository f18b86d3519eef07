#include "localdb/tsql/Select.h"

namespace quarv::localdb::tsql {

StatementPtr ParseSelect(TokenReader& reader) {
    auto statement = std::make_unique<Select>();
    statement->query = ParseStatementQuery(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
