#include "platform/ado/OdbcString.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

using ado::OdbcString;

TEST(OdbcString, EveryValueStandsInBracesThatASemicolonFollows) {
    const QString text = OdbcString().Add("Driver", "FreeTDS").Add("PWD", "a}b;c").Text();
    EXPECT_EQ(text, QStringLiteral("Driver={FreeTDS};PWD={a}b;c};"));
}

TEST(OdbcString, RefusesWhatTheSyntaxCannotCarry) {
    const QString values[] = {QStringLiteral("a};b"),
                              QStringLiteral("};"),
                              QStringLiteral("x};Server=evil"),
                              QString(QChar(0)),
                              QStringLiteral("a") + QChar(0) + u'b',
                              QString(QChar(0xD83D)),
                              QStringLiteral("a") + QChar(0xDE00) + u'b'};
    for (const QString& value : values) {
        const DataError error = ErrorOf([&value] { OdbcString().Add("PWD", value); });
        EXPECT_TRUE(error.Description().startsWith("The value of \"PWD\" holds characters"));
    }
}

TEST(OdbcString, CarriesWhatOnlyLooksDangerous) {
    for (const char* value : {"}", "{", "{a}", "a}", ";", "a;Server=b", "}}", "= ", "\"'", "é"})
        EXPECT_EQ(OdbcString().Add("K", value).Text(), QStringLiteral("K={") + value + "};");
}

TEST(OdbcString, RefusesKeywordsThatAreNone) {
    for (const char* keyword : {"", "a=b", "a;b", "a{", "ä", "a\nb"})
        EXPECT_LT(ErrorOf([keyword] { OdbcString().Add(keyword, "x"); }).Number(), 0) << keyword;
}

TEST(OdbcString, LoginValuesHaveAtMost128Units) {
    OdbcString().AddLoginValue("PWD", QString(128, 'x'));
    EXPECT_TRUE(ErrorOf([] { OdbcString().AddLoginValue("PWD", QString(129, 'x')); })
                    .Description()
                    .startsWith("The value of \"PWD\" is longer than the 128"));
}

}  // namespace quarv::test
