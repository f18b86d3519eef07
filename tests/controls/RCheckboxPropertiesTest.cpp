#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "controls/RCheckbox.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using forms::PropertyBag;

class RCheckboxProperties : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RCheckbox box{&form, u"Check"_qs};
    QSignalSpy changed{&box, &forms::UserControl::PropertyChanged};

    QStringList Announced() const {
        QStringList names;
        for (const auto& arguments : changed) names.append(arguments.at(0).toString());
        return names;
    }
};

TEST_F(RCheckboxProperties, ANewOneIsUncheckedEnabledAndEmpty) {
    EXPECT_FALSE(box.Checked());
    EXPECT_TRUE(box.Enabled());
    EXPECT_EQ(box.Caption(), QString());
    EXPECT_EQ(box.BackColor(), 0x8000000FU);
}

TEST_F(RCheckboxProperties, EachWriterStoresAndAnnounces) {
    box.SetChecked(true);
    box.SetCaption(u"Wrap"_qs);
    box.SetEnabled(false);
    box.SetBackColor(255);
    EXPECT_EQ(Announced(),
              QStringList({u"Checked"_qs, u"Caption"_qs, u"Enabled"_qs, u"BackColor"_qs}));
    EXPECT_TRUE(box.Checked());
    EXPECT_EQ(box.Caption(), u"Wrap"_qs);
    EXPECT_FALSE(box.isEnabled());
    EXPECT_EQ(box.BackColor(), 255U);
}

TEST_F(RCheckboxProperties, TheSameStateIsAnnouncedToo) {
    box.SetChecked(false);
    EXPECT_EQ(Announced(), QStringList(u"Checked"_qs));
}

TEST_F(RCheckboxProperties, TheValueIsStoredBeforeItIsAnnounced) {
    bool seen = false;
    QObject::connect(&box, &forms::UserControl::PropertyChanged, &box,
                     [&] { seen = box.Checked(); });
    box.SetChecked(true);
    EXPECT_TRUE(seen);
}

TEST_F(RCheckboxProperties, AFailingListenerEndsItsEventOnly) {
    QObject::connect(&box, &forms::UserControl::PropertyChanged, &box,
                     [] { throw RuntimeError(RuntimeError::Overflow); });
    testing::internal::CaptureStderr();
    box.SetChecked(true);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("6: "), std::string::npos);
    EXPECT_TRUE(box.Checked());
}

TEST_F(RCheckboxProperties, AreReachedByName) {
    SetByName(&box, u"Checked"_qs, Value(true));
    SetByName(&box, u"Caption"_qs, Value(u"Wrap"));
    SetByName(&box, u"BackColor"_qs, Value(255));
    SetByName(&box, u"Enabled"_qs, Value(false));
    EXPECT_TRUE(GetByName(&box, u"Checked"_qs).ToBoolean());
    EXPECT_EQ(GetByName(&box, u"Caption"_qs).Text(), u"Wrap"_qs);
    EXPECT_EQ(GetByName(&box, u"BackColor"_qs).ToInteger(), 255);
    EXPECT_EQ(Announced(),
              QStringList({u"Checked"_qs, u"Caption"_qs, u"BackColor"_qs, u"Enabled"_qs}));
}

TEST_F(RCheckboxProperties, TheToolTipIsReadOnlyByName) {
    box.SetToolTipText(u"Wraps"_qs);
    EXPECT_EQ(GetByName(&box, u"ToolTipText"_qs).Text(), u"Wraps"_qs);
    EXPECT_EQ(Raised([&] { SetByName(&box, u"ToolTipText"_qs, Value(u"No")); }), 438);
}

TEST_F(RCheckboxProperties, AreSavedAndLoadedWithoutTheMark) {
    box.SetChecked(true);
    box.SetCaption(u"Wrap"_qs);
    box.SetEnabled(false);
    box.SetBackColor(255);
    PropertyBag bag;
    box.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 3);
    EXPECT_FALSE(bag.Contains(u"Checked"_qs));
    RCheckbox loaded(&form, u"Loaded"_qs);
    loaded.ReadProperties(bag);
    EXPECT_EQ(loaded.Caption(), u"Wrap"_qs);
    EXPECT_EQ(loaded.SpokenName(), u"Wrap"_qs);
    EXPECT_FALSE(loaded.isEnabled());
    EXPECT_EQ(loaded.BackColor(), 255U);
    EXPECT_FALSE(loaded.Checked());
}

TEST_F(RCheckboxProperties, ASavedMarkIsNeverRestored) {
    PropertyBag bag;
    bag.WriteProperty(u"Checked"_qs, Value(true));
    box.ReadProperties(bag);
    EXPECT_FALSE(box.Checked());
}

TEST_F(RCheckboxProperties, DefaultsAreNotStoredAndComeBackFromAnEmptyBag) {
    box.SetCaption(u"Wrap"_qs);
    box.SetEnabled(false);
    box.SetBackColor(255);
    PropertyBag bag;
    box.ReadProperties(bag);
    box.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 0);
    EXPECT_TRUE(box.isEnabled());
}

TEST_F(RCheckboxProperties, AColourBeyondThirtyTwoBitsIsRefused) {
    PropertyBag bag;
    bag.WriteProperty(u"BackColor"_qs, Value(4294967296));
    EXPECT_EQ(Raised([&] { box.ReadProperties(bag); }), 6);
}

}  // namespace
}  // namespace quarv
