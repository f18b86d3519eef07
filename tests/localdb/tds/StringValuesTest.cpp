#include "TokenChecks.h"
#include "localdb/tds/StringValues.h"

namespace quarv::localdb::tds {

TEST(StringValuesTest, WideTextIsUtf16InEachForm) {
    // An a with diaeresis and an emoji: two bytes and a surrogate pair.
    constexpr std::string_view Text = "\xC3\xA4\xF0\x9F\x98\x80";
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteWide(w, StringForm::Short, Text); }),
              "06 00 E4 00 3D D8 00 DE");
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteWide(w, StringForm::Plp, Text); }),
              "06 00 00 00 00 00 00 00 06 00 00 00 E4 00 3D D8 00 DE 00 00 00 00");
    EXPECT_EQ(
        Written([&](ByteWriter& w) { WriteWide(w, StringForm::Long, "a"); }),
        "10 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 02 00 00 00 61 "
        "00");
}

TEST(StringValuesTest, NarrowTextIsInTheCodePage) {
    // Euro sign, a with diaeresis, and what the code page lacks: one mark, and two for an emoji.
    EXPECT_EQ(Written([](ByteWriter& w) {
                  WriteNarrow(w, StringForm::Short, "\xE2\x82\xAC\xC3\xA4\xD0\x96\xF0\x9F\x98\x80");
              }),
              "05 00 80 E4 3F 3F 3F");
}

TEST(StringValuesTest, BinaryIsAsItStands) {
    const auto bytes = Hex("00 FF 10");
    EXPECT_EQ(Written([&](ByteWriter& w) { WriteBinary(w, StringForm::Short, bytes); }),
              "03 00 00 FF 10");
}

TEST(StringValuesTest, ShortFormTooLongToCountIsRefused) {
    const std::string text(32768, 'a');
    EXPECT_EQ(
        FaultOf([&] { Written([&](ByteWriter& w) { WriteWide(w, StringForm::Short, text); }); }),
        Fault::ValueTooLong);
}

}  // namespace quarv::localdb::tds
