#include "localdb/tsql/CreateIndex.h"

#include <array>

#include "localdb/tsql/ExpressionParser.h"

namespace quarv::localdb::tsql {

std::vector<KeyColumn> ParseKeyColumns(TokenReader& reader) {
    std::vector<KeyColumn> keys;
    reader.ExpectSign(u"(");
    do {
        KeyColumn key;
        key.name = reader.ExpectName();
        key.descending = reader.TryWord(u"desc");
        if (!key.descending) reader.TryWord(u"asc");
        keys.push_back(std::move(key));
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return keys;
}

void ParseIndexOptions(TokenReader& reader) {
    if (reader.AtWord(u"with") && reader.AtSign(u"(", 1)) {
        reader.Take();
        reader.Take();
        // How a page is filled and how the index is built; IGNORE_DUP_KEY changes results.
        constexpr std::array<QStringView, 9> Harmless = {u"fillfactor",
                                                         u"pad_index",
                                                         u"sort_in_tempdb",
                                                         u"statistics_norecompute",
                                                         u"online",
                                                         u"maxdop",
                                                         u"allow_row_locks",
                                                         u"allow_page_locks",
                                                         u"optimize_for_sequential_key"};
        do {
            const Token option = reader.Peek();
            bool known = false;
            for (const QStringView word : Harmless) known = known || reader.TryWord(word);
            if (!known) reader.Unsupported(option.text.toUpper());
            reader.ExpectSign(u"=");
            if (!reader.TryWord(u"on") && !reader.TryWord(u"off")) reader.ExpectInteger();
        } while (reader.TrySign(u","));
        reader.ExpectSign(u")");
    }
    if (reader.AtWord(u"on") && reader.Peek(1).kind == TokenKind::QuotedName &&
        reader.Peek(1).text.compare(u"primary", Qt::CaseInsensitive) == 0) {
        reader.Take();
        reader.Take();
    }
}

void ParseIndexTail(TokenReader& reader, IndexDefinition& index) {
    if (reader.TryWord(u"include")) {
        reader.ExpectSign(u"(");
        do {
            index.included.push_back(reader.ExpectName());
        } while (reader.TrySign(u","));
        reader.ExpectSign(u")");
    }
    if (reader.TryWord(u"where")) index.filter = ParseCondition(reader);
    ParseIndexOptions(reader);
}

StatementPtr ParseCreateIndex(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<CreateIndex>();
    IndexDefinition& index = statement->index;
    index.unique = reader.TryWord(u"unique");
    index.clustered = reader.TryWord(u"clustered");
    if (!index.clustered) reader.TryWord(u"nonclustered");
    if (reader.AtWord(u"columnstore")) reader.Unsupported(QStringLiteral("COLUMNSTORE"));
    reader.ExpectWord(u"index");
    index.name = reader.ExpectName();
    reader.ExpectWord(u"on");
    statement->table = ParseObjectName(reader);
    index.keys = ParseKeyColumns(reader);
    ParseIndexTail(reader, index);
    return statement;
}

}  // namespace quarv::localdb::tsql
