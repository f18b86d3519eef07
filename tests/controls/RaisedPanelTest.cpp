#include "controls/RaisedPanel.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QSignalSpy>
#include <limits>

#include "base/LateBinding.h"
#include "base/RObjectList.h"
#include "base/RuntimeError.h"
#include "controls/RCheckbox.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using forms::PropertyBag;

class RaisedPanelTest : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    RaisedPanel panel{&form, u"Panel"_qs};
    QSignalSpy changed{&panel, &forms::UserControl::PropertyChanged};

    QStringList Announced() const {
        QStringList names;
        for (const auto& arguments : changed) names.append(arguments.at(0).toString());
        return names;
    }

    bool Named(const QString& name) { return GetByName(&panel, name).ToBoolean(); }
};

TEST_F(RaisedPanelTest, ANewOneIsRaisedOnAllSides) {
    EXPECT_EQ(panel.TypeName(), u"RaisedPanel"_qs);
    EXPECT_EQ(panel.Edges(), 15);
    EXPECT_EQ(panel.Style(), 0);
    EXPECT_TRUE(panel.LeftEdge());
    EXPECT_TRUE(panel.TopEdge());
    EXPECT_TRUE(panel.rightedge());
    EXPECT_TRUE(panel.BottomEdge());
}

TEST_F(RaisedPanelTest, ASideIsClearedAndSetAlone) {
    panel.SetTopEdge(false);
    EXPECT_EQ(panel.Edges(), 13);
    panel.SetLeftEdge(false);
    EXPECT_EQ(panel.Edges(), 12);
    panel.SetBottomEdge(false);
    EXPECT_EQ(panel.Edges(), 4);
    panel.Setrightedge(false);
    EXPECT_EQ(panel.Edges(), 0);
    panel.SetTopEdge(true);
    EXPECT_EQ(panel.Edges(), 2);
    panel.SetLeftEdge(true);
    EXPECT_EQ(panel.Edges(), 3);
    panel.SetBottomEdge(true);
    EXPECT_EQ(panel.Edges(), 11);
    panel.Setrightedge(true);
    EXPECT_EQ(panel.Edges(), 15);
}

TEST_F(RaisedPanelTest, ASideKeepsTheBitsThatNameNoSide) {
    panel.SetEdges(256 + 2);
    panel.SetTopEdge(false);
    panel.Setrightedge(true);
    EXPECT_EQ(panel.Edges(), 260);
}

TEST_F(RaisedPanelTest, AnyStyleIsKept) {
    panel.SetStyle(3);
    EXPECT_EQ(panel.Style(), 3);
    panel.SetStyle(-2147483647 - 1);
    EXPECT_EQ(panel.Style(), std::numeric_limits<qint32>::min());
}

TEST_F(RaisedPanelTest, EachWriterAnnouncesWhatIsStored) {
    panel.SetTopEdge(false);
    panel.SetStyle(2);
    panel.SetStyle(2);
    panel.SetEdges(3);
    EXPECT_EQ(Announced(), QStringList({u"Edges"_qs, u"Style"_qs, u"Style"_qs, u"Edges"_qs}));
}

TEST_F(RaisedPanelTest, AFailingListenerEndsItsEventOnly) {
    QObject::connect(&panel, &forms::UserControl::PropertyChanged, &panel,
                     [] { throw RuntimeError(RuntimeError::Overflow); });
    testing::internal::CaptureStderr();
    panel.SetStyle(1);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("6: "), std::string::npos);
    EXPECT_EQ(panel.Style(), 1);
}

TEST_F(RaisedPanelTest, MembersAreReachedByName) {
    for (const char16_t* side : {u"LeftEdge", u"TopEdge", u"rightedge", u"BottomEdge"}) {
        const QString name = QString::fromUtf16(side);
        EXPECT_TRUE(Named(name));
        SetByName(&panel, name, Value(false));
        EXPECT_FALSE(Named(name));
    }
    EXPECT_EQ(GetByName(&panel, u"Edges"_qs).ToInteger(), 0);
    SetByName(&panel, u"Edges"_qs, Value(9));
    SetByName(&panel, u"Style"_qs, Value(3));
    EXPECT_EQ(panel.Edges(), 9);
    EXPECT_EQ(GetByName(&panel, u"Style"_qs).ToInteger(), 3);
    EXPECT_EQ(Raised([&] { GetByName(&panel, u"RightEdge"_qs); }), 438);
    EXPECT_EQ(Raised([&] { SetByName(&panel, u"ScaleWidth"_qs, Value(1)); }), 438);
    EXPECT_EQ(Raised([&] { SetByName(&panel, u"Style"_qs, Value(2147483648)); }), 6);
}

TEST_F(RaisedPanelTest, MethodsAreReachedByName) {
    panel.Move(0, 0, 3000, 1500);
    forms::ButtonPlus child(&panel, u"B"_qs);
    child.Move(0, 0, 600, 300);
    CallByName(&panel, u"CentreContainedVertically"_qs);
    CallByName(&panel, u"CentreContainedHorizontally"_qs);
    CallByName(&panel, u"SetContainedEnabled"_qs, {Value(false)});
    CallByName(&panel, u"Refresh"_qs);
    EXPECT_EQ(child.Top(), 600);
    EXPECT_EQ(child.Left(), 1200);
    EXPECT_FALSE(child.Enabled());
}

