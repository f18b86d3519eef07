#include "platform/drawing/SystemColors.h"

#include <gtest/gtest.h>

namespace quarv::drawing {
namespace {

QPalette TestPalette() {
    QPalette palette;
    palette.setColor(QPalette::Button, QColor(1, 2, 3));
    palette.setColor(QPalette::Base, QColor(4, 5, 6));
    palette.setColor(QPalette::Highlight, QColor(7, 8, 9));
    palette.setColor(QPalette::Mid, QColor(10, 11, 12));
    palette.setColor(QPalette::Active, QPalette::Text, QColor(13, 14, 15));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(16, 17, 18));
    return palette;
}

struct Case {
    quint32 stored;
    QColor color;
};

class StoredColors : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    , StoredColors,
    testing::Values(Case{0x00000000, QColor(0, 0, 0)}, Case{0x00D1ADAD, QColor(173, 173, 209)},
                    Case{0x000000FF, QColor(255, 0, 0)}, Case{0x00FF0000, QColor(0, 0, 255)},
                    Case{0x8000000F, QColor(1, 2, 3)}, Case{0x80000005, QColor(4, 5, 6)},
                    Case{0x8000000D, QColor(7, 8, 9)}, Case{0x80000010, QColor(10, 11, 12)},
                    Case{0x80000008, QColor(13, 14, 15)}, Case{0x80000011, QColor(16, 17, 18)},
                    Case{0x800000FE, QColor(1, 2, 3)}, Case{0xFFFFFFFF, QColor(1, 2, 3)}));

TEST_P(StoredColors, Translate) {
    EXPECT_EQ(TranslateColor(GetParam().stored, TestPalette()), GetParam().color);
}

TEST(SystemColors, ButtonFacesAreStoredAsTheirIndexWithTheSystemFlag) {
    EXPECT_EQ(Stored(SystemColor::ButtonFace), 0x8000000FU);
}

}  // namespace
}  // namespace quarv::drawing
