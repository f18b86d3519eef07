#include <gtest/gtest.h>

#include <QSignalSpy>
#include <functional>

#include "base/LateBinding.h"
#include "controls/RButton.h"
#include "platform/forms/Form.h"
#include "support/FilledPicture.h"
#include "support/PaintCounter.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using forms::PropertyBag;
using test::FilledPicture;

class RButtonProperties : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RButton button{&form, u"Run"_qs};
    QSignalSpy changed{&button, &forms::UserControl::PropertyChanged};

    QStringList Announced() const {
        QStringList names;
        for (const auto& arguments : changed) names.append(arguments.at(0).toString());
        return names;
    }
};

TEST_F(RButtonProperties, StartAsANewButtonHasThem) {
    EXPECT_EQ(button.Picture(), nullptr);
    EXPECT_EQ(button.PictureDown(), nullptr);
    EXPECT_FALSE(button.Down());
    EXPECT_FALSE(button.DotNet());
    EXPECT_TRUE(button.Enabled());
    EXPECT_EQ(button.BackColor(), 0x8000000FU);
}

TEST_F(RButtonProperties, EachWriterStoresAndAnnounces) {
    const auto red = FilledPicture(Qt::red);
    button.SetPicture(red);
    button.SetPictureDown(red);
    button.SetDown(true);
    button.SetBackColor(0x00123456);
    button.SetDotNet(true);
    button.SetEnabled(false);
    EXPECT_EQ(Announced(), QStringList({u"Picture"_qs, u"PictureDown"_qs, u"Down"_qs,
                                        u"BackColor"_qs, u"DotNet"_qs, u"Enabled"_qs}));
    EXPECT_EQ(button.Picture(), red);
    EXPECT_EQ(button.PictureDown(), red);
    EXPECT_TRUE(button.Down());
    EXPECT_EQ(button.BackColor(), 0x00123456U);
    EXPECT_TRUE(button.DotNet());
    EXPECT_FALSE(button.Enabled());
    EXPECT_FALSE(button.isEnabled());
}

TEST_F(RButtonProperties, TheSameValueIsAnnouncedToo) {
    button.SetDown(false);
    EXPECT_EQ(Announced(), QStringList(u"Down"_qs));
}

TEST_F(RButtonProperties, EnabledIsAnnouncedThroughTheBaseClassToo) {
    static_cast<forms::Control&>(button).SetEnabled(false);
    SetByName(&button, u"Enabled"_qs, Value(true));
    EXPECT_EQ(Announced(), QStringList({u"Enabled"_qs, u"Enabled"_qs}));
}

TEST_F(RButtonProperties, EachWriterRepaints) {
    form.Show();
    button.Move(0, 0, 600, 450);
    test::PaintCounter counter(button);
    counter.Taken();
    const std::function<void()> writers[] = {
        [this] { button.SetPicture(FilledPicture(Qt::red)); },
        [this] { button.SetPictureDown(FilledPicture(Qt::blue)); },
        [this] { button.SetDown(true); },
        [this] { button.SetDotNet(true); },
        [this] { button.SetBackColor(0x000000FF); },
        [this] { button.SetEnabled(true); },
    };
    for (const auto& write : writers) {
        write();
        EXPECT_EQ(counter.Taken(), 1);
    }
    EXPECT_EQ(counter.Taken(), 0);
}

TEST_F(RButtonProperties, EachPropertyHasItsLook) {
    form.Show();
    button.Move(0, 0, 600, 450);
    button.setPalette(test::ClassicPalette());
    const auto corner = [this] { return button.grab().toImage().pixelColor(1, 1); };
    button.SetPicture(FilledPicture(Qt::red));
    EXPECT_EQ(corner(), QColor(236, 233, 216));
    button.SetDown(true);
    EXPECT_EQ(corner(), QColor(246, 244, 236));
    button.SetDotNet(true);
    EXPECT_EQ(corner(), QColor(214, 214, 232));
    button.SetEnabled(false);
    EXPECT_EQ(corner(), QColor(236, 233, 216));
    button.SetEnabled(true);
    button.SetDown(false);
    button.SetBackColor(0x000000FF);
    EXPECT_EQ(corner(), QColor(255, 0, 0));
}

