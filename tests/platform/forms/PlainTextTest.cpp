#include "platform/forms/PlainText.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QMimeData>
#include <QUrl>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(PlainText, TextIsTakenAsItIs) {
    QMimeData data;
    data.setText(u"<b>a</b>\u00a0\t\r\n"_qs);
    EXPECT_TRUE(HasPlainText(data));
    EXPECT_EQ(PlainTextOf(data), u"<b>a</b>\u00a0\t\r\n"_qs);
}

TEST(PlainText, TheTextOfAPageComesBeforeItsMarkup) {
    QMimeData data;
    data.setHtml(u"<b>marked</b>"_qs);
    EXPECT_TRUE(HasPlainText(data));
    EXPECT_EQ(PlainTextOf(data), u"marked"_qs);
    data.setText(u"given"_qs);
    EXPECT_EQ(PlainTextOf(data), u"given"_qs);
}

TEST(PlainText, APictureIsNone) {
    QMimeData data;
    data.setImageData(QImage(2, 2, QImage::Format_RGB32));
    EXPECT_FALSE(HasPlainText(data));
    EXPECT_TRUE(PlainTextOf(data).isNull());
}

TEST(PlainText, AFileIsNoneThoughItsNameComesAlong) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/tmp/a.sql"_qs)});
    EXPECT_FALSE(HasPlainText(data));
    data.setText(u"/tmp/a.sql"_qs);
    EXPECT_FALSE(HasPlainText(data));
    EXPECT_TRUE(PlainTextOf(data).isNull());
}

TEST(PlainText, AnAddressOfThePagesIsItsText) {
    QMimeData data;
    data.setUrls({QUrl(u"https://example.com/"_qs)});
    EXPECT_FALSE(HasPlainText(data));
    data.setText(u"an example"_qs);
    EXPECT_EQ(PlainTextOf(data), u"an example"_qs);
}

TEST(PlainText, IsGivenAsNothingElse) {
    const auto data = AsPlainText(u"<i>\u00a0</i>"_qs);
    EXPECT_EQ(data->formats(), QStringList{u"text/plain"_qs});
    EXPECT_EQ(data->text(), u"<i>\u00a0</i>"_qs);
}

}  // namespace
}  // namespace quarv::forms
