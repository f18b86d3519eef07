#include "localdb/tsql/Output.h"

#include "localdb/tsql/QueryClauses.h"

namespace quarv::localdb::tsql {

std::unique_ptr<OutputClause> ParseOutput(TokenReader& reader) {
    if (!reader.AtWord(u"output")) return nullptr;
    auto output = std::make_unique<OutputClause>();
    output->line = reader.Line();
    reader.Take();
    do {
        output->items.push_back(ParseSelectItem(reader));
    } while (reader.TrySign(u","));
    if (!reader.TryWord(u"into")) return output;
    output->into = std::make_unique<ObjectName>(ParseTableName(reader));
    output->columns = ParseColumnNames(reader);
    if (reader.AtWord(u"output")) reader.Unsupported(QStringLiteral("OUTPUT INTO ... OUTPUT"));
    return output;
}

}  // namespace quarv::localdb::tsql
