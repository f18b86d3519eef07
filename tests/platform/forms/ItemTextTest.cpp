#include "platform/forms/ItemText.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

struct Case {
    QString key;
    QString folded;
};

class Keys : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    , Keys,
    testing::Values(Case{u""_qs, u""_qs}, Case{u"_tbl_ORDERS"_qs, u"_tbl_orders"_qs},
                    Case{u"[@`Z{"_qs, u"[@`z{"_qs},
                    Case{u"\u00c4\u03a3\u03c2"_qs, u"\u00e4\u03c3\u03c3"_qs},
                    Case{u"\U00010400x"_qs, u"\U00010428x"_qs},
                    Case{QString(QChar(0xD801)) + u"A"_qs, QString(QChar(0xD801)) + u"a"_qs},
                    Case{u"\u00df"_qs, u"\u00df"_qs}));

TEST_P(Keys, FoldCharacterByCharacter) {
    EXPECT_EQ(FoldKey(GetParam().key), GetParam().folded);
}

TEST(ShownText, LongTextIsNotCutInsideAPair) {
    const QString text = QString(1999, u'a') + u"\U0001F600tail"_qs;
    EXPECT_EQ(ShownText(text), QString(1999, u'a') + QChar(0x2026));
}

TEST(ShownText, TextThatFitsStaysAsItIs) {
    EXPECT_EQ(ShownText(QString(2000, u'a')), QString(2000, u'a'));
}

TEST(PlainToolTip, ShowsMarkupAsItStands) {
    EXPECT_EQ(PlainToolTip(u"<b>a</b>\n&"_qs),
              u"<p style='white-space:pre-wrap'>&lt;b&gt;a&lt;/b&gt;\n&amp;</p>"_qs);
    EXPECT_EQ(PlainToolTip({}), u""_qs);
}

TEST(PlainToolTip, WrapsLongWordsBetweenCharacters) {
    EXPECT_EQ(PlainToolTip(QString(60, u'x') + u" "_qs + QString(61, u'y')),
              u"<p style='white-space:pre-wrap'>"_qs + QString(60, u'x') + u" "_qs +
                  QString(60, u'y') + u"\u200By</p>"_qs);
    const QString pairs = PlainToolTip(QString(59, u'x') + u"\U0001F600\U0001F600"_qs);
    EXPECT_TRUE(pairs.contains(u"\U0001F600\u200B\U0001F600"_qs));
}

}  // namespace
}  // namespace quarv::forms
