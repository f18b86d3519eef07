#include "base/Checked16.h"

#include "support/Raised.h"

namespace quarv {

TEST(Checked16, GivesWhatFits) {
    EXPECT_EQ(Add16(32757, 10), 32767);
    EXPECT_EQ(Add16(-32767, -1), -32768);
    EXPECT_EQ(Multiply16(-256, 128), -32768);
    EXPECT_EQ(Narrow16(32767), 32767);
}

TEST(Checked16, RaisesOverflowForWhatDoesNotFit) {
    EXPECT_EQ(Raised([] { Add16(32758, 10); }), 6);
    EXPECT_EQ(Raised([] { Add16(-32768, -1); }), 6);
    EXPECT_EQ(Raised([] { Multiply16(256, 128); }), 6);
    EXPECT_EQ(Raised([] { Narrow16(32768); }), 6);
    EXPECT_EQ(Raised([] { Narrow16(-32769); }), 6);
}

}  // namespace quarv
