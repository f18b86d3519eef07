#include "LanguageUse.h"

#include <algorithm>

#include "localdb/engine/Aggregate.h"
#include "localdb/engine/Functions.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/WindowFunction.h"
#include "localdb/tsql/Lexer.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

using tsql::Token;
using tsql::TokenKind;

// The words of each phrase follow one another; "a|b" is either of the two.
constexpr const char* Statements[] = {
    "ALTER DATABASE",
    "ALTER INDEX",
    "ALTER PROC|PROCEDURE",
    "ALTER SCHEMA",
    "ALTER TABLE",
    "ALTER VIEW",
    "BEGIN TRAN|TRANSACTION",
    "BEGIN TRY",
    "BREAK",
    "COMMIT",
    "CONTINUE",
    "CREATE DATABASE",
    "CREATE INDEX",
    "CREATE UNIQUE",
    "CREATE CLUSTERED",
    "CREATE NONCLUSTERED",
    "CREATE OR ALTER",
    "CREATE PROC|PROCEDURE",
    "CREATE SCHEMA",
    "CREATE TABLE",
    "CREATE TYPE",
    "CREATE VIEW",
    "DECLARE",
    "DELETE",
    "DROP DATABASE",
    "DROP INDEX",
    "DROP PROC|PROCEDURE",
    "DROP SCHEMA",
    "DROP TABLE",
    "DROP TYPE",
    "DROP VIEW",
    "EXEC|EXECUTE",
    "GOTO",
    "IF",
    "INSERT",
    "PRINT",
    "RAISERROR",
    "RETURN",
    "ROLLBACK",
    "SAVE TRAN|TRANSACTION",
    "SELECT",
    "SET",
    "THROW",
    "TRUNCATE TABLE",
    "UPDATE",
    "USE",
    "WAITFOR",
    "WHILE",
};

constexpr const char* Clauses[] = {
    "BETWEEN",
    "CASE",
    "CHECK",
    "COLLATE",
    "CROSS APPLY",
    "CROSS JOIN",
    "CUBE",
    "DEFAULT",
    "DISTINCT",
    "ESCAPE",
    "EXCEPT",
    "EXISTS",
    "FOREIGN KEY",
    "FULL JOIN|OUTER",
    "GROUP BY",
    "GROUPING SETS",
    "HAVING",
    "IDENTITY",
    "IN",
    "INNER JOIN",
    "INTERSECT",
    "INTO",
    "IS DISTINCT",
    "IS NOT|NULL",
    "LEFT JOIN|OUTER",
    "LIKE",
    "OFFSET",
    "ORDER BY",
    "OUTER APPLY",
    "OUTPUT",
    "OVER",
    "PARTITION BY",
    "PRIMARY KEY",
    "REFERENCES",
    "RIGHT JOIN|OUTER",
    "ROLLUP",
    "ROWS|RANGE BETWEEN|UNBOUNDED|CURRENT",
    "TOP",
    "UNION",
    "UNIQUE",
    "VALUES",
    "WHERE",
    "WITH TIES",
    "WITHIN GROUP",
};

// Functions with a grammar of their own, which are in none of the tables.
constexpr const char* OwnGrammar[] = {"CAST",     "CONVERT", "TRY_CAST", "TRY_CONVERT",
                                      "COALESCE", "NULLIF",  "IIF"};

// Functions that are written without parentheses.
constexpr const char* Bare =
    "CURRENT_DATE|CURRENT_TIMESTAMP|CURRENT_USER|SESSION_USER|SYSTEM_USER|USER";

constexpr const char* Aggregates[] = {
    "APPROX_COUNT_DISTINCT",
    "AVG",
    "CHECKSUM_AGG",
    "COUNT",
    "COUNT_BIG",
    "MAX",
    "MIN",
    "STDEV",
    "STDEVP",
    "STRING_AGG",
    "SUM",
    "VAR",
    "VARP",
};

constexpr const char* Windows[] = {
    "CUME_DIST", "DENSE_RANK", "FIRST_VALUE",  "LAG",  "LAST_VALUE",
    "LEAD",      "NTILE",      "PERCENT_RANK", "RANK", "ROW_NUMBER",
};

QStringList FunctionNames() {
    QStringList names;
    for (const char* name : OwnGrammar) names += QLatin1String(name);
    for (const auto& table :
         {TextFunctions(), TextEditFunctions(), TextSearchFunctions(), NumberFunctions(),
          MathFunctions(), DateFunctions(), DateMakers(), ChoiceFunctions(), SystemFunctions(),
          HashFunctions(), MetadataFunctions(), ServerFunctions()}) {
        for (const FunctionEntry& entry : table) names += entry.name.toString().toUpper();
    }
    names.sort();
    names.removeDuplicates();
    return names;
}

