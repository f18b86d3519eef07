// GROUP BY and HAVING: plain lists, and ROLLUP, CUBE and GROUPING SETS spread out into their sets.
#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/QueryParts.h"

namespace quarv::localdb::tsql {

namespace {

constexpr size_t MaxSets = 4096;
constexpr size_t MaxCube = 12;  // 2^12 sets

using Set = std::vector<size_t>;  // numbers of expressions of GROUP BY
using Sets = std::vector<Set>;

size_t AddExpression(TokenReader& reader, Query& query) {
    query.groupBy.push_back(ParseExpression(reader));
    return query.groupBy.size() - 1;
}

// One expression, or several in parentheses that count as one; "()" is none at all.
Set ParseSet(TokenReader& reader, Query& query) {
    if (!reader.AtSign(u"(")) return {AddExpression(reader, query)};
    reader.Take();
    Set set;
    if (reader.TrySign(u")")) return set;
    TokenReader::Nesting nesting(reader);
    do {
        set.push_back(AddExpression(reader, query));
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return set;
}

Sets ParseSetList(TokenReader& reader, Query& query) {
    Sets sets;
    reader.ExpectSign(u"(");
    do {
        sets.push_back(ParseSet(reader, query));
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return sets;
}

void Append(Set& set, const Set& more) {
    set.insert(set.end(), more.begin(), more.end());
}

// All of them, all but the last, ..., none.
Sets Rollup(const Sets& parts) {
    Sets result;
    for (size_t count = parts.size() + 1; count-- > 0;) {
        Set set;
        for (size_t i = 0; i < count; ++i) Append(set, parts[i]);
        result.push_back(std::move(set));
    }
    return result;
}

// Every choice of them.
Sets Cube(TokenReader& reader, const Sets& parts) {
    if (parts.size() > MaxCube) reader.Unsupported(QStringLiteral("CUBE"));
    Sets result;
    for (size_t choice = size_t{1} << parts.size(); choice-- > 0;) {
        Set set;
        for (size_t i = 0; i < parts.size(); ++i) {
            if (choice >> (parts.size() - 1 - i) & 1) Append(set, parts[i]);
        }
        result.push_back(std::move(set));
    }
    return result;
}

Sets ParseElement(TokenReader& reader, Query& query);

Sets ParseGroupingSets(TokenReader& reader, Query& query) {
    Sets sets;
    reader.ExpectSign(u"(");
    TokenReader::Nesting nesting(reader);
    do {
        const Sets inner = ParseElement(reader, query);
        sets.insert(sets.end(), inner.begin(), inner.end());
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return sets;
}

bool TakeWords(TokenReader& reader, QStringView first, QStringView second) {
    const size_t words = second.isEmpty() ? 1 : 2;
    if (!reader.AtWord(first) || !reader.AtSign(u"(", words)) return false;
    if (words == 2 && !reader.AtWord(second, 1)) return false;
    for (size_t i = 0; i < words; ++i) reader.Take();
    return true;
}

Sets ParseElement(TokenReader& reader, Query& query) {
    if (TakeWords(reader, u"rollup", {})) return Rollup(ParseSetList(reader, query));
    if (TakeWords(reader, u"cube", {})) return Cube(reader, ParseSetList(reader, query));
    if (TakeWords(reader, u"grouping", u"sets")) return ParseGroupingSets(reader, query);
    return {ParseSet(reader, query)};
}

bool AtSpecialElement(TokenReader& reader) {
    const bool call = reader.AtSign(u"(", 1);
    return (call && (reader.AtWord(u"rollup") || reader.AtWord(u"cube"))) ||
           (reader.AtWord(u"grouping") && reader.AtWord(u"sets", 1)) ||
           (reader.AtSign(u"(") && reader.AtSign(u")", 1));
}

// Elements side by side: every set of the one with every set of the other.
void Multiply(TokenReader& reader, Sets& sets, const Sets& more) {
    if (sets.size() * more.size() > MaxSets) reader.Unsupported(QStringLiteral("GROUPING SETS"));
    Sets product;
    for (const Set& a : sets) {
        for (const Set& b : more) {
            product.push_back(a);
            Append(product.back(), b);
        }
    }
    sets = std::move(product);
}

// The older form, behind the whole list.
void ParseWithWord(TokenReader& reader, Query& query) {
    const bool cube = reader.AtWord(u"cube", 1);
    if (!reader.AtWord(u"with") || (!cube && !reader.AtWord(u"rollup", 1))) return;
    Sets parts;
    for (size_t i = 0; i < query.groupBy.size(); ++i) parts.push_back({i});
    reader.Take();
    reader.Take();
    query.groupingSets = cube ? Cube(reader, parts) : Rollup(parts);
}

void ParseGroupList(TokenReader& reader, Query& query) {
    Sets sets = {{}};
    bool special = false;
    do {
        if (AtSpecialElement(reader)) {
            special = true;
            Multiply(reader, sets, ParseElement(reader, query));
        } else {
            const size_t added = AddExpression(reader, query);
            for (Set& set : sets) set.push_back(added);
        }
    } while (reader.TrySign(u","));
    if (special) {
        query.groupingSets = std::move(sets);
    } else {
        ParseWithWord(reader, query);
    }
}

}  // namespace

void ParseGrouping(TokenReader& reader, Query& query) {
    if (reader.TryWord(u"group")) {
        reader.ExpectWord(u"by");
        ParseGroupList(reader, query);
    }
    if (reader.TryWord(u"having")) query.having = ParseCondition(reader);
}

}  // namespace quarv::localdb::tsql
