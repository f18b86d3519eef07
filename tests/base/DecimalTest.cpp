#include "base/Decimal.h"

#include "support/Raised.h"

namespace quarv {

namespace {

const QString Nines = QStringLiteral("99999999999999999999999999999999999999");  // 38

Decimal Read(const QString& text) {
    return Decimal::Parse(text).value();
}

}  // namespace

TEST(Decimal, KeepsScaleThroughText) {
    const char* texts[] = {"0",
                           "1",
                           "1.50",
                           "-1.50",
                           "0.05",
                           "-0.05",
                           "0.00",
                           "123456789012345678",
                           "1234567890123456789",
                           "12345678901234567890123456789012345.678"};
    for (const char* text : texts) EXPECT_EQ(Read(text).ToText(), text);
    EXPECT_EQ(Read(Nines).ToText(), Nines);
    EXPECT_EQ(Read("0." + Nines).ToText(), "0." + Nines);
    EXPECT_EQ(Read("-" + Nines).ToText(), "-" + Nines);
}

TEST(Decimal, ReadsDigitsScaleAndSign) {
    const Decimal value = Read("-12.340");
    EXPECT_TRUE(value.magnitude == 12340);
    EXPECT_EQ(value.scale, 3);
    EXPECT_TRUE(value.negative);
    EXPECT_FALSE(Read("+7").negative);
}

TEST(Decimal, ZeroHasNoSign) {
    EXPECT_FALSE(Read("-0.00").negative);
    EXPECT_EQ(Read("-0.00").ToText(), "0.00");
}

TEST(Decimal, LeadingZerosDoNotCountAsDigits) {
    EXPECT_EQ(Read("000000000000000000000000000000000000000000007.5").ToText(), "7.5");
}

TEST(Decimal, RefusesOtherForms) {
    const char* texts[] = {"",   "-",   "+",   ".",   ".5",    "5.",   "1,5",  " 1",
                           "1 ", "1e5", "--1", "+-1", "1.2.3", "0x10", "1.-2", "abc"};
    for (const char* text : texts) EXPECT_FALSE(Decimal::Parse(QString(text))) << text;
    EXPECT_FALSE(Decimal::Parse(QStringView(u"\u0661")));  // a digit, but not one of ours
}

TEST(Decimal, RefusesMoreThan38Digits) {
    EXPECT_FALSE(Decimal::Parse(QString(Nines + "0")));
    EXPECT_FALSE(Decimal::Parse(QString("0." + Nines + "0")));
    EXPECT_FALSE(Decimal::Parse(QString("1." + Nines)));
}

TEST(Decimal, WritesTheGivenPoint) {
    EXPECT_EQ(Read("-1234.50").ToText(u','), "-1234,50");
    EXPECT_EQ(Read("7").ToText(u','), "7");
}

TEST(Decimal, GivesTheNearestDouble) {
    EXPECT_EQ(Read("0.1").ToDouble(), 0.1);
    EXPECT_EQ(Read("-1.50").ToDouble(), -1.5);
    EXPECT_EQ(Read("9007199254740993").ToDouble(), 9007199254740992.0);
    EXPECT_EQ(Read("12345678901234567890.123").ToDouble(), 12345678901234567890.123);
    EXPECT_EQ(Read("0.00000000000000000000000000000000000001").ToDouble(), 1e-38);
}

TEST(Decimal, ComparesNumerically) {
    const auto compare = [](const QString& a, const QString& b) {
        return Decimal::Compare(Read(a), Read(b));
    };
    EXPECT_EQ(compare("1.0", "1.00"), 0);
    EXPECT_EQ(compare("0", "0.000"), 0);
    EXPECT_EQ(compare("-1", "1"), -1);
    EXPECT_EQ(compare("0", "-0.1"), 1);
    EXPECT_EQ(compare("1.09", "1.1"), -1);
    EXPECT_EQ(compare("-1.09", "-1.1"), 1);
    EXPECT_EQ(compare("10", "9.99"), 1);
    EXPECT_EQ(compare("2", "3"), -1);
    EXPECT_EQ(compare("-2", "-3"), 1);
    EXPECT_EQ(compare(Nines, "0." + Nines), 1);
    EXPECT_EQ(compare(Nines, "9999999999999999999999999999999999999.9"), 1);
}

}  // namespace quarv
