#include "platform/drawing/Fonts.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

#include "platform/drawing/TextMeasure.h"

namespace quarv::drawing {
namespace {

TEST(Fonts, AnInstalledFontIsUsed) {
    const QString family = QFontDatabase::families().constFirst();
    EXPECT_EQ(FontNamed(family, 9).family(), family);
    EXPECT_EQ(FontNamed(family, 9.5).pointSizeF(), 9.5);
}

TEST(Fonts, TheFixedPitchFontStaysFixed) {
    const QFont font = FontNamed(u"Courier New"_qs, 10);
    EXPECT_EQ(MeasureText(font, u"iiii"_qs).width(), MeasureText(font, u"WWWW"_qs).width());
}

TEST(Fonts, AnUnknownNameGivesTheDesktopsFont) {
    EXPECT_EQ(FontNamed(u"No Such Face"_qs, 10).family(),
              QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
}

TEST(Fonts, NamesIgnoreLetterCase) {
    EXPECT_EQ(FontNamed(u"courier new"_qs, 10).family(), FontNamed(u"Courier New"_qs, 10).family());
}

}  // namespace
}  // namespace quarv::drawing
