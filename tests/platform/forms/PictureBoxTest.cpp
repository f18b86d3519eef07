#include "platform/forms/PictureBox.h"

#include <gtest/gtest.h>

#include "platform/forms/FilledIcon.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

TEST(PictureBox, ShowsItsPictureCentred) {
    Form form(u"F"_qs);
    PictureBox box(&form, u"Image1"_qs);
    box.Move(0, 0, 600, 240);
    box.SetPicture(FilledIcon(Qt::red));
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
