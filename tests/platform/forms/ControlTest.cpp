#include "platform/forms/Control.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFontInfo>
#include <limits>

#include "base/LateBinding.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/ComboBox.h"
#include "platform/forms/Form.h"
#include "platform/forms/Frame.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/Label.h"
#include "platform/forms/ListView.h"
#include "platform/forms/OptionButton.h"
#include "platform/forms/PictureBox.h"
#include "platform/forms/TabStrip.h"
#include "platform/forms/TextBox.h"
#include "platform/forms/TreeView.h"
#include "platform/forms/UserControl.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

TEST(Control, LengthsReadBackExactlyAsWritten) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    button.Move(100.25, 7.1, 1234.567, 31);
    EXPECT_EQ(button.Left(), 100.25);
    EXPECT_EQ(button.Top(), 7.1);
    EXPECT_EQ(button.Width(), 1234.567);
    EXPECT_EQ(button.Height(), 31);
}

TEST(Control, GeometryIsFifteenTwipsToThePixelWithRoundedEdges) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    button.Move(1500, 22, 3000, 375);
    EXPECT_EQ(button.geometry(), QRect(100, 1, 200, 25));
}

TEST(Control, ControlsThatTouchInTwipsTouchInPixels) {
    Form form(u"F"_qs);
    ButtonPlus first(&form, u"A"_qs);
    ButtonPlus second(&form, u"B"_qs);
    first.Move(7, 0, 1000, 300);
    second.Move(1007, 0, 1000, 300);
    EXPECT_EQ(first.x() + first.width(), second.x());
}

TEST(Control, NegativePositionsAreKept) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    label.SetLeft(-300);
    EXPECT_EQ(label.Left(), -300);
    EXPECT_EQ(label.x(), -20);
}

TEST(Control, RefusesNegativeSizesAndWhatIsNoNumber) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    label.Move(15, 15, 150, 150);
    EXPECT_EQ(Raised([&] { label.SetWidth(-1); }), 380);
    EXPECT_EQ(Raised([&] { label.SetHeight(-0.5); }), 380);
    EXPECT_EQ(Raised([&] { label.SetLeft(std::numeric_limits<double>::quiet_NaN()); }), 380);
    EXPECT_EQ(Raised([&] { label.SetTop(std::numeric_limits<double>::infinity()); }), 380);
    EXPECT_EQ(label.Width(), 150);
    EXPECT_EQ(label.geometry(), QRect(1, 1, 10, 10));
}

TEST(Control, HugeLengthsReadBackToo) {
    Form form(u"F"_qs);
    Label label(&form, u"L"_qs);
    label.SetLeft(1e300);
    EXPECT_EQ(label.Left(), 1e300);
}

TEST(Control, PropertiesAreReachedByName) {
    Form form(u"F"_qs);
    FramePlus frame(&form, u"General"_qs);
    SetByName(&frame, u"Left"_qs, Value(12.5));
    SetByName(&frame, u"Width"_qs, Value(3001));
    SetByName(&frame, u"Visible"_qs, Value(false));
    SetByName(&frame, u"Enabled"_qs, Value(false));
    SetByName(&frame, u"Tag"_qs, Value(u"Page"_qs));
    SetByName(&frame, u"BorderStyle"_qs, Value(0));
    SetByName(&frame, u"Caption"_qs, Value(u"C"_qs));
    EXPECT_EQ(frame.Left(), 12.5);
    EXPECT_EQ(GetByName(&frame, u"Width"_qs).ToDouble(), 3001);
    EXPECT_FALSE(frame.Visible());
    EXPECT_FALSE(frame.isEnabled());
    EXPECT_EQ(GetByName(&frame, u"Tag"_qs).ToText(), u"Page"_qs);
    EXPECT_EQ(frame.BorderStyle(), 0);
    EXPECT_EQ(frame.Caption(), u"C"_qs);
    EXPECT_EQ(Raised([&] { SetByName(&frame, u"Picture"_qs, Value(1)); }), 438);
    EXPECT_EQ(Raised([&] { SetByName(&frame, u"BorderStyle"_qs, Value(7)); }), 380);
}

template <typename T>
class EveryControl : public testing::Test {};

template <typename T>
struct Named;
template <>
struct Named<ButtonPlus> {
    static constexpr char16_t Text[] = u"ButtonPlus";
};
template <>
struct Named<ComboBox> {
    static constexpr char16_t Text[] = u"ComboBox";
};
template <>
struct Named<Frame> {
    static constexpr char16_t Text[] = u"Frame";
};
template <>
struct Named<FramePlus> {
    static constexpr char16_t Text[] = u"FramePlus";
};
template <>
struct Named<ImageList> {
    static constexpr char16_t Text[] = u"ImageList";
};
template <>
struct Named<Label> {
    static constexpr char16_t Text[] = u"Label";
};
template <>
struct Named<ListView> {
    static constexpr char16_t Text[] = u"ListView";
};
template <>
struct Named<OptionButton> {
    static constexpr char16_t Text[] = u"OptionButton";
};
template <>
struct Named<PictureBox> {
    static constexpr char16_t Text[] = u"PictureBox";
};
template <>
struct Named<TabStrip> {
    static constexpr char16_t Text[] = u"TabStrip";
};
template <>
struct Named<TextBox> {
    static constexpr char16_t Text[] = u"TextBox";
};
template <>
struct Named<TreeView> {
    static constexpr char16_t Text[] = u"TreeView";
};
template <>
struct Named<UserControl> {
    static constexpr char16_t Text[] = u"UserControl";
};

