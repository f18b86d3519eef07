#include "platform/forms/ImageList.h"

#include <gtest/gtest.h>

#include "platform/forms/FilledIcon.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

TEST(ImageList, NumbersPicturesFromOne) {
    Form form(u"F"_qs);
    ImageList list(&form, u"Icons"_qs);
    EXPECT_EQ(list.Add(FilledIcon(Qt::red)), 1);
    EXPECT_EQ(list.Add(FilledIcon(Qt::green)), 2);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Picture(2).pixmap(16).toImage().pixelColor(3, 3), QColor(Qt::green));
    EXPECT_EQ(Raised([&] { list.Picture(0); }), 9);
    EXPECT_EQ(Raised([&] { list.Picture(3); }), 9);
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

}  // namespace
}  // namespace quarv::forms
