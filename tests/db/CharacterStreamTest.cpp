#include "db/CharacterStream.h"

#include "support/Raised.h"

namespace quarv {

namespace {

CharacterStream Over(const char* text) {
    CharacterStream stream;
    stream.SetTextData(QString(text));
    return stream;
}

const QString Start = QStringLiteral("{\"'");
const QString End = QStringLiteral("}\";'");

}  // namespace

TEST(CharacterStream, TextDataIsTheValuesText) {
    CharacterStream stream;
    EXPECT_TRUE(stream.EndOfStream());
    EXPECT_EQ(stream.NextChar(), "");
    stream.SetTextData(42);
    EXPECT_EQ(stream.GetTextData(Value(u"ignored")), "42");
    EXPECT_EQ(stream.Position(), 1);
    EXPECT_EQ(Raised([&] { stream.SetTextData(Value::Null()); }), 94);
    EXPECT_EQ(stream.GetTextData(), "42");
}

TEST(CharacterStream, NextCharStopsBehindTheEnd) {
    CharacterStream stream = Over("ab");
    EXPECT_EQ(stream.NextChar(), "a");
    EXPECT_EQ(stream.NextChar(), "b");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(stream.NextChar(), "");
        EXPECT_EQ(stream.Position(), 3);
    }
    EXPECT_TRUE(stream.EndOfStream());
    EXPECT_TRUE(stream.Rewind().IsEmpty());
    EXPECT_EQ(stream.NextChar(), "a");
}

TEST(CharacterStream, PeekingDoesNotConsume) {
    CharacterStream stream = Over(" a");
    EXPECT_EQ(stream.PeekChar(), " ");
    EXPECT_EQ(stream.Position(), 1);
    EXPECT_EQ(stream.PeekNonWhiteChar(), "a");
    EXPECT_EQ(stream.Position(), 2);  // the white space is gone
    EXPECT_EQ(stream.PeekChar(), "a");
}

TEST(CharacterStream, SkipsWhiteSpaceOfFourKinds) {
    CharacterStream stream = Over(" \r\n\tx\v");
    EXPECT_EQ(stream.NextNonWhiteChar(), "x");
    EXPECT_EQ(stream.NextNonWhiteChar(), "\v");
    EXPECT_EQ(stream.NextNonWhiteChar(), "");
    stream = Over("  ");
    stream.SkipWhiteSpace();
    EXPECT_TRUE(stream.EndOfStream());
}

TEST(CharacterStream, GetCharsUntilLeavesTheDelimiter) {
    CharacterStream stream = Over("ab;c");
    EXPECT_EQ(stream.GetCharsUntil(";"), "ab");
    EXPECT_EQ(stream.PeekChar(), ";");
    EXPECT_EQ(stream.GetCharsUntil(";"), "");
    EXPECT_EQ(stream.Position(), 3);
}

TEST(CharacterStream, GetCharsUntilAnAbsentDelimiterDoesNotMove) {
    CharacterStream stream = Over("abc");
    EXPECT_EQ(stream.GetCharsUntil(";"), "");
    EXPECT_EQ(stream.Position(), 1);
    EXPECT_EQ(stream.GetCharsUntil("C"), "");
    stream.SetPosition(9);
    EXPECT_EQ(stream.GetCharsUntil("c"), "");
    EXPECT_EQ(stream.Position(), 9);
}

TEST(CharacterStream, CharReadsAndWritesInPlace) {
    CharacterStream stream = Over("abc");
    EXPECT_EQ(stream.Char(3), "c");
    EXPECT_EQ(stream.Char(4), "");
    EXPECT_EQ(Raised([&] { stream.Char(0); }), 5);
    stream.SetChar(2, "xyz");
    EXPECT_EQ(stream.GetTextData(), "axc");
    stream.SetChar(2, "");
    EXPECT_EQ(stream.GetTextData(), "axc");
    EXPECT_EQ(Raised([&] { stream.SetChar(4, "x"); }), 5);
    EXPECT_EQ(Raised([&] { stream.SetChar(0, "x"); }), 5);
}

