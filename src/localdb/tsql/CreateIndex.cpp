#include "localdb/tsql/CreateIndex.h"

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

namespace {

struct IndexOption {
    QStringView name;
    QStringView value;  // the only one that is so anyway; empty: any
};

// How a page is filled and how the index is built changes nothing that a client can see. The others
// may say what every index here is.
constexpr IndexOption IndexOptions[] = {
    {u"allow_page_locks", u""},
    {u"allow_row_locks", u""},
    {u"data_compression", u"none"},
    {u"drop_existing", u"off"},
    {u"fillfactor", u""},
    {u"ignore_dup_key", u"off"},
    {u"maxdop", u""},
    {u"online", u""},
    {u"optimize_for_sequential_key", u""},
    {u"pad_index", u""},
    {u"resumable", u"off"},
    {u"sort_in_tempdb", u""},
    {u"statistics_incremental", u"off"},
    {u"statistics_norecompute", u""},
    {u"xml_compression", u"off"},
};

void ParseIndexOption(TokenReader& reader) {
    const Token name = reader.Peek();
    for (const IndexOption& option : IndexOptions) {
        if (!reader.TryWord(option.name)) continue;
        reader.ExpectSign(u"=");
        if (!option.value.isEmpty()) {
            if (!reader.TryWord(option.value)) reader.Unsupported(name.text.toUpper(), name);
        } else if (!reader.TryWord(u"on") && !reader.TryWord(u"off")) {
            reader.ExpectInteger();
        }
        return;
    }
    if (name.kind != TokenKind::Word) reader.Fail();
    reader.Unsupported(name.text.toUpper());
}

}  // namespace

bool TryFilegroup(TokenReader& reader, QStringView word) {
    const bool primary = reader.AtWord(word) && reader.Peek(1).kind == TokenKind::QuotedName &&
                         reader.Peek(1).text.compare(u"primary", Qt::CaseInsensitive) == 0;
    if (!primary) return false;
    reader.Take();
    reader.Take();
    return true;
}

void ParseIndexOptions(TokenReader& reader) {
    if (reader.AtWord(u"with") && reader.AtSign(u"(", 1)) {
        reader.Take();
        reader.Take();
        do {
            ParseIndexOption(reader);
        } while (reader.TrySign(u","));
        reader.ExpectSign(u")");
    } else if (reader.AtWord(u"with") && reader.AtWord(u"fillfactor", 1)) {
        // As it was written before there were parentheses.
        reader.Take();
        ParseIndexOption(reader);
    }
    TryFilegroup(reader, u"on");
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
