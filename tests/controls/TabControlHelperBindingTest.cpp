#include <gtest/gtest.h>

#include "controls/RaisedPanel.h"
#include "controls/TabControlHelper.h"
#include "platform/forms/Form.h"
#include "platform/forms/Frame.h"
#include "platform/forms/UserControl.h"
#include "support/Raised.h"

// Controls that share nothing with the platform's but the names of their types and members.
namespace quarv::stand_in {

class Page : public QObject, public Object {
    Q_OBJECT
    Q_PROPERTY(QString Caption MEMBER caption)

  public:
    QString caption;
};

class TabStrip : public forms::UserControl {
    Q_OBJECT
    Q_PROPERTY(double ClientLeft MEMBER left)
    Q_PROPERTY(double ClientTop MEMBER top)
    Q_PROPERTY(double ClientWidth MEMBER width)
    Q_PROPERTY(double ClientHeight MEMBER height)
    Q_PROPERTY(quarv::ObjectRef SelectedItem READ Selected)

  public:
    using UserControl::UserControl;
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    Page* selected = nullptr;

    ObjectRef Selected() const { return Borrow(selected); }
};

class FrameLike : public forms::UserControl {
    Q_OBJECT
    Q_PROPERTY(QString Caption MEMBER caption)
    Q_PROPERTY(int BorderStyle MEMBER border)

  public:
    FrameLike(QWidget* container, const QString& tag) : UserControl(container, u"Page"_qs) {
        Move(15, 45, 1500, 900);
        SetTag(tag);
    }
    QString caption = u"Title"_qs;
    int border = 1;
};

class Frame : public FrameLike {
    Q_OBJECT

  public:
    using FrameLike::FrameLike;
};

class FramePlus : public FrameLike {
    Q_OBJECT

  public:
    using FrameLike::FrameLike;
};

class frame : public FrameLike {
    Q_OBJECT

  public:
    using FrameLike::FrameLike;
};

class Tabstrip : public TabStrip {
    Q_OBJECT

  public:
    using TabStrip::TabStrip;
};

}  // namespace quarv::stand_in

namespace quarv {
namespace {

using stand_in::FrameLike;

class TabControlHelperBinding : public testing::Test {
  protected:
    forms::Form form{u"F"_qs};
    stand_in::TabStrip strip{&form, u"Tabs"_qs};
    stand_in::Page general;
    TabControlHelper helper;

