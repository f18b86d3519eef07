#include "platform/forms/UserControl.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "base/UTIL.h"
#include "platform/forms/ButtonPlus.h"
#include "platform/forms/Form.h"
#include "platform/forms/FramePlus.h"
#include "platform/forms/ListView.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class Pane : public UserControl {
    Q_OBJECT

  public:
    Pane(QWidget* container, const QString& name) : UserControl(container, name) {
        frame = new FramePlus(this, u"BorderFrame"_qs);
        list = new ListView(frame, u"Detail"_qs);
        list->Move(120, 360, 3000, 2000);
    }
    FramePlus* frame = nullptr;
    ListView* list = nullptr;
    int edges = 15;
    int resizes = 0;

    void ReadProperties(const PropertyBag& bag) override {
        edges = static_cast<int>(bag.ReadProperty(u"Edges"_qs, Value(15)).ToInteger());
    }
    void WriteProperties(PropertyBag& bag) const override {
        bag.WriteProperty(u"Edges"_qs, Value(edges), Value(15));
    }
    void SetEdges(int value) {
        edges = value;
        Q_EMIT PropertyChanged(u"Edges"_qs);
    }

  protected:
    void UserControl_Resize() override {
        ++resizes;
        SizeControl(*frame, ScaleWidth(), ScaleHeight());
        SizeControl(*list, frame->Width() - 2 * list->Left(),
                    frame->Height() - (list->Top() + 120));
    }
};

class Panel : public UserControl {
    Q_OBJECT

  public:
    Panel(QWidget* container, const QString& name) : UserControl(container, name) {
        SetControlContainer(true);
    }
};

TEST(UserControl, LaysOutItsPartsWhenItsSizeChanges) {
    Form form(u"F"_qs);
    Pane pane(&form, u"Fields"_qs);
    pane.Move(0, 0, 6000.5, 4000);
    EXPECT_EQ(pane.resizes, 1);
    EXPECT_EQ(pane.frame->Width(), 6000.5);
    EXPECT_EQ(pane.list->Width(), 5760.5);
    EXPECT_EQ(pane.list->Height(), 3520);
    pane.Move(100, 100, 6000.5, 4000);
    EXPECT_EQ(pane.resizes, 1);
    form.Show();
    EXPECT_EQ(pane.resizes, 1);
}

TEST(UserControl, ShrunkToNothingItKeepsItsPartsSizes) {
    Form form(u"F"_qs);
    Pane pane(&form, u"Fields"_qs);
    pane.Move(0, 0, 6000, 4000);
    pane.Move(0, 0, 30, 30);
    EXPECT_EQ(pane.frame->Width(), 6000);
    EXPECT_EQ(pane.frame->Height(), 4000);
}

TEST(UserControl, ASizeFromOutsideIsFollowed) {
    Form form(u"F"_qs);
    Pane pane(&form, u"Fields"_qs);
    form.Show();
    pane.resize(200, 100);
    EXPECT_EQ(pane.ScaleWidth(), 3000);
    EXPECT_EQ(pane.ScaleHeight(), 1500);
    EXPECT_EQ(pane.frame->Width(), 3000);
}

TEST(UserControl, ItsPartsAreItsOwnNotTheForms) {
    Form form(u"F"_qs);
    Pane pane(&form, u"Fields"_qs);
    EXPECT_EQ(form.Controls(), (ControlList{&pane}));
    EXPECT_EQ(pane.Controls(), (ControlList{pane.frame, pane.list}));
    EXPECT_EQ(pane.ContainedControls(), (ControlList{pane.frame}));
    EXPECT_EQ(pane.TypeName(), u"Pane"_qs);
}

TEST(UserControl, APanelsControlsAreTheFormsToo) {
    Form form(u"F"_qs);
    Panel panel(&form, u"Panel"_qs);
    ButtonPlus button(&panel, u"B"_qs);
    EXPECT_EQ(form.Controls(), (ControlList{&panel, &button}));
    EXPECT_EQ(panel.ContainedControls(), (ControlList{&button}));
    EXPECT_TRUE(panel.Controls().empty());
}

TEST(UserControl, InheritsTheDesignMarkOfItsForm) {
    Form form(u"F"_qs);
    FramePlus frame(&form, u"Frame"_qs);
    Pane inner(&frame, u"Inner"_qs);
    EXPECT_TRUE(inner.UserMode());
    form.SetUserMode(false);
    EXPECT_FALSE(inner.UserMode());
}

TEST(UserControl, RunsWithoutAForm) {
    Pane pane(nullptr, u"Alone"_qs);
    EXPECT_TRUE(pane.UserMode());
}

TEST(UserControl, IsSavedToAndLoadedFromABag) {
    Pane saved(nullptr, u"A"_qs);
    saved.SetEdges(5);
    PropertyBag bag;
    saved.WriteProperties(bag);
    Pane loaded(nullptr, u"B"_qs);
    loaded.ReadProperties(bag);
    EXPECT_EQ(loaded.edges, 5);
}

TEST(UserControl, AnnouncesChangedProperties) {
    Pane pane(nullptr, u"A"_qs);
    QSignalSpy changed(&pane, &UserControl::PropertyChanged);
    pane.SetEdges(5);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toString(), u"Edges"_qs);
}

}  // namespace
}  // namespace quarv::forms

#include "UserControlTest.moc"
