#include "localdb/tsql/Delete.h"

#include "localdb/tsql/QueryClauses.h"

namespace quarv::localdb::tsql {

StatementPtr ParseDelete(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<Delete>();
    statement->rows.line = reader.Line();
    ParseTopRows(reader, statement->rows, QStringLiteral("DELETE"));
    reader.TryWord(u"from");
    ParseTarget(reader, statement->target);
    statement->output = ParseOutput(reader);
    ParseFromAndWhere(reader, statement->rows);
    return statement;
}

StatementPtr ParseTruncate(TokenReader& reader) {
    reader.Take();
    reader.ExpectWord(u"table");
    auto statement = std::make_unique<Truncate>();
    statement->table = ParseObjectName(reader, true);
    if (reader.AtWord(u"with")) reader.Unsupported(QStringLiteral("TRUNCATE TABLE ... WITH"));
    return statement;
}

}  // namespace quarv::localdb::tsql