TEST_F(RButtonProperties, TheToolTipIsThatOfTheControl) {
    button.SetToolTipText(u"Runs <it>"_qs);
    EXPECT_EQ(button.ToolTipText(), u"Runs <it>"_qs);
    EXPECT_TRUE(button.toolTip().contains(u"Runs &lt;it&gt;"_qs));
}

TEST_F(RButtonProperties, AreReachedByName) {
    const auto red = FilledPicture(Qt::red);
    SetByName(&button, u"Picture"_qs, Value(red));
    SetByName(&button, u"PictureDown"_qs, Value(red));
    SetByName(&button, u"BackColor"_qs, Value(255));
    SetByName(&button, u"DotNet"_qs, Value(true));
    SetByName(&button, u"Down"_qs, Value(true));
    EXPECT_EQ(button.Picture(), red);
    EXPECT_EQ(GetByName(&button, u"PictureDown"_qs).ToObject(), red);
    EXPECT_EQ(GetByName(&button, u"BackColor"_qs).ToInteger(), 255);
    EXPECT_TRUE(GetByName(&button, u"DotNet"_qs).ToBoolean());
    EXPECT_TRUE(GetByName(&button, u"Down"_qs).ToBoolean());
    SetByName(&button, u"Picture"_qs, Value(ObjectRef()));
    EXPECT_EQ(button.Picture(), nullptr);
    EXPECT_EQ(Raised([&] { SetByName(&button, u"Picture"_qs, Value(Borrow(&button))); }), 13);
}

TEST_F(RButtonProperties, AreSavedAndLoaded) {
    const auto red = FilledPicture(Qt::red);
    const auto blue = FilledPicture(Qt::blue);
    button.SetPicture(red);
    button.SetPictureDown(blue);
    button.SetDown(true);
    button.SetBackColor(0x00123456);
    button.SetDotNet(true);
    button.SetEnabled(false);
    PropertyBag bag;
    button.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 6);
    RButton loaded(&form, u"Loaded"_qs);
    loaded.ReadProperties(bag);
    EXPECT_EQ(loaded.Picture(), red);
    EXPECT_EQ(loaded.PictureDown(), blue);
    EXPECT_TRUE(loaded.Down());
    EXPECT_EQ(loaded.BackColor(), 0x00123456U);
    EXPECT_TRUE(loaded.DotNet());
    EXPECT_FALSE(loaded.isEnabled());
}

TEST_F(RButtonProperties, AreStoredUnderTheirNames) {
    button.SetDown(true);
    button.SetBackColor(0x80000005);
    PropertyBag bag;
    button.WriteProperties(bag);
    EXPECT_TRUE(bag.ReadProperty(u"Down"_qs).ToBoolean());
    EXPECT_EQ(bag.ReadProperty(u"BackColor"_qs).ToInteger(), 2147483653);
}

TEST_F(RButtonProperties, DefaultsAreNotStoredAndComeBackFromAnEmptyBag) {
    PropertyBag bag;
    button.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 0);
    button.SetPicture(FilledPicture(Qt::red));
    button.SetPictureDown(FilledPicture(Qt::red));
    button.SetDown(true);
    button.SetBackColor(1);
    button.SetDotNet(true);
    button.SetEnabled(false);
    button.ReadProperties(bag);
    button.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 0);
    EXPECT_TRUE(button.isEnabled());
}

TEST_F(RButtonProperties, AStoredColourMayHaveASign) {
    PropertyBag bag;
    bag.WriteProperty(u"BackColor"_qs, Value(-2147483643));
    button.ReadProperties(bag);
    EXPECT_EQ(button.BackColor(), 0x80000005U);
}

TEST_F(RButtonProperties, WhatIsNoPictureOrColourIsRefused) {
    PropertyBag picture;
    picture.WriteProperty(u"Picture"_qs, Value(7));
    EXPECT_EQ(Raised([&] { button.ReadProperties(picture); }), 13);
    PropertyBag large;
    large.WriteProperty(u"BackColor"_qs, Value(4294967296));
    EXPECT_EQ(Raised([&] { button.ReadProperties(large); }), 6);
    PropertyBag small;
    small.WriteProperty(u"BackColor"_qs, Value(-2147483649));
    EXPECT_EQ(Raised([&] { button.ReadProperties(small); }), 6);
}

}  // namespace
}  // namespace quarv
