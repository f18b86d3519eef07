#include "platform/drawing/TextMeasure.h"

#include <gtest/gtest.h>

#include "platform/drawing/Fonts.h"

namespace quarv::drawing {
namespace {

TEST(TextMeasure, LongerTextIsWiderAndALineIsAsHighAsTheFont) {
    const QFont font = FontNamed(u"Microsoft Sans Serif"_qs, 10);
    EXPECT_EQ(MeasureText(font, u""_qs).width(), 0);
    EXPECT_GT(MeasureText(font, u"AA"_qs).width(), MeasureText(font, u"A"_qs).width());
    EXPECT_EQ(MeasureText(font, u""_qs).height(), MeasureText(font, u"A"_qs).height());
}

}  // namespace
}  // namespace quarv::drawing