TEST_F(RaisedPanelTest, EdgesAndStyleAreSavedAndLoaded) {
    panel.SetEdges(5);
    panel.SetStyle(2);
    PropertyBag bag;
    panel.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 2);
    EXPECT_EQ(bag.ReadProperty(u"Edges"_qs).ToInteger(), 5);
    EXPECT_EQ(bag.ReadProperty(u"Style"_qs).ToInteger(), 2);
    RaisedPanel loaded(&form, u"Loaded"_qs);
    loaded.ReadProperties(bag);
    EXPECT_EQ(loaded.Edges(), 5);
    EXPECT_EQ(loaded.Style(), 2);
}

TEST_F(RaisedPanelTest, DefaultsAreNotStoredAndComeBackFromAnEmptyBag) {
    PropertyBag bag;
    panel.WriteProperties(bag);
    EXPECT_EQ(bag.Count(), 0);
    panel.SetEdges(5);
    panel.SetStyle(2);
    panel.ReadProperties(bag);
    EXPECT_EQ(panel.Edges(), 15);
    EXPECT_EQ(panel.Style(), 0);
}

TEST_F(RaisedPanelTest, AStoredNumberBeyondThirtyTwoBitsIsRefusedAndChangesNothing) {
    for (const char16_t* name : {u"Edges", u"Style"}) {
        PropertyBag bag;
        bag.WriteProperty(u"Edges"_qs, Value(3), Value(15));
        bag.WriteProperty(u"Style"_qs, Value(1), Value(0));
        bag.WriteProperty(QString::fromUtf16(name), Value(2147483648), Value(0));
        EXPECT_EQ(Raised([&] { panel.ReadProperties(bag); }), 6);
        bag.WriteProperty(QString::fromUtf16(name), Value(-2147483649), Value(0));
        EXPECT_EQ(Raised([&] { panel.ReadProperties(bag); }), 6);
        EXPECT_EQ(panel.Edges(), 15);
        EXPECT_EQ(panel.Style(), 0);
    }
}

TEST_F(RaisedPanelTest, TheInnerWidthIsInWholePixelsHalvesToEven) {
    struct Row {
        double twips, pixels;
    };
    constexpr Row Rows[] = {{1500, 100},   {1507.5, 100}, {1522.5, 102}, {1507.4, 100},
                            {1507.6, 101}, {7.5, 0},      {0, 0}};
    for (const Row& row : Rows) {
        panel.SetWidth(row.twips);
        EXPECT_EQ(panel.ScaleWidth(), row.pixels) << row.twips;
        EXPECT_EQ(GetByName(&panel, u"ScaleWidth"_qs).ToDouble(), row.pixels) << row.twips;
    }
}

TEST_F(RaisedPanelTest, TheInnerHeightIsInPixelsAndNotRounded) {
    panel.SetHeight(1507.5);
    EXPECT_EQ(panel.ScaleHeight(), 100.5);
    EXPECT_EQ(GetByName(&panel, u"ScaleHeight"_qs).ToDouble(), 100.5);
}

TEST_F(RaisedPanelTest, ControlsOnItAreListedInTheirOrderAndAreTheFormsToo) {
    forms::FramePlus frame(&panel, u"Frame"_qs);
    forms::ButtonPlus nested(&frame, u"Nested"_qs);
    forms::ButtonPlus button(&panel, u"Button"_qs);
    EXPECT_EQ(panel.ContainedControls(), (forms::ControlList{&frame, &button}));
    EXPECT_EQ(form.Controls(), (forms::ControlList{&panel, &frame, &nested, &button}));
    const ObjectRef listed = GetByName(&panel, u"ContainedControls"_qs).ToObject();
    const auto* list = dynamic_cast<RObjectList*>(listed.get());
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->Count(), 2);
    EXPECT_EQ(list->Items(1).get(), &frame);
    EXPECT_EQ(list->Items(2).get(), &button);
}

TEST_F(RaisedPanelTest, EnablingReachesTheControlsOnItAndNotItself) {
    forms::FramePlus frame(&panel, u"Frame"_qs);
    forms::ButtonPlus nested(&frame, u"Nested"_qs);
    forms::ButtonPlus button(&panel, u"Button"_qs);
    panel.SetContainedEnabled(false);
    EXPECT_FALSE(frame.Enabled());
    EXPECT_FALSE(button.Enabled());
    EXPECT_TRUE(nested.Enabled());
    EXPECT_TRUE(panel.Enabled());
    EXPECT_TRUE(panel.isEnabled());
    panel.SetEnabled(false);
    panel.SetContainedEnabled(true);
    EXPECT_TRUE(frame.Enabled());
    EXPECT_TRUE(button.Enabled());
    EXPECT_FALSE(panel.Enabled());
}

TEST_F(RaisedPanelTest, AControlPlacedWhileOthersAreDisabledIsDisabledToo) {
    RCheckbox box(&panel, u"Check"_qs);
    std::vector<std::unique_ptr<forms::ButtonPlus>> late;
    QObject::connect(&box, &forms::UserControl::PropertyChanged, &box, [&] {
        for (int i = 0; i < 8; ++i)
            late.push_back(std::make_unique<forms::ButtonPlus>(&panel, u"Late"_qs));
    });
    panel.SetContainedEnabled(false);
    ASSERT_EQ(late.size(), 8U);
    EXPECT_FALSE(late[7]->Enabled());
}

TEST_F(RaisedPanelTest, ToAssistiveToolsItIsAPaneByItsName) {
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&panel);
    ASSERT_NE(seen, nullptr);
    EXPECT_EQ(seen->role(), QAccessible::Pane);
    EXPECT_EQ(seen->text(QAccessible::Name), u"Panel"_qs);
    EXPECT_FALSE(seen->state().focusable);
}

}  // namespace
}  // namespace quarv
