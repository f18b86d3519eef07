#include "base/UTIL.h"

#include "base/Hooks.h"
#include "base/ListControl.h"
#include "support/Raised.h"

namespace quarv {

namespace {

// Sets the program's hooks back to none after each test.
class UTIL : public testing::Test {
  protected:
    ~UTIL() override { ProgramHooks() = Hooks(); }
};

}  // namespace

class Placeable : public QObject {
    Q_OBJECT
    Q_PROPERTY(double Left MEMBER left)
    Q_PROPERTY(double Top MEMBER top)
    Q_PROPERTY(double Width MEMBER width)
    Q_PROPERTY(double Height MEMBER height)

  public:
    double left = 1;
    double top = 2;
    double width = 3;
    double height = 4;
};

TEST_F(UTIL, ListContainsIgnoresCase) {
    ListControl control;
    EXPECT_FALSE(ListContains(control, ""));
    control.entries = {"master", "Mirel"};
    EXPECT_TRUE(ListContains(control, "MIREL"));
    EXPECT_FALSE(ListContains(control, "mire"));
}

TEST_F(UTIL, SelectListEntryTakesTheFirstMatch) {
    ListControl control;
    control.entries = {"a", "b", "B"};
    SelectListEntry(control, "B");
    EXPECT_EQ(control.listIndex, 1);
    SelectListEntry(control, "c");
    EXPECT_EQ(control.listIndex, -1);
}

TEST_F(UTIL, ListHelpersNeedAListControl) {
    QObject other;
    EXPECT_EQ(Raised([&] { ListContains(other, "a"); }), 438);
    EXPECT_EQ(Raised([&] { SelectListEntry(other, "a"); }), 438);
}

TEST_F(UTIL, PlaceControlAppliesSizesAboveThirtyOnly) {
    Placeable control;
    PlaceControl(control, -5, 0, 31, 30);
    EXPECT_EQ(control.left, -5);
    EXPECT_EQ(control.top, 0);
    EXPECT_EQ(control.width, 31);
    EXPECT_EQ(control.height, 4);
    PlaceControl(control, 10.5, 20, 30, 31);
    EXPECT_EQ(control.left, 10.5);
    EXPECT_EQ(control.width, 31);
    EXPECT_EQ(control.height, 31);
}

TEST_F(UTIL, SizeControlLeavesThePlace) {
    Placeable control;
    SizeControl(control, 30.5, -100);
    EXPECT_EQ(control.left, 1);
    EXPECT_EQ(control.top, 2);
    EXPECT_EQ(control.width, 30.5);
    EXPECT_EQ(control.height, 4);
}

TEST_F(UTIL, PlacingNeedsTheProperties) {
    QObject other;
    EXPECT_EQ(Raised([&] { PlaceControl(other, 1, 2, 3, 4); }), 438);
    EXPECT_EQ(Raised([&] { SizeControl(other, 31, 0); }), 438);
    EXPECT_EQ(Raised([&] { SizeControl(other, 30, 30); }), 0);
}

TEST_F(UTIL, BoxesTurnBarsIntoLineBreaks) {
    QStringList shown;
    ProgramHooks().showNote = [&](const QString& text, const QString& title) {
        shown << text << title;
    };
    ProgramHooks().askYesNo = [&](const QString& text, const QString& title) {
        shown << text << title;
        return title == "Question";
    };
    ShowNote("a|b", "Note|title");
    EXPECT_TRUE(AskYesNo("c|d", "Question"));
    EXPECT_FALSE(AskYesNo("e", "Other"));
    EXPECT_EQ(shown, (QStringList{"a\r\nb", "Note|title", "c\r\nd", "Question", "e", "Other"}));
}

TEST_F(UTIL, WithoutHooksNothingHappens) {
    QObject form;
    ShowNote("a", "Note");
    EXPECT_FALSE(AskYesNo("a", "Question"));
    CentreOnMainMonitor(form);
}

TEST_F(UTIL, CentringPassesTheMainWindowAndStoresItBack) {
    QObject form;
    QObject first;
    QObject second;
    QObject* mainWindow = &first;
    ProgramHooks().mainWindow = [&] { return mainWindow; };
    ProgramHooks().setMainWindow = [&](QObject* window) { mainWindow = window; };
    QObject* centred = nullptr;
    QObject* owner = nullptr;
    ProgramHooks().centreForm = [&](QObject& window, QObject*& reference) {
        centred = &window;
        owner = reference;
        reference = &second;
    };
    CentreOnMainMonitor(form);
    EXPECT_EQ(centred, &form);
    EXPECT_EQ(owner, &first);
    EXPECT_EQ(mainWindow, &second);
}

TEST_F(UTIL, CentringWithoutAMainWindowPassesNone) {
    QObject form;
    QObject* owner = &form;
    ProgramHooks().centreForm = [&](QObject&, QObject*& reference) { owner = reference; };
    CentreOnMainMonitor(form);
    EXPECT_EQ(owner, nullptr);
}

}  // namespace quarv

#include "UTILTest.moc"
