#include "localdb/tsql/TypeStatement.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

StatementPtr ParseCreateType(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto statement = std::make_unique<TypeStatement>();
    statement->name = ParseObjectName(reader);
    if (reader.AtWord(u"as") && reader.AtWord(u"table", 1)) {
        reader.Unsupported(QStringLiteral("CREATE TYPE ... AS TABLE"));
    }
    if (reader.AtWord(u"external")) reader.Unsupported(QStringLiteral("EXTERNAL NAME"));
    reader.ExpectWord(u"from");
    statement->base = ParseTypeName(reader);
    if (reader.TryWord(u"not")) {
        reader.ExpectWord(u"null");
        statement->nullable = false;
    } else {
        reader.TryWord(u"null");
    }
    return statement;
}

StatementPtr ParseDropType(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto statement = std::make_unique<TypeStatement>();
    statement->drops = true;
    if (reader.TryWord(u"if")) {
        reader.ExpectWord(u"exists");
        statement->ifExists = true;
    }
    statement->name = ParseObjectName(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
