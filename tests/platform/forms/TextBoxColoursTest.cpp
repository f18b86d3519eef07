// The colours of a TextBox of many lines: where they are painted, and that nothing else is painted
// otherwise for them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QTest>

#include "CurlyScanner.h"
#include "platform/forms/Form.h"
#include "platform/forms/LineColours.h"
#include "platform/forms/TextBox.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

// Finds nothing: a box with it paints its lines itself, and all plain.
class NoScanner : public LineScanner {
  public:
    int Scan(QStringView, int, std::vector<LineSpan>*) const override { return FirstState; }
};

class TextBoxColours : public testing::Test {
  protected:
    Form form{u"F"_qs};
    TextBox box{&form, u"T"_qs};
    std::shared_ptr<CurlyScanner> scanner = std::make_shared<CurlyScanner>();

    void SetUp() override {
        box.SetMultiLine(true);
        box.SetScrollBars(TextBox::Both);
        box.SetFontName(u"Courier New"_qs, 20);
        box.Move(0, 0, 6000, 4500);
        form.Show();
        QApplication::setActiveWindow(&form);
        box.SetFocus();
        QCoreApplication::processEvents();
    }
    QPlainTextEdit& Editor() { return *box.findChild<QPlainTextEdit*>(); }
    QImage Picture() {
        QCoreApplication::processEvents();
        return Editor().viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    QColor Colour(LineKind kind) {
        return LineColoursOn(Editor().palette().color(QPalette::Base))
            .ofKind[static_cast<size_t>(kind)];
    }
    // How many pixels of a line on the screen, counted from 0, have the colour and no other.
    int Pixels(int line, const QColor& colour) {
        const QImage image = Picture();
        const int height = Editor().fontMetrics().lineSpacing();
        const int top = 4 + line * height;
        int count = 0;
        for (int y = top; y < std::min(top + height - 1, image.height()); ++y)
            for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour.rgb();
        return count;
    }
    bool IsIn(int line, LineKind kind) { return Pixels(line, Colour(kind)) > 0; }
};

TEST_F(TextBoxColours, EveryPartHasTheColourOfItsKind) {
    box.SetLineScanner(scanner);
    box.SetText(u"ab 1\nab\n{ab}\nab{\nab\n}ab\n"_qs);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    EXPECT_GT(Pixels(0, Editor().palette().color(QPalette::Text)), 0);
    EXPECT_FALSE(IsIn(1, LineKind::Number));
    EXPECT_FALSE(IsIn(1, LineKind::String));
    EXPECT_TRUE(IsIn(2, LineKind::String));
    EXPECT_TRUE(IsIn(4, LineKind::String));
    EXPECT_EQ(Pixels(4, Editor().palette().color(QPalette::Text)), 0);
}

TEST_F(TextBoxColours, AreNoPartOfTheText) {
    box.SetText(u"12\u00a0{\n}"_qs);
    box.SetLineScanner(scanner);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    EXPECT_EQ(box.Text(), u"12\u00a0{\n}"_qs);
    EXPECT_FALSE(Editor().document()->isModified());
    EXPECT_FALSE(Editor().document()->isUndoAvailable());
}

TEST_F(TextBoxColours, ComeBeforeAndAfterTheKindOfBox) {
    box.SetText(u"1"_qs);
    box.SetLineScanner(scanner);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    box.SetMultiLine(false);
    box.SetMultiLine(true);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    box.SetLineScanner(nullptr);
    EXPECT_FALSE(IsIn(0, LineKind::Number));
}

TEST_F(TextBoxColours, FollowAnEditIntoTheLinesBelow) {
    box.SetLineScanner(scanner);
    box.SetText(u"a\nb\nc"_qs);
    EXPECT_FALSE(IsIn(2, LineKind::String));
    QTest::keyClicks(QApplication::focusWidget(), u"{"_qs);
    EXPECT_TRUE(IsIn(0, LineKind::String));
    EXPECT_TRUE(IsIn(2, LineKind::String));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(IsIn(2, LineKind::String));
}

// What the window itself shows, which is not asked to paint more than has changed.
TEST_F(TextBoxColours, AreRepaintedBelowTheEditedLine) {
    class Repainted : public QObject {
      public:
        QRegion region;
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
    };
    box.SetLineScanner(scanner);
    box.SetText(u"a\nb\nc"_qs);
    Picture();
    Repainted watch;
    Editor().viewport()->installEventFilter(&watch);
    QTest::keyClicks(QApplication::focusWidget(), u"{"_qs);
    // What is asked for in a paint is asked for again after it, and painted then.
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    const int height = Editor().fontMetrics().lineSpacing();
    EXPECT_TRUE(watch.region.contains(QPoint(8, 4 + 2 * height + height / 2)));
    watch.region = {};
    QTest::keyClicks(QApplication::focusWidget(), u"x"_qs);
    for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
    EXPECT_FALSE(watch.region.contains(QPoint(8, 4 + 2 * height + height / 2)));
}

TEST_F(TextBoxColours, ChangeWithThePalette) {
    box.SetLineScanner(scanner);
    box.SetText(u"1"_qs);
    const QColor light = Colour(LineKind::Number);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    QPalette dark = box.palette();
    dark.setColor(QPalette::Base, QColor(0x23, 0x26, 0x29));
    dark.setColor(QPalette::Text, QColor(0xfc, 0xfc, 0xfc));
    box.setPalette(dark);
    EXPECT_NE(Colour(LineKind::Number), light);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    EXPECT_EQ(Pixels(0, light), 0);
}

TEST_F(TextBoxColours, ADisabledBoxHasNone) {
    box.SetLineScanner(scanner);
    box.SetText(u"1"_qs);
    box.SetEnabled(false);
    EXPECT_FALSE(IsIn(0, LineKind::Number));
    box.SetEnabled(true);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
}

TEST_F(TextBoxColours, WhatIsSelectedHasTheColourForThat) {
    box.SetLineScanner(scanner);
    box.SetText(u"11 22"_qs);
    const QColor selected = Editor().palette().color(QPalette::HighlightedText);
    const int both = Pixels(0, Colour(LineKind::Number));
    box.SetSelStart(0);
    box.SetSelLength(2);
    const int one = Pixels(0, Colour(LineKind::Number));
    EXPECT_GT(one, 0);
    EXPECT_LT(one, both);
    EXPECT_GT(Pixels(0, selected), 0);
    box.SelectAll();
    EXPECT_EQ(Pixels(0, Colour(LineKind::Number)), 0);
}

TEST_F(TextBoxColours, TextBesideTabsAndOfOtherScriptsHasThemToo) {
    box.SetLineScanner(scanner);
    box.SetText(u"\t1\t1\n\u0416 1\n\U0001F600 1\n\u05d0\u05d1 1\n"_qs);
    for (int line = 0; line < 4; ++line) EXPECT_TRUE(IsIn(line, LineKind::Number)) << line;
}

TEST_F(TextBoxColours, ALineOfVeryManyPartsInOtherScriptsIsPaintedToItsEnd) {
    box.SetLineScanner(scanner);
    const auto ink = [this] {
        const QImage image = Picture();
        int count = 0;
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                count += image.pixel(x, y) != Editor().palette().color(QPalette::Base).rgb();
        return count;
    };
    box.SetText(QString(u"1\u0416"_qs).repeated(600));
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    box.SetSelStart(1200);
    EXPECT_FALSE(IsIn(0, LineKind::Number));
    const int coloured = ink();
    box.SetLineScanner(nullptr);
    EXPECT_EQ(ink(), coloured);
}

TEST_F(TextBoxColours, ALongLineStaysPlainAndItsStateCounts) {
    box.SetLineScanner(scanner);
    box.SetText(u"1"_qs + QString(20'000, u'x') + u"{\nb\n"_qs);
    EXPECT_FALSE(IsIn(0, LineKind::Number));
    EXPECT_TRUE(IsIn(1, LineKind::String));
    box.SetText(u"1"_qs + QString(19'998, u'x') + u"{\nb\n"_qs);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
}

TEST_F(TextBoxColours, TheLastOfManyLinesHasThem) {
    box.SetLineScanner(scanner);
    box.SetText(u"{"_qs + QString(u"\na"_qs).repeated(2000));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(IsIn(1, LineKind::String));
    // Once for the states, once for the parts of what is on the screen.
    EXPECT_LT(scanner->Taken().size(), 2001 + 100);
}

TEST_F(TextBoxColours, WhatIsBeingComposedIsShown) {
    box.SetLineScanner(scanner);
    box.SetText(u"1\n2"_qs);
    const QImage before = Picture();
    QInputMethodEvent compose(u"mm"_qs, {{QInputMethodEvent::Cursor, 1, 1, {}}});
    QApplication::sendEvent(QApplication::focusWidget(), &compose);
    EXPECT_GT(Pixels(0, Editor().palette().color(QPalette::Text)), 0);
    QInputMethodEvent cancel;
    QApplication::sendEvent(QApplication::focusWidget(), &cancel);
    EXPECT_TRUE(IsIn(0, LineKind::Number));
    EXPECT_EQ(box.Text(), u"1\n2"_qs);
}

// Both paintings, of a text that has all that lines may have.
class SamePicture : public TextBoxColours, public testing::WithParamInterface<int> {
  protected:
    void SetUp() override {
        TextBoxColours::SetUp();
        box.SetScrollBars(GetParam());
        box.SetText(
            u"ab\tcd 12 {a} \u0416\U0001F600\u05d0 and so on and so on\n\n  x\u00a0y\nab\t12 c\n"_qs +
            QString(u"line 7 of more than there is room for\n"_qs).repeated(20));
        Editor().setCursorWidth(3);
    }
    void Compare(const char* what) {
        box.SetLineScanner(nullptr);
        const QImage bare = Picture();
        box.SetLineScanner(std::make_shared<NoScanner>());
        EXPECT_TRUE(Picture() == bare) << what;
    }
    // Whatever the colours, ink is where it was.
    void CompareInk() {
        const QRgb paper = Editor().palette().color(QPalette::Base).rgb();
        box.SetLineScanner(nullptr);
        const QImage bare = Picture();
        box.SetLineScanner(scanner);
        const QImage coloured = Picture();
        int other = 0;
        for (int y = 0; y < bare.height(); ++y)
            for (int x = 0; x < bare.width(); ++x)
                other += (bare.pixel(x, y) == paper) != (coloured.pixel(x, y) == paper);
        EXPECT_EQ(other, 0);
        EXPECT_FALSE(coloured == bare);
    }
};

INSTANTIATE_TEST_SUITE_P(Bars, SamePicture, testing::Values(TextBox::Both, TextBox::Vertical));

TEST_P(SamePicture, WithACaretASelectionAndScrolled) {
    Compare("caret");
    box.SetSelStart(4);
    Compare("caret in the line");
    box.SetSelLength(60);
    Compare("selection");
    box.SelectAll();
    Compare("all selected");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End, Qt::ControlModifier);
    Compare("scrolled");
    box.SetLocked(true);
    Compare("locked");
}

TEST_P(SamePicture, ColoursMoveNoGlyph) {
    CompareInk();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    CompareInk();
}

}  // namespace
}  // namespace quarv::forms