TEST(CharacterStream, CursorIsSetUncheckedAndCheckedWhenRead) {
    CharacterStream stream = Over("abc");
    stream.SetPosition(-5);
    EXPECT_EQ(stream.Position(), -5);
    EXPECT_FALSE(stream.EndOfStream());
    EXPECT_EQ(Raised([&] { stream.NextChar(); }), 5);
    EXPECT_EQ(Raised([&] { stream.PeekChar(); }), 5);
    EXPECT_EQ(Raised([&] { stream.GetCharsUntil("b"); }), 5);
    EXPECT_EQ(Raised([&] { stream.GetNextIdent(); }), 5);
    EXPECT_EQ(Raised([&] { stream.GetNextString("", "="); }), 5);
    stream.SetPosition(9);
    EXPECT_TRUE(stream.EndOfStream());
    EXPECT_EQ(stream.GetNextIdent(), "");
    EXPECT_EQ(stream.GetNextString("", "="), "");
    EXPECT_EQ(stream.Position(), 9);
}

TEST(CharacterStream, ReadsAKeyUpToItsEquals) {
    CharacterStream stream = Over("  abc=1");
    EXPECT_EQ(stream.GetNextString("", "="), "abc");
    EXPECT_EQ(stream.PeekChar(), "1");
}

struct StringCase {
    const char* text;
    const char* result;
    const char* next;
};

TEST(CharacterStream, ReadsValuesWithTheirQuotes) {
    const StringCase cases[] = {
        {"'x;y';z", "x;y", ";"},
        {"\"x;'y\";z", "x;'y", ";"},
        {"{a b};c", "a b", ";"},
        {"{a;b}", "a", "b"},
        {"plain;z", "plain", "z"},
        {"pl'ain", "pl", "a"},
        {" \t lead ;z", "lead ", "z"},
        {";z", "", "z"},
        {"'open", "open", ""},
        {"'", "", ""},
        {"''z", "", "z"},
        {"", "", ""},
    };
    for (const StringCase& each : cases) {
        CharacterStream stream = Over(each.text);
        EXPECT_EQ(stream.GetNextString(Start, End), each.result) << each.text;
        EXPECT_EQ(stream.PeekChar(), each.next) << each.text;
    }
}

TEST(CharacterStream, KeepsDelimitersWhereAsked) {
    CharacterStream stream = Over("'x;y';z");
    EXPECT_EQ(stream.GetNextString(Start, End, true), "'x;y'");
    EXPECT_EQ(stream.GetNextString(Start, End, true), ";");
    EXPECT_EQ(stream.GetNextString(Start, End, true), "z");
    stream = Over("{a;");
    EXPECT_EQ(stream.GetNextString(Start, End, true), "{a;");
}

TEST(CharacterStream, ReadsIdentifiersUpToADelimiter) {
    CharacterStream stream = Over("  name<=3");
    EXPECT_EQ(stream.GetNextIdent(), "name");
    EXPECT_EQ(stream.PeekChar(), "<");
    EXPECT_EQ(stream.GetNextIdent(), "");
    for (const QChar delimiter : QStringLiteral(" \r\n\t<>,.\"'=\\/?&%!~")) {
        stream.SetTextData(QStringLiteral("a[b]:(c);-d") + delimiter);
        EXPECT_EQ(stream.GetNextIdent(), "a[b]:(c);-d") << int{delimiter.unicode()};
    }
}

TEST(CharacterStream, ReadsElementsBetweenCommas) {
    CharacterStream stream = Over("a, b c,d");
    EXPECT_EQ(stream.GetNextElementToComma(), "a");
    EXPECT_EQ(stream.GetNextElementToComma(), "b c");
    EXPECT_EQ(stream.GetNextElementToComma(), "d");
    EXPECT_EQ(stream.GetNextElementToComma(), "");
}

TEST(CharacterStream, ReadsNumbersBehindBlanks) {
    CharacterStream stream = Over("  12.5]-3 1e2");
    EXPECT_EQ(stream.GetNextNumber(), 12.5);
    EXPECT_EQ(stream.GetNextNumber(), -3);
    EXPECT_EQ(stream.GetNextNumber(), 100);
}

TEST(CharacterStream, NumberBehindABracketRunsToTheNextOfThatBracket) {
    CharacterStream stream = Over("(12)");
    EXPECT_EQ(Raised([&] { stream.GetNextNumber(); }), 13);
    stream = Over(",12,");
    EXPECT_EQ(stream.GetNextNumber(), 12);
    stream = Over("x");
    EXPECT_EQ(Raised([&] { stream.GetNextNumber(); }), 13);
    stream = Over("");
    EXPECT_EQ(Raised([&] { stream.GetNextNumber(); }), 13);
}

}  // namespace quarv
