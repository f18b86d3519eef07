#include "localdb/engine/Moment.h"

#include <gtest/gtest.h>

namespace quarv::localdb::engine {

namespace {

struct Row {
    const char* text;
    const char* read;  // by style 121; empty: no date
};

std::string Iso(const Moment& moment) {
    return *moment.ToText(TypeKind::DateTime, 121);
}

}  // namespace

class MomentText : public testing::TestWithParam<Row> {};

TEST_P(MomentText, IsRead) {
    const std::optional<Moment> moment = Moment::Parse(GetParam().text);
    EXPECT_EQ(moment ? Iso(*moment) : "", GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MomentText,
    testing::Values(
        Row{"", "1900-01-01 00:00:00.000"}, Row{"20240229", "2024-02-29 00:00:00.000"},
        Row{"240229", "2024-02-29 00:00:00.000"}, Row{"491231", "2049-12-31 00:00:00.000"},
        Row{"500101", "1950-01-01 00:00:00.000"}, Row{"2024", "2024-01-01 00:00:00.000"},
        Row{"2024-1-5", "2024-01-05 00:00:00.000"}, Row{"1/5/2024", "2024-01-05 00:00:00.000"},
        Row{"1.5.24", "2024-01-05 00:00:00.000"},
        Row{"2024-01-05T06:07:08.9", "2024-01-05 06:07:08.900"},
        Row{"20240105 6:07", "2024-01-05 06:07:00.000"},
        Row{"20240105 6PM", "2024-01-05 18:00:00.000"},
        Row{"20240105 12:30am", "2024-01-05 00:30:00.000"},
        Row{"20240105 10:00:00:45", "2024-01-05 10:00:00.045"},
        Row{"13:45", "1900-01-01 13:45:00.000"}, Row{"Mar 5, 2024", "2024-03-05 00:00:00.000"},
        Row{"5 march 2024 10:00", "2024-03-05 10:00:00.000"},
        Row{"2024 Mar 5", "2024-03-05 00:00:00.000"}, Row{"20230229", ""}, Row{"13/13/2024", ""},
        Row{"20240105 25:00", ""}, Row{"20240105 10:60", ""}, Row{"20240105 13:00 AM", ""},
        Row{"hello", ""}, Row{"2024-13-01", ""}, Row{"99999999999", ""}, Row{"1/2", ""},
        Row{"20240105 10", ""}, Row{"Foo 5 2024", ""}, Row{"-", ""},
        Row{"2024-01-05T", "2024-01-05 00:00:00.000"}));

TEST(Moment, CountsDaysAsTheCalendarDoes) {
    EXPECT_EQ(Moment::DaysFromCivil(1, 1, 1), 0);
    EXPECT_EQ(Moment::DaysFromCivil(1900, 1, 1), 693595);
    EXPECT_EQ(Moment::DaysFromCivil(9999, 12, 31), 3652058);
    for (const int64_t days : {0LL, 59LL, 365LL, 693595LL, 738945LL, 3652058LL}) {
        Moment moment;
        moment.SetDays(days);
        EXPECT_EQ(moment.Days(), days);
    }
}

TEST(Moment, StoresEachKindInItsUnitAndRange) {
    const auto stored = [](const char* text, TypeKind kind) {
        return Moment::Parse(text)->Store(kind).value_or(-1);
    };
    EXPECT_EQ(stored("19000102 00:00:01", TypeKind::DateTime), 25920300);
    EXPECT_EQ(stored("19000102 00:01", TypeKind::SmallDateTime), 1441);
    EXPECT_EQ(stored("00010103", TypeKind::Date), 2);
    EXPECT_EQ(Moment::Parse("17521231")->Store(TypeKind::DateTime), std::nullopt);
    EXPECT_EQ(Moment::Parse("18991231")->Store(TypeKind::SmallDateTime), std::nullopt);
    EXPECT_EQ(Moment::Parse("20790607")->Store(TypeKind::SmallDateTime), std::nullopt);
    EXPECT_EQ(stored("20240101 00:00:29.998", TypeKind::SmallDateTime) % 1440, 0);
    EXPECT_EQ(stored("20240101 00:00:29.999", TypeKind::SmallDateTime) % 1440, 1);
}

TEST(Moment, ComesBackFromItsStoredForm) {
    const Moment moment = *Moment::Parse("17530101 23:59:59.997");
    EXPECT_EQ(Iso(Moment::Load(TypeKind::DateTime, *moment.Store(TypeKind::DateTime))),
              "1753-01-01 23:59:59.997");
}

TEST(Moment, EveryTruncationAndEveryByteIsReadOrRefused) {
    const std::string text = "31 January 2024 10:11:12.1234567 PM";
    for (size_t length = 0; length <= text.size(); ++length) Moment::Parse(text.substr(0, length));
    for (int byte = 0; byte < 256; ++byte) {
        std::string changed = text;
        changed[3] = static_cast<char>(byte);
        Moment::Parse(changed);
    }
    SUCCEED();
}

}  // namespace quarv::localdb::engine
