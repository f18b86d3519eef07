#include "localdb/tsql/Lexer.h"

#include <gtest/gtest.h>

#include "localdb/tsql/SyntaxError.h"
#include "support/Raised.h"

namespace quarv::localdb::tsql {

namespace {

struct Row {
    const char16_t* text;
    TokenKind kind;
    const char16_t* value;
};

Token First(const QString& text) {
    return Lexer(text).Next();
}

}  // namespace

class LexerToken : public testing::TestWithParam<Row> {};

TEST_P(LexerToken, HasKindAndValue) {
    const QString text = QString::fromUtf16(GetParam().text);
    Lexer lexer(text);
    const Token token = lexer.Next();
    EXPECT_EQ(token.kind, GetParam().kind);
    EXPECT_EQ(token.text, QString::fromUtf16(GetParam().value));
    EXPECT_EQ(lexer.Next().kind, TokenKind::End);
}

INSTANTIATE_TEST_SUITE_P(
    Tokens, LexerToken,
    testing::Values(
        Row{u"abc", TokenKind::Word, u"abc"}, Row{u"_a1$#@", TokenKind::Word, u"_a1$#@"},
        Row{u"#tmp", TokenKind::Word, u"#tmp"}, Row{u"Ärger", TokenKind::Word, u"Ärger"},
        Row{u"[a b]", TokenKind::QuotedName, u"a b"}, Row{u"[a]]b]", TokenKind::QuotedName, u"a]b"},
        Row{u"\"a\"\"b\"", TokenKind::QuotedName, u"a\"b"},
        Row{u"'it''s'", TokenKind::String, u"it's"}, Row{u"''", TokenKind::String, u""},
        Row{u"N'ж😀'", TokenKind::NationalString, u"ж😀"},
        Row{u"n'x'", TokenKind::NationalString, u"x"}, Row{u"@x", TokenKind::Variable, u"@x"},
        Row{u"@@version", TokenKind::Variable, u"@@version"}, Row{u"12", TokenKind::Integer, u"12"},
        Row{u"1.", TokenKind::Decimal, u"1."}, Row{u".5", TokenKind::Decimal, u".5"},
        Row{u"1.50", TokenKind::Decimal, u"1.50"}, Row{u"1e5", TokenKind::Float, u"1e5"},
        Row{u"1.5E-3", TokenKind::Float, u"1.5E-3"}, Row{u"$1.25", TokenKind::Money, u"1.25"},
        Row{u"0xAF", TokenKind::Binary, u"AF"}, Row{u"0x", TokenKind::Binary, u""},
        Row{u"<>", TokenKind::Sign, u"<>"}, Row{u"!=", TokenKind::Sign, u"!="},
        Row{u"+=", TokenKind::Sign, u"+="}, Row{u"\\", TokenKind::Sign, u"\\"},
        Row{u"/* a /* b */ c */x", TokenKind::Word, u"x"}, Row{u"-- a\nx", TokenKind::Word, u"x"},
        Row{u"x -- a", TokenKind::Word, u"x"}, Row{u" \t\r\n ", TokenKind::End, u""}));

TEST(Lexer, TellsLineAndColumnFromOne) {
    const QString text = QStringLiteral("a\r\n  b\n'x\ny' c");
    Lexer lexer(text);
    EXPECT_EQ(lexer.Next().line, 1);
    const Token b = lexer.Next();
    EXPECT_EQ(b.line, 2);
    EXPECT_EQ(b.column, 3);
    const Token string = lexer.Next();
    EXPECT_EQ(string.line, 3);
    EXPECT_EQ(string.text, u"x\ny");
    const Token c = lexer.Next();
    EXPECT_EQ(c.line, 4);
    EXPECT_EQ(c.column, 4);
}

TEST(Lexer, KnowsReservedWordsInAnyCase) {
    EXPECT_TRUE(First(QStringLiteral("SeLeCt")).reserved);
    EXPECT_FALSE(First(QStringLiteral("name")).reserved);
    EXPECT_FALSE(First(QStringLiteral("[select]")).reserved);
}

struct BadRow {
    const char16_t* text;
    int number;
    int line;
    int column;
};

class LexerError : public testing::TestWithParam<BadRow> {};

TEST_P(LexerError, HasNumberAndPlace) {
    const QString text = QString::fromUtf16(GetParam().text);
    Lexer lexer(text);
    try {
        while (lexer.Next().kind != TokenKind::End) {
        }
        FAIL() << "no error";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.Number(), GetParam().number);
        EXPECT_EQ(error.Line(), GetParam().line);
        EXPECT_EQ(error.Column(), GetParam().column);
    }
}

INSTANTIATE_TEST_SUITE_P(Errors, LexerError,
                         testing::Values(BadRow{u"select 'abc", 105, 1, 8},
                                         BadRow{u"a\n[b", 105, 2, 1}, BadRow{u"\"x", 105, 1, 1},
                                         BadRow{u"a /* /* */", 113, 1, 3},
                                         BadRow{u"[]", 1038, 1, 1}, BadRow{u"\"\"", 1038, 1, 1},
                                         BadRow{u"a\n b ?", 102, 2, 4}, BadRow{u"`", 102, 1, 1}));

TEST(Lexer, BoundsIdentifiers) {
    const QString longest(128, u'a');
    EXPECT_EQ(First(longest).text, longest);
    EXPECT_EQ(Raised([&] { First(longest + u'a'); }), 103);
    EXPECT_EQ(Raised([&] { First(u'[' + longest + QStringLiteral("a]")); }), 103);
}

}  // namespace quarv::localdb::tsql
