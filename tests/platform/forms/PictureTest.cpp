#include <gtest/gtest.h>

#include <QPixmap>

#include "base/Error.h"
#include "platform/forms/Form.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/PictureBox.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

QIcon Filled(Qt::GlobalColor color) {
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return QIcon(pixmap);
}

TEST(ImageList, NumbersPicturesFromOne) {
    Form form(u"F"_qs);
    ImageList list(&form, u"Icons"_qs);
    EXPECT_EQ(list.Add(Filled(Qt::red)), 1);
    EXPECT_EQ(list.Add(Filled(Qt::green)), 2);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Picture(2).pixmap(16).toImage().pixelColor(3, 3), QColor(Qt::green));
    EXPECT_THROW(list.Picture(0), Error);
    EXPECT_THROW(list.Picture(3), Error);
}

TEST(ImageList, RefusesAFileThatIsNotThere) {
    Form form(u"F"_qs);
    ImageList list(&form, u"Icons"_qs);
    EXPECT_EQ(Raised([&] { list.Add(u":/none.svg"_qs); }), 53);
    EXPECT_EQ(list.Count(), 0);
}

TEST(ImageList, IsNeverSeen) {
    Form form(u"F"_qs);
    ImageList list(&form, u"Icons"_qs);
    list.SetVisible(true);
    form.Show();
    EXPECT_FALSE(list.isVisible());
}

TEST(PictureBox, ShowsItsPictureCentred) {
    Form form(u"F"_qs);
    PictureBox box(&form, u"Image1"_qs);
    box.Move(0, 0, 600, 240);
    box.SetPicture(Filled(Qt::red));
    form.Show();
    const QImage image = box.grab().toImage();
    EXPECT_EQ(image.pixelColor(20, 8), QColor(Qt::red));
    EXPECT_NE(image.pixelColor(2, 8), QColor(Qt::red));
}

TEST(PictureBox, ShowsNothingWithoutAPicture) {
    Form form(u"F"_qs);
    PictureBox box(&form, u"Image1"_qs);
    box.Move(0, 0, 600, 240);
    form.Show();
    const QImage with = form.grab().toImage();
    box.SetVisible(false);
    EXPECT_EQ(with, form.grab().toImage());
}

}  // namespace
}  // namespace quarv::forms
