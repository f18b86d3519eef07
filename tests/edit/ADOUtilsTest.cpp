#include "edit/ADOUtils.h"

#include <gtest/gtest.h>

#include "support/Raised.h"

namespace quarv {
namespace {

constexpr int InvalidProcedureCall = 5;

// Values become text by the program's locale.
class ADOUtilsTest : public testing::Test {
  protected:
    ~ADOUtilsTest() override { QLocale::setDefault(QLocale::c()); }
};

TEST(SQLQuote, DoublesEverySingleQuote) {
    EXPECT_EQ(SQLQuote("O'Brien"), "'O''Brien'");
    EXPECT_EQ(SQLQuote("''"), "''''''");
    EXPECT_EQ(SQLQuote("'a'"), "'''a'''");
}

TEST(SQLQuote, EmptyTextGivesTwoQuotes) {
    EXPECT_EQ(SQLQuote(""), "''");
}

TEST(SQLQuote, EscapesNothingElse) {
    EXPECT_EQ(SQLQuote("a\"b]c\\d\r\n%\u2019"), "'a\"b]c\\d\r\n%\u2019'");
}

TEST_F(ADOUtilsTest, NullIsBare) {
    EXPECT_EQ(SQLValue(Value::Null(), 999), "NULL");
    EXPECT_EQ(SQLValue(Value::Null(), -1), "NULL");
}

TEST_F(ADOUtilsTest, EmptyIsAnEmptyLiteral) {
    EXPECT_EQ(SQLValue(Value(), 999), "''");
}

TEST_F(ADOUtilsTest, EveryOtherValueIsItsTextInQuotes) {
    EXPECT_EQ(SQLValue(7, 999), "'7'");
    EXPECT_EQ(SQLValue(-9223372036854775807, 999), "'-9223372036854775807'");
    EXPECT_EQ(SQLValue(true, 999), "'True'");
    EXPECT_EQ(SQLValue(false, 999), "'False'");
    EXPECT_EQ(SQLValue(u"O'Hara", 999), "'O''Hara'");
    EXPECT_EQ(SQLValue(u"NULL", 999), "'NULL'");
}

TEST_F(ADOUtilsTest, NumbersHaveTheLocalesDecimalSign) {
    EXPECT_EQ(SQLValue(1.5, 999), "'1.5'");
    EXPECT_EQ(SQLValue(*Decimal::Parse(u"1234567.50"), 999), "'1234567.50'");
    QLocale::setDefault(QLocale("de_DE"));
    EXPECT_EQ(SQLValue(1.5, 999), "'1,5'");
    EXPECT_EQ(SQLValue(*Decimal::Parse(u"1234567.50"), 999), "'1234567,50'");
}

TEST_F(ADOUtilsTest, DatesHaveTheLocalesShortForm) {
    QLocale::setDefault(QLocale("de_DE"));
    const DateTime moment{.month = 2, .day = 9, .hour = 13, .minute = 5, .second = 9, .year = 2024};
    EXPECT_EQ(SQLValue(moment, 999), "'09.02.2024 13:05:09'");
}

TEST_F(ADOUtilsTest, BytesAreMarkedWhateverTheyHold) {
    EXPECT_EQ(SQLValue(QByteArray("\x01\x02"), 999), "'<Long>'");
    EXPECT_EQ(SQLValue(QByteArray(), 999), "'<Long>'");
    EXPECT_EQ(SQLValue(QByteArray("a"), 0), "'<Long>'");
}

TEST_F(ADOUtilsTest, TextIsCutToTheLengthGiven) {
    const QString text(1200, u'x');
    EXPECT_EQ(SQLValue(text, 999), u'\'' + QString(999, u'x') + u'\'');
    EXPECT_EQ(SQLValue(u"abc", 3), "'abc'");
    EXPECT_EQ(SQLValue(u"abc", 2), "'ab'");
    EXPECT_EQ(SQLValue(u"abc", 0), "''");
}

TEST_F(ADOUtilsTest, QuotesAreDoubledAfterTheCut) {
    const QString text = u'\'' + QString(1199, u'x');
    const QString literal = SQLValue(text, 999);
    EXPECT_EQ(literal, "'''" + QString(998, u'x') + "'");
    EXPECT_EQ(literal.size(), 1002);
}

TEST_F(ADOUtilsTest, ALengthBelowZeroRaises) {
    EXPECT_EQ(Raised([] { SQLValue(u"abc", -1); }), InvalidProcedureCall);
}

}  // namespace
}  // namespace quarv
