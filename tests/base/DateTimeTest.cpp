#include "base/DateTime.h"

#include "support/Raised.h"

namespace quarv {

namespace {

DateTime Read(const QString& text) {
    return DateTime::ParseIso(text).value();
}

}  // namespace

TEST(DateTime, KeepsIsoText) {
    const char* texts[] = {"2024-02-29",
                           "0001-01-01",
                           "9999-12-31 23:59:59.9999999",
                           "13:05:09",
                           "13:05:09.000",
                           "2024-02-29 13:05:09",
                           "2024-02-29 13:05:09.003",
                           "2024-02-29 13:05:09.0000001 +05:30",
                           "2024-02-29 13:05:09 -14:00",
                           "2024-02-29 13:05:09 -00:30"};
    for (const char* text : texts) EXPECT_EQ(Read(text).ToIsoText(), text);
}

TEST(DateTime, ReadsEachMember) {
    const DateTime value = Read("2024-02-29T13:05:09.25-05:30");
    EXPECT_EQ(value.kind, DateTime::Kind::DateTimeOffset);
    EXPECT_EQ(value.year, 2024);
    EXPECT_EQ(value.month, 2);
    EXPECT_EQ(value.day, 29);
    EXPECT_EQ(value.hour, 13);
    EXPECT_EQ(value.minute, 5);
    EXPECT_EQ(value.second, 9);
    EXPECT_EQ(value.fractionDigits, 2);
    EXPECT_EQ(value.fraction, 2500000u);
    EXPECT_EQ(value.offsetMinutes, -330);
}

TEST(DateTime, RefusesOtherForms) {
    const char* texts[] = {"",
                           "2024",
                           "2024-2-29",
                           "2023-02-29",
                           "2024-13-01",
                           "0000-01-01",
                           "2024-02-29 ",
                           "2024-02-29 24:00:00",
                           "2024-02-29 13:60:00",
                           "2024-02-29 13:05:60",
                           "2024-02-29 13:05",
                           "2024-02-29 13:05:09.",
                           "2024-02-29 13:05:09.12345678",
                           "2024-02-29 13:05:09 +14:01",
                           "2024-02-29 13:05:09 +05:60",
                           "2024-02-29 13:05:09 0530",
                           "2024-02-29 +05:30",
                           "13:05:09 +05:30",
                           "2024-02-29x13:05:09",
                           "99999-01-01"};
    for (const char* text : texts) EXPECT_FALSE(DateTime::ParseIso(QString(text))) << text;
}

TEST(DateTime, KnowsWhatIsValid) {
    DateTime value{.kind = DateTime::Kind::Time, .month = 13, .hour = 23};
    EXPECT_TRUE(value.IsValid());  // a time of day has no month
    value.hour = 24;
    EXPECT_FALSE(value.IsValid());
    EXPECT_FALSE((DateTime{.fraction = 10000000}.IsValid()));
    EXPECT_FALSE((DateTime{.fractionDigits = 8}.IsValid()));
    EXPECT_FALSE((DateTime{.day = 0}.IsValid()));
    EXPECT_FALSE((DateTime{.year = 10000}.IsValid()));
    EXPECT_TRUE((DateTime{.kind = DateTime::Kind::Date, .hour = 99}.IsValid()));
}

struct LocaleCase {
    const char* locale;
    const char* date;
    const char16_t* text;
};

TEST(DateTime, WritesTheLocalesShortDateWithFourDigitYearAndSeconds) {
    const LocaleCase cases[] = {
        {"C", "2024-02-09 13:05:09.125", u"9 Feb 2024 13:05:09"},
        {"C", "2024-02-09", u"9 Feb 2024"},
        {"C", "13:05:09", u"13:05:09"},
        {"de_DE", "2024-02-09 13:05:09.125", u"09.02.2024 13:05:09"},
        {"de_DE", "2024-02-09 13:05:09 +05:30", u"09.02.2024 13:05:09 +05:30"},
        {"de_DE", "0099-02-09", u"09.02.0099"},
        {"en_US", "2024-02-09 13:05:09", u"2/9/2024 1:05:09 PM"},
        {"da_DK", "13:05:09", u"13.05.09"},
        {"ja_JP", "2024-02-09 03:05:09", u"2024/02/09 3:05:09"},
        {"ru_RU", "2024-02-09 03:05:09", u"09.02.2024 03:05:09"},
        {"fr_CA", "03:05:09", u"03 h 05 min 09 s"},
        {"bg_BG", "03:05:09", u"3:05:09 \u0447."},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Read(each.date).ToText(QLocale(each.locale)), QString::fromUtf16(each.text))
            << each.locale;
    }
}

TEST(DateTime, WritesAnOffsetBehindTheTime) {
    EXPECT_EQ(Read("2024-02-09 13:05:09 -00:30").ToText(QLocale("de_DE")),
              "09.02.2024 13:05:09 -00:30");
}

TEST(DateTime, ComparesInTime) {
    const auto compare = [](const QString& a, const QString& b) {
        return DateTime::Compare(Read(a), Read(b));
    };
    using Order = std::partial_ordering;
    EXPECT_EQ(compare("2024-02-09", "2024-02-09 00:00:00"), Order::equivalent);
    EXPECT_EQ(compare("2024-02-09", "2024-02-09 00:00:00.0000001"), Order::less);
    EXPECT_EQ(compare("2024-02-09 12:00:00.5", "2024-02-09 12:00:00.50"), Order::equivalent);
    EXPECT_EQ(compare("13:00:00", "12:59:59"), Order::greater);
    EXPECT_EQ(compare("2024-02-09 12:00:00 +02:00", "2024-02-09 10:00:00 +00:00"),
              Order::equivalent);
    EXPECT_EQ(compare("13:00:00", "2024-02-09"), Order::unordered);
    EXPECT_EQ(compare("2024-02-09 12:00:00 +00:00", "2024-02-09 12:00:00"), Order::unordered);
    EXPECT_EQ(compare("9999-12-31 23:59:59", "0001-01-01"), Order::greater);
}

}  // namespace quarv
