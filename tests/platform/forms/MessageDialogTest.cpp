#include "platform/forms/MessageDialog.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(MessageDialog, ItsTextIsPlainAndCanBeSelected) {
    MessageDialog dialog(nullptr, u"<h1>hi</h1> & <b>x</b>\r\nnext"_qs, u"T"_qs, BoxIcon::Critical,
                         BoxButtons::Ok);
    auto* label = dialog.findChild<QLabel*>(u"Message"_qs);
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    EXPECT_EQ(label->text(), u"<h1>hi</h1> & <b>x</b>\nnext"_qs);
    EXPECT_TRUE(label->textInteractionFlags() & Qt::TextSelectableByMouse);
    EXPECT_TRUE(label->textInteractionFlags() & Qt::TextSelectableByKeyboard);
    EXPECT_EQ(dialog.accessibleName(), u"T"_qs);
}

class LongMessages : public testing::TestWithParam<QString> {};

INSTANTIATE_TEST_SUITE_P(, LongMessages,
                         testing::Values(QString(u"word "_qs).repeated(20'000),
                                         QString(3'000, u'W'), QString(300'000, u'W'),
                                         QString(u"line\r\n"_qs).repeated(500)));

TEST_P(LongMessages, StayInsideTheScreenAndLoseNothing) {
    MessageDialog dialog(nullptr, GetParam(), u"T"_qs, BoxIcon::Critical, BoxButtons::YesNo);
    dialog.show();
    const QSize screen = dialog.screen()->availableSize();
    EXPECT_LE(dialog.width(), screen.width());
    EXPECT_LE(dialog.height(), screen.height());
    auto* memo = dialog.findChild<QPlainTextEdit*>(u"Message"_qs);
    ASSERT_NE(memo, nullptr);
    EXPECT_TRUE(memo->isReadOnly());
    EXPECT_EQ(memo->toPlainText().remove(u'\n').size(),
              QString(GetParam()).remove(u'\r').remove(u'\n').size());
    const auto* yes = dialog.findChild<QPushButton*>(u"Yes"_qs);
    EXPECT_TRUE(dialog.rect().contains(yes->geometry()));
}

}  // namespace
}  // namespace quarv::forms
