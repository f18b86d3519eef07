#include "TokenChecks.h"
#include "localdb/tds/Utf8.h"

namespace quarv::localdb::tds {

TEST(Utf8Test, LongAsciiTakesTheSameBytesAsShort) {
    EXPECT_EQ(Written([](ByteWriter& w) { WriteUtf8AsUtf16(w, "abcdefghi"); }),
              "61 00 62 00 63 00 64 00 65 00 66 00 67 00 68 00 69 00");
}

struct DamagedText {
    const char* utf8;
    const char* utf16;
};

class DamagedTexts : public testing::TestWithParam<DamagedText> {};

TEST_P(DamagedTexts, GiveReplacementsAndKeepTheirLength) {
    const std::string_view text = GetParam().utf8;
    const std::string written = Written([&](ByteWriter& w) { WriteUtf8AsUtf16(w, text); });
    EXPECT_EQ(written, GetParam().utf16);
    EXPECT_EQ(Hex(written).size(), 2 * Utf16Length(text));
}

INSTANTIATE_TEST_SUITE_P(All, DamagedTexts,
                         testing::Values(DamagedText{"\x80", ""},       // stray
                                         DamagedText{"\xC3", "FD FF"},  // cut short
                                         DamagedText{"\xC3x", "FD FF 78 00"},
                                         DamagedText{"\xC0\x80", "FD FF"},      // overlong
                                         DamagedText{"\xED\xA0\x80", "FD FF"},  // surrogate
                                         DamagedText{"\xF0\x9F\x98", "FD FF FD FF"},
                                         DamagedText{"\xF8\x88\x80\x80\x80", "FD FF FD FF"},
                                         DamagedText{"\xF4\x90\x80\x80", "FD FF FD FF"}));

}  // namespace quarv::localdb::tds