using ControlTypes =
    testing::Types<ButtonPlus, ComboBox, Frame, FramePlus, ImageList, Label, ListView, OptionButton,
                   PictureBox, TabStrip, TextBox, TreeView, UserControl>;
TYPED_TEST_SUITE(EveryControl, ControlTypes);

TYPED_TEST(EveryControl, IsReachedByNameAndKnowsItsTypeName) {
    Form form(u"F"_qs);
    TypeParam control(&form, u"It"_qs);
    EXPECT_EQ(control.TypeName(), QString::fromUtf16(Named<TypeParam>::Text));
    EXPECT_EQ(control.objectName(), u"It"_qs);
    EXPECT_EQ(control.SpokenName(), u"It"_qs);
    for (const auto* name : {u"Left", u"Top", u"Width", u"Height"}) {
        SetByName(&control, QString::fromUtf16(name), Value(61.5));
        EXPECT_EQ(GetByName(&control, QString::fromUtf16(name)).ToDouble(), 61.5);
    }
    SetByName(&control, u"Tag"_qs, Value(u"t"_qs));
    EXPECT_EQ(GetByName(&control, u"Tag"_qs).ToText(), u"t"_qs);
    SetByName(&control, u"Visible"_qs, Value(false));
    EXPECT_FALSE(GetByName(&control, u"Visible"_qs).ToBoolean());
    SetByName(&control, u"Enabled"_qs, Value(false));
    EXPECT_FALSE(control.isEnabled());
    ASSERT_EQ(form.Controls().size(), 1U);
    EXPECT_EQ(form.Controls()[0], &control);
    EXPECT_EQ(form.ContainedControls()[0], &control);
}

TYPED_TEST(EveryControl, PaintsDisabledAndTinyWithoutComplaint) {
    Form form(u"F"_qs);
    TypeParam control(&form, u"It"_qs);
    control.Move(0, 0, 0, 0);
    form.Show();
    form.grab();
    control.Move(0, 0, 15, 15);
    control.SetEnabled(false);
    form.grab();
}

TEST(Control, ListsFollowCreationOrderWithNestedOnesIncluded) {
    Form form(u"F"_qs);
    ButtonPlus a(&form, u"A"_qs);
    FramePlus frame(&form, u"Frame"_qs);
    Label inner(&frame, u"Inner"_qs);
    ButtonPlus b(&form, u"B"_qs);
    EXPECT_EQ(form.Controls(), (ControlList{&a, &frame, &inner, &b}));
    EXPECT_EQ(form.ContainedControls(), (ControlList{&a, &frame, &b}));
    EXPECT_EQ(frame.ContainedControls(), (ControlList{&inner}));
    EXPECT_EQ(inner.ParentForm(), &form);
}

TEST(Control, LeavesTheListsWhenDestroyed) {
    Form form(u"F"_qs);
    auto* frame = new Frame(&form, u"Frame"_qs);
    new Label(frame, u"Inner"_qs);
    ButtonPlus last(&form, u"Last"_qs);
    delete frame;
    EXPECT_EQ(form.Controls(), (ControlList{&last}));
    EXPECT_EQ(form.ContainedControls(), (ControlList{&last}));
}

TEST(Control, OwnedControlsMayDieWithTheirForm) {
    auto* form = new Form(u"F"_qs);
    auto* frame = new FramePlus(form, u"Frame"_qs);
    new TextBox(frame, u"T"_qs);
    new ComboBox(form, u"C"_qs);
    delete form;
}

TEST(Control, VisibleIsTheControlsOwnFlag) {
    Form form(u"F"_qs);
    FramePlus frame(&form, u"Frame"_qs);
    Label label(&frame, u"L"_qs);
    frame.SetVisible(false);
    form.Show();
    EXPECT_TRUE(label.Visible());
    EXPECT_FALSE(label.isVisible());
    frame.SetVisible(true);
    EXPECT_TRUE(label.isVisible());
}

TEST(Control, AControlMadeOnAShownFormAppears) {
    Form form(u"F"_qs);
    form.Show();
    Label label(&form, u"L"_qs);
    Label hidden(&form, u"H"_qs);
    hidden.SetVisible(false);
    QCoreApplication::processEvents();
    EXPECT_TRUE(label.isVisible());
    EXPECT_FALSE(hidden.isVisible());
}

TEST(Control, SpokenNameFollowsTheCaptionUntilItIsGiven) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    button.SetCaption(u"Save & close"_qs);
    EXPECT_EQ(button.accessibleName(), u"Save & close"_qs);
    button.SetSpokenName(u"Save everything"_qs);
    button.SetCaption(u"Other"_qs);
    EXPECT_EQ(button.accessibleName(), u"Save everything"_qs);
}

TEST(Control, ToolTipsAreNeverMarkup) {
    Form form(u"F"_qs);
    ButtonPlus button(&form, u"B"_qs);
    button.SetToolTipText(u"<b>x</b>"_qs);
    EXPECT_EQ(button.ToolTipText(), u"<b>x</b>"_qs);
    EXPECT_TRUE(button.toolTip().contains(u"&lt;b&gt;x&lt;/b&gt;"_qs));
}

TEST(Control, FontsAreChosenByTheSystemsNames) {
    Form form(u"F"_qs);
    TextBox box(&form, u"T"_qs);
    box.SetFontName(u"Courier New"_qs, 10);
    EXPECT_TRUE(QFontInfo(box.font()).fixedPitch());
    EXPECT_EQ(box.font().pointSizeF(), 10);
}

}  // namespace
}  // namespace quarv::forms
