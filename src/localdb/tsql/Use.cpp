#include "localdb/tsql/Use.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseUse(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<Use>();
    statement->database = reader.ExpectName();
    return statement;
}

}  // namespace quarv::localdb::tsql
