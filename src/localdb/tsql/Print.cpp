#include "localdb/tsql/Print.h"

#include "localdb/tsql/ExpressionParser.h"

namespace quarv::localdb::tsql {

StatementPtr ParsePrint(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<Print>();
    statement->text = ParseExpression(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
