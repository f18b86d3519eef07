#include "platform/forms/MessageDialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProxyStyle>
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

TEST(MessageDialog, WithoutAThemeItsPictureIsDrawnForTheScreen) {
    const QString theme = QIcon::themeName();
    const QString fallback = QIcon::fallbackThemeName();
    QIcon::setThemeName(u"none"_qs);
    QIcon::setFallbackThemeName(u"none"_qs);
    const MessageDialog dialog(nullptr, u"t"_qs, u"T"_qs, BoxIcon::Critical, BoxButtons::Ok);
    QIcon::setThemeName(theme);
    QIcon::setFallbackThemeName(fallback);
    QPixmap picture;
    for (const QLabel* label : dialog.findChildren<QLabel*>())
        if (!label->pixmap(Qt::ReturnByValue).isNull()) picture = label->pixmap(Qt::ReturnByValue);
    const int size = dialog.style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, &dialog);
    EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(size, size));
    EXPECT_EQ(picture.devicePixelRatio(), dialog.devicePixelRatio());
    const QImage image = picture.toImage();
    EXPECT_EQ(image.pixel(image.width() / 2, image.height() / 8), 0xffc62f2f);
}

// As of a desktop whose dialogs' buttons carry small pictures.
class PicturedButtons : public QProxyStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 1
                   : QProxyStyle::styleHint(hint, option, widget, more);
    }
};

TEST(MessageDialog, ItsButtonsShowTheirWordAlone) {
    const QString before = QApplication::style()->name();
    QApplication::setStyle(new PicturedButtons);
    {
        const MessageDialog dialog(nullptr, u"?"_qs, u"T"_qs, BoxIcon::Question, BoxButtons::YesNo);
        EXPECT_TRUE(dialog.findChild<QPushButton*>(u"Yes"_qs)->icon().isNull());
        EXPECT_TRUE(dialog.findChild<QPushButton*>(u"No"_qs)->icon().isNull());
    }
    QApplication::setStyle(before);
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
