#include <array>

#include "localdb/tsql/QueryClauses.h"
#include "localdb/tsql/QueryParts.h"

namespace quarv::localdb::tsql {

namespace {

// Locking hints change no result here: a reader sees what is committed and blocks nobody. NOWAIT,
// READPAST and SNAPSHOT would.
constexpr std::array<QStringView, 14> HarmlessTableHints = {
    u"nolock",          u"rowlock",        u"paglock",      u"updlock",  u"holdlock",
    u"tablock",         u"tablockx",       u"xlock",        u"noexpand", u"readcommitted",
    u"readuncommitted", u"repeatableread", u"serializable", u"forcescan"};

void SkipArguments(TokenReader& reader) {
    if (!reader.TrySign(u"(")) return;
    TokenReader::Nesting nesting(reader);
    while (!reader.AtSign(u")")) {
        if (reader.AtEnd()) reader.Fail();
        if (reader.AtSign(u"(")) {
            SkipArguments(reader);
        } else {
            reader.Take();
        }
    }
    reader.Take();
}

void SkipTableHint(TokenReader& reader) {
    for (const QStringView hint : HarmlessTableHints) {
        if (reader.TryWord(hint)) return;
    }
    // Which index is read changes only the time that it takes.
    if (reader.TryWord(u"index")) {
        if (!reader.TrySign(u"=") && !reader.AtSign(u"(")) reader.Fail();
        if (reader.AtSign(u"(")) return SkipArguments(reader);
        reader.Take();
        return;
    }
    if (reader.TryWord(u"forceseek")) return SkipArguments(reader);
    if (reader.Peek().kind != TokenKind::Word) reader.Fail();
    reader.Unsupported(reader.Peek().text.toUpper());
}

struct Option {
    QStringView first, second;  // no second word: empty
    bool number = false;        // a number follows
};

constexpr std::array<Option, 15> HarmlessOptions = {{{u"recompile", {}, false},
                                                     {u"fast", {}, true},
                                                     {u"maxdop", {}, true},
                                                     {u"hash", u"join", false},
                                                     {u"loop", u"join", false},
                                                     {u"merge", u"join", false},
                                                     {u"hash", u"group", false},
                                                     {u"order", u"group", false},
                                                     {u"hash", u"union", false},
                                                     {u"merge", u"union", false},
                                                     {u"concat", u"union", false},
                                                     {u"force", u"order", false},
                                                     {u"keep", u"plan", false},
                                                     {u"keepfixed", u"plan", false},
                                                     {u"robust", u"plan", false}}};

bool TryHarmlessOption(TokenReader& reader) {
    for (const Option& option : HarmlessOptions) {
        if (!reader.AtWord(option.first)) continue;
        if (!option.second.isEmpty() && !reader.AtWord(option.second, 1)) continue;
        reader.Take();
        if (!option.second.isEmpty()) reader.Take();
        if (option.number) reader.ExpectInteger();
        return true;
    }
    if (!reader.AtWord(u"optimize") || !reader.AtWord(u"for", 1)) return false;
    reader.Take();
    reader.Take();
    if (!reader.TryWord(u"unknown")) SkipArguments(reader);
    return true;
}

void ParseOption(TokenReader& reader, Query& query) {
    constexpr int MostRecursion = 32767;
    if (!reader.TryWord(u"maxrecursion")) {
        if (TryHarmlessOption(reader)) return;
        if (reader.Peek().kind != TokenKind::Word) reader.Fail();
        reader.Unsupported(QStringLiteral("OPTION ") + reader.Peek().text.toUpper());
    }
    const Token number = reader.Peek();
    if (number.kind != TokenKind::Integer) reader.Fail();
    reader.Take();
    bool fits = false;
    query.maxRecursion = number.text.toInt(&fits);
    if (fits && query.maxRecursion <= MostRecursion) return;
    throw SyntaxError(SyntaxError::RecursionLimit, {number.text}, number.line, number.column);
}

}  // namespace

void SkipTableHints(TokenReader& reader) {
    const bool with = reader.AtWord(u"with") && reader.AtSign(u"(", 1);
    const bool bare = reader.AtSign(u"(") && reader.AtWord(u"nolock", 1) && reader.AtSign(u")", 2);
    if (!with && !bare) return;
    if (with) reader.Take();
    reader.Take();
    do {
        SkipTableHint(reader);
        // The comma between two hints may be left out.
        reader.TrySign(u",");
    } while (!reader.AtSign(u")"));
    reader.Take();
}

void SkipJoinHint(TokenReader& reader) {
    for (const QStringView word : {u"hash", u"loop", u"merge", u"remote"}) {
        if (reader.AtWord(word) && reader.AtWord(u"join", 1)) reader.Take();
    }
}

void ParseOptions(TokenReader& reader, Query& query) {
    if (!reader.TryWord(u"option")) return;
    reader.ExpectSign(u"(");
    do {
        ParseOption(reader, query);
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
}

}  // namespace quarv::localdb::tsql
