#include "localdb/tsql/CreateIndex.h"

#include <array>

#include "localdb/tsql/TokenReader.h"

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

StatementPtr ParseCreateIndex(TokenReader& reader) {
    reader.Take();
    auto statement = std::make_unique<CreateIndex>();
    statement->unique = reader.TryWord(u"unique");
    statement->clustered = reader.TryWord(u"clustered");
    if (!statement->clustered) reader.TryWord(u"nonclustered");
    reader.ExpectWord(u"index");
    statement->name = reader.ExpectName();
    reader.ExpectWord(u"on");
    statement->table = ParseObjectName(reader);
    statement->keys = ParseKeyColumns(reader);
    for (const QStringView word : {u"include", u"where"}) {
        if (reader.AtWord(word)) {
            reader.Unsupported(QStringLiteral("CREATE INDEX ... ") + word.toString().toUpper());
        }
    }
    ParseIndexOptions(reader);
    return statement;
}

}  // namespace quarv::localdb::tsql
