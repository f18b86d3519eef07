#include "platform/forms/LineColours.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace quarv::forms {
namespace {

double Linear(int byte) {
    const double part = byte / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Light(const QColor& colour) {
    return 0.2126 * Linear(colour.red()) + 0.7152 * Linear(colour.green()) +
           0.0722 * Linear(colour.blue()) + 0.05;
}

double Contrast(const QColor& a, const QColor& b) {
    return std::max(Light(a), Light(b)) / std::min(Light(a), Light(b));
}

class LineColoursOnBases : public testing::TestWithParam<const char*> {};

// White, the usual light and dark ones, black, and what lies between them.
INSTANTIATE_TEST_SUITE_P(Bases, LineColoursOnBases,
                         testing::Values("#ffffff", "#fcfcfc", "#eff0f1", "#fdf6e3", "#c0c0c0",
                                         "#808080", "#777777", "#747474", "#31363b", "#232629",
                                         "#1e1e1e", "#000000", "#0000a0", "#ffff00"));

TEST_P(LineColoursOnBases, EveryKindCanBeRead) {
    const QColor base(QString::fromLatin1(GetParam()));
    const LineColours colours = LineColoursOn(base);
    for (int kind = 1; kind < LineKinds; ++kind)
        EXPECT_GE(Contrast(colours.ofKind[static_cast<size_t>(kind)], base), 4.5) << kind;
    EXPECT_FALSE(colours.ofKind[0].isValid());
}

TEST(LineColours, KindsDifferOnLightAndDark) {
    for (const QColor base : {QColor(Qt::white), QColor(0x23, 0x26, 0x29)}) {
        const LineColours colours = LineColoursOn(base);
        std::set<QRgb> all;
        for (int kind = 1; kind < LineKinds; ++kind)
            all.insert(colours.ofKind[static_cast<size_t>(kind)].rgb());
        EXPECT_EQ(all.size(), 4u);
    }
}

}  // namespace
}  // namespace quarv::forms
