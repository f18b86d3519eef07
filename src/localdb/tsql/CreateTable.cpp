#include "localdb/tsql/CreateTable.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

void ParseTableElements(TokenReader& reader, TableElements& elements) {
    reader.ExpectSign(u"(");
    do {
        // A comma may stand before the closing parenthesis.
        if (reader.AtSign(u")") && !elements.columns.empty()) break;
        ParseTableElement(reader, elements);
    } while (reader.TrySign(u",") || reader.AtWord(u"constraint"));
    reader.ExpectSign(u")");
}

StatementPtr ParseCreateTable(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto table = std::make_unique<CreateTable>();
    table->name = ParseObjectName(reader, true);
    ParseTableElements(reader, *table);
    ParseIndexOptions(reader);
    TryFilegroup(reader, u"textimage_on");
    if (reader.AtWord(u"textimage_on")) reader.Unsupported(QStringLiteral("TEXTIMAGE_ON"));
    return table;
}

}  // namespace quarv::localdb::tsql