QStringList TypeNames() {
    QStringList names;
    for (int kind = 0; kind <= static_cast<int>(TypeKind::Xml); ++kind) {
        names += QString::fromUtf16(FactsOf(static_cast<TypeKind>(kind)).name);
    }
    names.sort();
    return names;
}

template <size_t N>
QStringList ListOf(const char* const (&names)[N]) {
    QStringList list;
    for (const char* name : names) list += QLatin1String(name);
    return list;
}

bool IsOneOf(const Token& token, const QString& words) {
    const QStringList all = words.split(u'|');
    return std::any_of(all.begin(), all.end(),
                       [&token](const QString& word) { return token.IsWord(word); });
}

std::vector<Token> TokensOf(const QString& text) {
    std::vector<Token> tokens;
    tsql::Lexer lexer(text);
    try {
        for (Token token = lexer.Next(); token.kind != TokenKind::End; token = lexer.Next()) {
            tokens.push_back(std::move(token));
        }
    } catch (const tsql::SyntaxError&) {
        return tokens;
    }
    return tokens;
}

class Finder {
  public:
    explicit Finder(const QString& text) : tokens_(TokensOf(text)) {}

    QSet<LanguageUse> Find() {
        for (size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].kind != TokenKind::Word || IsBehind(i, u".")) continue;
            TakePhrases(i, UseKind::Statement);
            TakePhrases(i, UseKind::Clause);
            if (IsCalled(i) || IsOneOf(tokens_[i], QLatin1String(Bare))) TakeCall(i);
            if (IsTypePlace(i)) TakeType(i);
        }
        return std::move(uses_);
    }

  private:
    bool IsBehind(size_t i, QStringView sign) const { return i > 0 && tokens_[i - 1].IsSign(sign); }
    bool IsCalled(size_t i) const { return i + 1 < tokens_.size() && tokens_[i + 1].IsSign(u"("); }

    bool IsPhrase(size_t i, const QString& phrase) const {
        for (const QString& words : phrase.split(u' ')) {
            if (i >= tokens_.size() || !IsOneOf(tokens_[i++], words)) return false;
        }
        return true;
    }

    void TakePhrases(size_t i, UseKind kind) {
        static const QStringList statements = KnownUses(UseKind::Statement);
        static const QStringList clauses = KnownUses(UseKind::Clause);
        for (const QString& phrase : kind == UseKind::Statement ? statements : clauses) {
            if (IsPhrase(i, phrase)) uses_.insert({kind, phrase});
        }
    }

    void TakeCall(size_t i) {
        static const QStringList functions = FunctionNames();
        const QString name = tokens_[i].text.toUpper();
        if (IsAggregateName(name)) uses_.insert({UseKind::Aggregate, name});
        if (IsWindowName(name)) uses_.insert({UseKind::Window, name});
        if (std::binary_search(functions.begin(), functions.end(), name) && !IsTypePlace(i)) {
            uses_.insert({UseKind::Function, name});
        }
    }

    // A type is written behind a column's or variable's name, AS, and CONVERT's parenthesis.
    bool IsTypePlace(size_t i) const {
        if (i == 0) return false;
        const Token& before = tokens_[i - 1];
        if (before.IsName() || before.kind == TokenKind::Variable || before.IsWord(u"as")) {
            return true;
        }
        return before.IsSign(u"(") && i > 1 &&
               IsOneOf(tokens_[i - 2], QStringLiteral("convert|try_convert"));
    }

    void TakeType(size_t i) {
        if (const std::optional<TypeKind> kind = FindTypeKind(tokens_[i].text)) {
            uses_.insert({UseKind::Type, QString::fromUtf16(FactsOf(*kind).name)});
        }
    }

    std::vector<Token> tokens_;
    QSet<LanguageUse> uses_;
};

}  // namespace

QStringList KnownUses(UseKind kind) {
    switch (kind) {
        case UseKind::Statement:
            return ListOf(Statements);
        case UseKind::Clause:
            return ListOf(Clauses);
        case UseKind::Function:
            return FunctionNames();
        case UseKind::Aggregate:
            return ListOf(Aggregates);
        case UseKind::Window:
            return ListOf(Windows);
        case UseKind::Type:
            return TypeNames();
    }
    return {};
}

size_t qHash(const LanguageUse& use, size_t seed) {
    return qHashMulti(seed, static_cast<int>(use.kind), use.name);
}

QSet<LanguageUse> FindUses(const QString& text) {
    return Finder(text).Find();
}

}  // namespace quarv::localdb::engine
