#include "TokenChecks.h"
#include "localdb/tds/TemporalValues.h"

namespace quarv::localdb::tds {

TEST(TemporalValuesTest, DateTimeCountsDaysAndThreeHundredths) {
    // 1900-01-02 00:00:01.000
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDateTime(w, 25'920'300); }),
              "08 01 00 00 00 2C 01 00 00");
    EXPECT_EQ(ReadBack("08 01 00 00 00 2C 01 00 00", ReadDateTime), 25'920'300);
}

TEST(TemporalValuesTest, DateTimeBefore1900HasNegativeDaysAndPositiveTime) {
    // 1899-12-31 23:59:59.997
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDateTime(w, -1); }), "08 FF FF FF FF FF 81 8B 01");
    EXPECT_EQ(ReadBack("08 FF FF FF FF FF 81 8B 01", ReadDateTime), -1);
}

TEST(TemporalValuesTest, TimeOfDayBeyondTheDayIsRefused) {
    EXPECT_EQ(FaultOf([] { ReadBack("08 00 00 00 00 00 82 8B 01", ReadDateTime); }),
              Fault::ValueTooLong);
    EXPECT_EQ(FaultOf([] { ReadBack("04 00 00 A0 05", ReadSmallDateTime); }), Fault::ValueTooLong);
    EXPECT_EQ(
        FaultOf([] { ReadBack("03 80 51 01", [](auto content) { return ReadTime(content, 0); }); }),
        Fault::ValueTooLong);
}

TEST(TemporalValuesTest, SmallDateTimeCountsDaysAndMinutes) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteSmallDateTime(w, 1440 * 3 + 61); }),
              "04 03 00 3D 00");
    EXPECT_EQ(ReadBack("04 03 00 3D 00", ReadSmallDateTime), 1440 * 3 + 61);
}

TEST(TemporalValuesTest, DateCountsFromTheFirstYear) {
    // 9999-12-31
    EXPECT_EQ(Written([](ByteWriter& w) { WriteDate(w, 3'652'058); }), "03 DA B9 37");
    EXPECT_EQ(ReadBack("03 DA B9 37", ReadDate), 3'652'058);
}

TEST(TemporalValuesTest, TimeCountsInTheUnitOfItsScale) {
    // 00:00:01.2345678 at scales 7, 3 and 0
    EXPECT_EQ(Written([](ByteWriter& w) { WriteTime(w, 7, 12'345'678); }), "05 4E 61 BC 00 00");
    EXPECT_EQ(Written([](ByteWriter& w) { WriteTime(w, 3, 12'345'678); }), "04 D2 04 00 00");
    EXPECT_EQ(Written([](ByteWriter& w) { WriteTime(w, 0, 12'345'678); }), "03 01 00 00");
    EXPECT_EQ(ReadBack("05 4E 61 BC 00 00", [](auto c) { return ReadTime(c, 7); }), 12'345'678);
    EXPECT_EQ(ReadBack("04 D2 04 00 00", [](auto c) { return ReadTime(c, 3); }), 12'340'000);
}

TEST(TemporalValuesTest, DateTime2HasTimeThenDate) {
    const int64_t ticks = 2 * TicksOfDay + 10'000'000;
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteDateTime2(w, 0, ticks); }), "06 01 00 00 02 00 00");
    EXPECT_EQ(ReadBack("06 01 00 00 02 00 00", [](auto c) { return ReadDateTime2(c, 0); }), ticks);
}

TEST(TemporalValuesTest, DateTimeOffsetEndsWithItsMinutes) {
    const OffsetTime value{2 * TicksOfDay + 10'000'000, -90};
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteDateTimeOffset(w, 0, value); }),
              "08 01 00 00 02 00 00 A6 FF");
    EXPECT_EQ(
        ReadBack("08 01 00 00 02 00 00 A6 FF", [](auto c) { return ReadDateTimeOffset(c, 0); }),
        value);
}

TEST(TemporalValuesTest, ContentOfNoTypesSizeIsRefused) {
    EXPECT_EQ(FaultOf([] { ReadBack("03 01 02 03", ReadDateTime); }), Fault::ValueLength);
    EXPECT_EQ(FaultOf([] { ReadBack("02 01 02", ReadDate); }), Fault::ValueLength);
}

TEST(TemporalValuesTest, DaysBeyondTheCalendarAreRefused) {
    const auto last = Hex("00 00 00 DA B9 37");
    EXPECT_EQ(ReadDateTime2(last, 0), 3'652'058 * TicksOfDay);
    const auto beyond = Hex("00 00 00 DB B9 37");
    EXPECT_EQ(FaultOf([&] { ReadDateTime2(beyond, 0); }), Fault::ValueTooLong);
    const auto largest = Hex("00 00 00 FF FF FF 00 00");
    EXPECT_EQ(FaultOf([&] { ReadDateTimeOffset(largest, 0); }), Fault::ValueTooLong);
}

}  // namespace quarv::localdb::tds
