#include "controls/TabControlHelper.h"

#include <gtest/gtest.h>

#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "platform/forms/Frame.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/TabStrip.h"
#include "support/Raised.h"

namespace quarv {
namespace {

class TabControlHelperTest : public testing::Test {
  protected:
    forms::TabStrip* AddStrip(std::initializer_list<const char*> captions) {
        auto* strip = new forms::TabStrip(&form_, QStringLiteral("Tabs"));
        strip->Move(150, 300, 6000, 4500);
        for (const char* caption : captions) strip->Tabs().Add(QLatin1String(caption));
        return strip;
    }

    template <typename FrameType = forms::FramePlus>
    FrameType* AddFrame(const char* tag) {
        auto* frame = new FrameType(&form_, QStringLiteral("Frame"));
        frame->Move(15, 30, 1500, 900);
        frame->SetCaption(QStringLiteral("Title"));
        frame->SetTag(QLatin1String(tag));
        return frame;
    }

    void SelectTab(forms::TabStrip& strip, int index) {
        strip.SetSelectedItem(strip.Tabs().Item(index));
        helper_.OnClick();
    }

    forms::Form form_{QStringLiteral("Form1")};
    TabControlHelper helper_;
};

TEST_F(TabControlHelperTest, PageFrameLosesItsLookAndFillsTheClientArea) {
    forms::TabStrip* strip = AddStrip({"General"});
    forms::FramePlus* page = AddFrame("General");
    helper_.Init(form_);
    EXPECT_EQ(page->BorderStyle(), 0);
    EXPECT_EQ(page->Caption(), "");
    EXPECT_NEAR(page->Left(), strip->ClientLeft(), 0.5);
    EXPECT_NEAR(page->Top(), strip->ClientTop(), 0.5);
    EXPECT_NEAR(page->Width(), strip->ClientWidth(), 0.5);
    EXPECT_NEAR(page->Height(), strip->ClientHeight(), 0.5);
    EXPECT_GT(page->Width(), 1500);
    EXPECT_TRUE(page->Visible());
}

TEST_F(TabControlHelperTest, PlacesAreWholeNumbers) {
    AddStrip({"General"})->Move(150.25, 300.75, 6000.5, 4500.5);
    forms::FramePlus* page = AddFrame("General");
    helper_.Init(form_);
    for (const double place : {page->Left(), page->Top(), page->Width(), page->Height()})
        EXPECT_EQ(place, static_cast<double>(static_cast<int>(place)));
}

TEST_F(TabControlHelperTest, FrameWithoutATagKeepsLookAndPlace) {
    AddStrip({"General"});
    forms::FramePlus* group = AddFrame("");
    group->SetVisible(false);
    helper_.Init(form_);
    EXPECT_FALSE(group->Visible());
    group->SetVisible(true);
    helper_.OnClick();
    EXPECT_EQ(group->BorderStyle(), 1);
    EXPECT_EQ(group->Caption(), "Title");
    EXPECT_EQ(group->Left(), 15);
    EXPECT_EQ(group->Top(), 30);
    EXPECT_EQ(group->Width(), 1500);
    EXPECT_EQ(group->Height(), 900);
    EXPECT_TRUE(group->Visible());
}

TEST_F(TabControlHelperTest, PageIsVisibleExactlyWhileItsTabIsSelected) {
    forms::TabStrip* strip = AddStrip({"General", "general", "Other"});
    forms::FramePlus* page = AddFrame("General");
    auto* other = AddFrame<forms::Frame>("Other");
    helper_.Init(form_);
    EXPECT_TRUE(page->Visible());
    EXPECT_FALSE(other->Visible());
    SelectTab(*strip, 2);
    EXPECT_FALSE(page->Visible());
    EXPECT_FALSE(other->Visible());
    SelectTab(*strip, 3);
    EXPECT_FALSE(page->Visible());
    EXPECT_TRUE(other->Visible());
    SelectTab(*strip, 1);
    EXPECT_TRUE(page->Visible());
}

TEST_F(TabControlHelperTest, FramesMayShareATabAndAStrayFrameIsNeverShown) {
    AddStrip({"General"});
    forms::FramePlus* first = AddFrame("General");
    forms::FramePlus* second = AddFrame("General");
    forms::FramePlus* stray = AddFrame("Nowhere");
    helper_.Init(form_);
    EXPECT_TRUE(first->Visible());
    EXPECT_TRUE(second->Visible());
    EXPECT_FALSE(stray->Visible());
}

TEST_F(TabControlHelperTest, NarrowClientAreaLeavesTheSizeAndSetsThePlace) {
    forms::TabStrip* strip = AddStrip({"General"});
    strip->Move(450, 600, 30, 30);
    ASSERT_LE(strip->ClientWidth(), 30);
    ASSERT_LE(strip->ClientHeight(), 30);
    forms::FramePlus* page = AddFrame("General");
    helper_.Init(form_);
    EXPECT_EQ(page->Width(), 1500);
    EXPECT_EQ(page->Height(), 900);
    EXPECT_NE(page->Left(), 15);
    EXPECT_NE(page->Top(), 30);
}

TEST_F(TabControlHelperTest, OtherControlsAreIgnoredWhateverTheirTag) {
    AddStrip({"General", "Other"});
    auto* button = new forms::ButtonPlus(&form_, QStringLiteral("Button"));
    button->SetCaption(QStringLiteral("Press"));
    button->SetTag(QStringLiteral("Other"));
    button->Move(15, 30, 1500, 900);
    helper_.Init(form_);
    EXPECT_EQ(button->Caption(), "Press");
    EXPECT_EQ(button->Left(), 15);
    EXPECT_TRUE(button->Visible());
}

TEST_F(TabControlHelperTest, LastTabStripWins) {
    AddStrip({"First"});
    AddStrip({"Second"});
    forms::FramePlus* first = AddFrame("First");
    forms::FramePlus* second = AddFrame("Second");
    helper_.Init(form_);
    EXPECT_FALSE(first->Visible());
    EXPECT_TRUE(second->Visible());
}

TEST_F(TabControlHelperTest, FramesWithoutATabStripRaise) {
    AddFrame("General");
    EXPECT_EQ(Raised([this] { helper_.Init(form_); }), 91);
}

TEST_F(TabControlHelperTest, WithoutATabStripPagesLoseTheirLookBeforeItFails) {
    forms::FramePlus* page = AddFrame("General");
    EXPECT_EQ(Raised([this] { helper_.Init(form_); }), 91);
    EXPECT_EQ(page->BorderStyle(), 0);
    EXPECT_EQ(page->Caption(), "");
    EXPECT_EQ(page->Left(), 15);
    EXPECT_TRUE(page->Visible());
}

TEST_F(TabControlHelperTest, NeitherPagesNorATabStripRaises) {
    EXPECT_EQ(Raised([this] { helper_.Init(form_); }), 91);
}

TEST_F(TabControlHelperTest, TabStripWithoutATabRaises) {
    AddStrip({});
    AddFrame("General");
    EXPECT_EQ(Raised([this] { helper_.Init(form_); }), 91);
}

}  // namespace
}  // namespace quarv