    void SetUp() override {
        general.caption = u"General"_qs;
        strip.selected = &general;
        SetClient(60, 90, 3000, 2000);
    }
    void SetClient(double left, double top, double width, double height) {
        strip.left = left;
        strip.top = top;
        strip.width = width;
        strip.height = height;
    }
};

void ExpectPlace(const forms::Control& control, double left, double top, double width,
                 double height) {
    EXPECT_EQ(control.Left(), left);
    EXPECT_EQ(control.Top(), top);
    EXPECT_EQ(control.Width(), width);
    EXPECT_EQ(control.Height(), height);
}

void ExpectUntouched(const FrameLike& frame) {
    EXPECT_EQ(frame.caption, u"Title"_qs);
    EXPECT_EQ(frame.border, 1);
    EXPECT_TRUE(frame.Visible());
    ExpectPlace(frame, 15, 45, 1500, 900);
}

TEST_F(TabControlHelperBinding, AnyControlsWithTheNamesServe) {
    stand_in::Frame page(&form, u"General"_qs);
    stand_in::FramePlus plus(&form, u"Other"_qs);
    helper.Init(form);
    for (const FrameLike* frame :
         {static_cast<FrameLike*>(&page), static_cast<FrameLike*>(&plus)}) {
        EXPECT_EQ(frame->caption, QString());
        EXPECT_EQ(frame->border, 0);
        ExpectPlace(*frame, 60, 90, 3000, 2000);
    }
    EXPECT_TRUE(page.Visible());
    EXPECT_FALSE(plus.Visible());
}

TEST_F(TabControlHelperBinding, OtherTypesAreIgnoredWhateverTheyHave) {
    FrameLike like(&form, u"Other"_qs);
    stand_in::frame lower(&form, u"Other"_qs);
    helper.Init(form);
    ExpectUntouched(like);
    ExpectUntouched(lower);
}

TEST_F(TabControlHelperBinding, ATabStripsTypeIsNamedLetterForLetter) {
    forms::Form other(u"G"_qs);
    stand_in::Tabstrip near(&other, u"Tabs"_qs);
    near.selected = &general;
    EXPECT_EQ(Raised([&] { helper.Init(other); }), 91);
}

TEST_F(TabControlHelperBinding, TheClientAreaIsRoundedHalvesToEven) {
    stand_in::Frame page(&form, u"General"_qs);
    SetClient(150.5, 151.5, 3000.5, 2001.5);
    helper.Init(form);
    ExpectPlace(page, 150, 152, 3000, 2002);
}

TEST_F(TabControlHelperBinding, ThePlaceMayLieBelowZero) {
    stand_in::Frame page(&form, u"General"_qs);
    SetClient(-0.75, -1.5, 3000.49, 2000.51);
    helper.Init(form);
    ExpectPlace(page, -1, -2, 3000, 2001);
}

TEST_F(TabControlHelperBinding, ThirtyUnitsOrLessLeaveTheSize) {
    struct Row {
        double width, height;
        double newWidth, newHeight;
    };
    constexpr Row Rows[] = {
        {30, 31, 1500, 31},       // each by itself
        {31, 30, 31, 900},        // and the other way round
        {30.5, 30.5, 1500, 900},  // rounded first
        {30.51, 30.51, 31, 31},  {0, 0, 1500, 900}, {-500, -500, 1500, 900},
    };
    for (const Row& row : Rows) {
        stand_in::Frame page(&form, u"General"_qs);
        SetClient(60, 90, row.width, row.height);
        TabControlHelper().Init(form);
        ExpectPlace(page, 60, 90, row.newWidth, row.newHeight);
    }
}

TEST_F(TabControlHelperBinding, WithoutASelectedTabThePagesAreLaidOutAndTheirVisibilityIsKept) {
    stand_in::Frame page(&form, u"General"_qs);
    stand_in::Frame hidden(&form, u"Other"_qs);
    hidden.SetVisible(false);
    strip.selected = nullptr;
    EXPECT_EQ(Raised([&] { helper.Init(form); }), 91);
    ExpectPlace(page, 60, 90, 3000, 2000);
    EXPECT_TRUE(page.Visible());
    EXPECT_FALSE(hidden.Visible());
    EXPECT_EQ(Raised([&] { helper.OnClick(); }), 91);
}

TEST_F(TabControlHelperBinding, ANewCaptionOfTheSelectedTabCountsAtTheNextClick) {
    stand_in::Frame page(&form, u"General"_qs);
    helper.Init(form);
    general.caption = u"general"_qs;
    EXPECT_TRUE(page.Visible());
    helper.OnClick();
    EXPECT_FALSE(page.Visible());
}

TEST_F(TabControlHelperBinding, TheFormsListSaysWhichStripIsTheLast) {
    RaisedPanel panel(&form, u"Panel"_qs);
    stand_in::TabStrip last(&panel, u"Last"_qs);
    stand_in::Page other;
    other.caption = u"Other"_qs;
    last.selected = &other;
    last.width = 4000;
    stand_in::Frame page(&panel, u"Other"_qs);
    helper.Init(form);
    EXPECT_TRUE(page.Visible());
    EXPECT_EQ(page.Width(), 4000);
}

TEST_F(TabControlHelperBinding, AStripThatWentIsNoStrip) {
    forms::Form other(u"G"_qs);
    auto gone = std::make_unique<stand_in::TabStrip>(&other, u"Tabs"_qs);
    gone->selected = &general;
    helper.Init(other);
    gone.reset();
    EXPECT_EQ(Raised([&] { helper.OnClick(); }), 91);
}

}  // namespace
}  // namespace quarv

#include "TabControlHelperBindingTest.moc"
