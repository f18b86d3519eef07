#include "localdb/tsql/AlterIndex.h"

#include "localdb/tsql/CreateIndex.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

// PARTITION = ALL: every index here is one partition.
void ParsePartition(TokenReader& reader) {
    if (!reader.TryWord(u"partition")) return;
    reader.ExpectSign(u"=");
    if (reader.Peek().kind == TokenKind::Integer && reader.Peek().text == u"1") {
        reader.Take();
        return;
    }
    reader.ExpectWord(u"all");
}

// How a reorganisation treats long values, which changes nothing that a client can see.
void ParseReorganize(TokenReader& reader) {
    ParsePartition(reader);
    if (!reader.AtWord(u"with") || !reader.AtSign(u"(", 1)) return;
    reader.Take();
    reader.Take();
    const Token option = reader.Peek();
    if (!reader.TryWord(u"lob_compaction")) reader.Unsupported(option.text.toUpper());
    reader.ExpectSign(u"=");
    if (!reader.TryWord(u"on")) reader.ExpectWord(u"off");
    reader.ExpectSign(u")");
}

}  // namespace

StatementPtr ParseAlterIndex(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto statement = std::make_unique<AlterIndex>();
    if (!reader.TryWord(u"all")) statement->index = reader.ExpectName();
    reader.ExpectWord(u"on");
    statement->table = ParseObjectName(reader);
    if (reader.TryWord(u"rebuild")) {
        ParsePartition(reader);
        ParseIndexOptions(reader);
    } else if (reader.TryWord(u"reorganize")) {
        ParseReorganize(reader);
    } else {
        const Token action = reader.Peek();
        for (const QStringView word : {u"disable", u"set", u"resume", u"pause", u"abort"}) {
            if (!action.IsWord(word)) continue;
            reader.Unsupported(QStringLiteral("ALTER INDEX ... ") + action.text.toUpper());
        }
        reader.Fail();
    }
    return statement;
}

}  // namespace quarv::localdb::tsql
