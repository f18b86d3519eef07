#include "platform/forms/TabStrip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>

#include "base/LateBinding.h"
#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class Strip : public testing::Test {
  protected:
    Form form{u"F"_qs};
    FramePlus page{&form, u"Page"_qs};
    TabStrip strip{&form, u"Tabs"_qs};
    QTabBar* bar = strip.findChild<QTabBar*>();

    void SetUp() override { strip.Move(120, 240, 6000, 4500); }
};

TEST_F(Strip, TheFirstTabIsSelectedWithoutAClick) {
    QSignalSpy clicked(&strip, &TabStrip::Click);
    EXPECT_EQ(strip.SelectedItem(), nullptr);
    Tab& general = strip.Tabs().Add(u"General"_qs);
    strip.Tabs().Add(u"More"_qs);
    EXPECT_EQ(strip.SelectedItem(), &general);
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_EQ(strip.Tabs().Count(), 2);
    EXPECT_EQ(strip.Tabs().Item(2).Caption(), u"More"_qs);
    EXPECT_THROW(strip.Tabs().Item(0), RuntimeError);
    EXPECT_THROW(strip.Tabs().Item(3), RuntimeError);
}

TEST_F(Strip, ClickFollowsTheSelection) {
    strip.Tabs().Add(u"General"_qs);
    strip.Tabs().Add(u"More"_qs);
    QStringList seen;
    QObject::connect(&strip, &TabStrip::Click, &form,
                     [&] { seen.append(strip.SelectedItem()->Caption()); });
    form.Show();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    EXPECT_EQ(seen, (QStringList{u"More"_qs}));
}

TEST_F(Strip, ArrowsSelect) {
    strip.Tabs().Add(u"General"_qs);
    strip.Tabs().Add(u"More"_qs);
    QSignalSpy clicked(&strip, &TabStrip::Click);
    form.Show();
    QApplication::setActiveWindow(&form);
    strip.SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_EQ(strip.SelectedItem()->Caption(), u"More"_qs);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Strip, SelectingFromCodeRaisesClick) {
    strip.Tabs().Add(u"General"_qs);
    Tab& more = strip.Tabs().Add(u"More"_qs);
    QSignalSpy clicked(&strip, &TabStrip::Click);
    strip.SetSelectedItem(more);
    EXPECT_EQ(strip.SelectedItem(), &more);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Strip, RefusesATabOfAnotherStrip) {
    TabStrip other(&form, u"Other"_qs);
    Tab& foreign = other.Tabs().Add(u"X"_qs);
    strip.Tabs().Add(u"General"_qs);
    EXPECT_THROW(strip.SetSelectedItem(foreign), RuntimeError);
}

TEST_F(Strip, TheClientAreaLiesInsideTheTabsInTheFormsTwips) {
    strip.Tabs().Add(u"General"_qs);
    const double bar15 = bar->sizeHint().height() * 15.0;
    EXPECT_EQ(strip.ClientLeft(), 180);
    EXPECT_EQ(strip.ClientTop(), 300 + bar15);
    EXPECT_EQ(strip.ClientWidth(), 5880);
    EXPECT_EQ(strip.ClientHeight(), 4380 - bar15);
    EXPECT_EQ(GetByName(&strip, u"ClientLeft"_qs).ToDouble(), 180);
}

TEST_F(Strip, TheSelectedTabIsReadByName) {
    EXPECT_EQ(GetByName(&strip, u"SelectedItem"_qs).ToObject(), nullptr);
    strip.Tabs().Add(u"General"_qs);
    Tab& more = strip.Tabs().Add(u"More"_qs);
    strip.SetSelectedItem(more);
    const ObjectRef selected = GetByName(&strip, u"SelectedItem"_qs).ToObject();
    EXPECT_EQ(selected.get(), &more);
    const auto* named = dynamic_cast<QObject*>(selected.get());
    EXPECT_EQ(GetByName(named, u"Caption"_qs).Text(), u"More"_qs);
    EXPECT_EQ(GetByName(named, u"Index"_qs).ToInteger(), 2);
}

TEST_F(Strip, ATinyStripHasAnEmptyClientArea) {
    strip.Move(0, 0, 30, 30);
    EXPECT_EQ(strip.ClientWidth(), 0);
    EXPECT_EQ(strip.ClientHeight(), 0);
}

TEST_F(Strip, StandsBehindTheFramesOfItsForm) {
    strip.Tabs().Add(u"General"_qs);
    page.Move(strip.ClientLeft(), strip.ClientTop(), strip.ClientWidth(), strip.ClientHeight());
    form.Move(0, 0, 7000, 5000);
    form.Show();
    EXPECT_EQ(form.childAt(page.geometry().center()), &page);
}

TEST_F(Strip, CaptionsAreLiteral) {
    EXPECT_EQ(strip.Tabs().Add(u"A&B"_qs).Caption(), u"A&B"_qs);
    EXPECT_EQ(bar->tabText(0), u"A&&B"_qs);
}

TEST_F(Strip, ClearingLeavesNothingSelected) {
    strip.Tabs().Add(u"General"_qs);
    strip.Tabs().Clear();
    EXPECT_EQ(strip.SelectedItem(), nullptr);
    EXPECT_EQ(strip.Tabs().Count(), 0);
}

}  // namespace
}  // namespace quarv::forms
