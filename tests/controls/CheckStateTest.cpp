#include "controls/CheckState.h"

#include <gtest/gtest.h>

namespace quarv {
namespace {

TEST(CheckState, StartsUncheckedAndUnpressed) {
    EXPECT_FALSE(CheckState().isChecked);
    EXPECT_FALSE(CheckState().isPressed);
}

TEST(CheckState, SpaceGivesTheOpposite) {
    EXPECT_EQ(CheckState{false}.AfterKey(32), true);
    EXPECT_EQ(CheckState{true}.AfterKey(32), false);
}

TEST(CheckState, CapitalYAndNSayWhich) {
    for (const bool before : {false, true}) {
        EXPECT_EQ(CheckState{before}.AfterKey(89), true);
        EXPECT_EQ(CheckState{before}.AfterKey(78), false);
    }
}

TEST(CheckState, OtherCharactersMeanNothing) {
    for (const int character : {0, 8, 13, 27, 88, 110, 121, 0xA0, 0x2003})
        EXPECT_EQ(CheckState().AfterKey(character), std::nullopt) << character;
}

}  // namespace
}  // namespace quarv
