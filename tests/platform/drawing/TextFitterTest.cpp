#include "platform/drawing/TextFitter.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "support/TextPrinter.h"

namespace quarv::drawing {
namespace {

class TextFitterTest : public ::testing::Test {
  protected:
    double Width(const QString& text) const { return QFontMetricsF(font).horizontalAdvance(text); }

    QFont font;
    TextFitter fitter{font};
};

TEST_F(TextFitterTest, TextThatFitsIsGivenAsItIs) {
    const QString text = QStringLiteral("Aldgate 12");
    EXPECT_EQ(fitter.Fit(text, Width(text) + 2), text);
    EXPECT_TRUE(fitter.Fits(text, Width(text) + 2));
    EXPECT_EQ(fitter.Fit(QString(), 10), u"");
}

TEST_F(TextFitterTest, TextThatDoesNotFitEndsInAnEllipsis) {
    const QString text = QStringLiteral("Aldgate 12");
    const QString shown = fitter.Fit(text, Width(text) - 4);
    EXPECT_TRUE(shown.endsWith(QChar(0x2026))) << shown.toStdString();
    EXPECT_TRUE(shown.startsWith(u"Ald"));
    EXPECT_LE(Width(shown), Width(text) - 4);
    EXPECT_FALSE(fitter.Fits(text, Width(text) - 4));
}

TEST_F(TextFitterTest, WithoutRoomNothingIsShown) {
    EXPECT_EQ(fitter.Fit(QStringLiteral("abc"), 0), u"");
    EXPECT_EQ(fitter.Fit(QStringLiteral("abc"), -5), u"");
}

TEST_F(TextFitterTest, LineBreaksAndControlCharactersBecomeBlanks) {
    EXPECT_EQ(fitter.Fit(QStringLiteral("a\r\nb\tc"), 500), u"a  b c");
    EXPECT_EQ(fitter.Fit(QString(QChar(0x2028)), 500), u" ");
    EXPECT_FALSE(fitter.Fits(QStringLiteral("a\nb"), 500));
}

TEST_F(TextFitterTest, OtherLettersAreMeasuredToo) {
    const QString text = QStringLiteral("Ünïçødé ñámè");
    EXPECT_EQ(fitter.Fit(text, Width(text) + 2), text);
    EXPECT_TRUE(fitter.Fit(text, Width(text) / 2).endsWith(QChar(0x2026)));
}

TEST_F(TextFitterTest, MeasuresPlainAndOtherTexts) {
    EXPECT_NEAR(fitter.Width(QStringLiteral("1234567")), Width(QStringLiteral("1234567")), 1);
    const QString other = QStringLiteral("Ünïçødé \u65E5\u672C");
    EXPECT_EQ(fitter.Width(other), Width(other));
    EXPECT_EQ(fitter.Width(QString()), 0);
}

TEST_F(TextFitterTest, ALongTextCostsWhatShows) {
    const QString text(10'000'000, u'\n');
    EXPECT_LT(fitter.Fit(text, 100).size(), 200);
    EXPECT_LT(fitter.Fit(QString(10'000'000, u'i'), 100).size(), 200);
}

TEST_F(TextFitterTest, ACutTextShowsThatItGoesOn) {
    // Joining marks take no room of their own.
    const QString text = u'e' + QString(500, QChar(0x0301));
    EXPECT_TRUE(fitter.Fit(text, 100).endsWith(QChar(0x2026)));
}

TEST_F(TextFitterTest, APairIsNeverCutInHalf) {
    QString text(131, u'\u200B');
    text += QString::fromUcs4(U"\U0001F600");
    text += QString(500, u'x');
    const QString shown = fitter.Fit(text, 100);
    for (const QChar c : shown) EXPECT_FALSE(c.isSurrogate());
}

}  // namespace
}  // namespace quarv::drawing
