#include "platform/forms/LineColouring.h"

#include <gtest/gtest.h>

#include <QPlainTextDocumentLayout>
#include <QTextCursor>
#include <QTextDocument>
#include <random>

#include "CurlyScanner.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

class LineColourings : public testing::Test {
  protected:
    void SetUp() override {
        // Without a layout a document tells of no change.
        document.setDocumentLayout(new QPlainTextDocumentLayout(&document));
        document.setPlainText(u"a1\nb2\nc3\nd4\ne5\nf6"_qs);
        document.setModified(false);
        QObject::connect(
            &document, &QTextDocument::contentsChange, &document,
            [this](int position, int, int added) { colouring.Edited(position, added); });
        colouring.SetScanner(scanner);
    }
    QTextBlock Line(int number) const { return document.findBlockByNumber(number); }
    bool Reach(int number) { return colouring.Reach(Line(number)); }
    std::vector<LineSpan> Spans(int number) {
        return colouring.Spans(Line(number), Line(number).text());
    }
    void Insert(int line, int column, const QString& text) {
        QTextCursor cursor(Line(line));
        cursor.setPosition(Line(line).position() + column);
        cursor.insertText(text);
    }
    void Remove(int position, int units) {
        QTextCursor cursor(&document);
        cursor.setPosition(position);
        cursor.setPosition(position + units, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }

    std::shared_ptr<CurlyScanner> scanner = std::make_shared<CurlyScanner>();
    QTextDocument document;
    LineColouring colouring{document};
};

TEST_F(LineColourings, ScansNoMoreThanIsAskedFor) {
    EXPECT_EQ(scanner->Taken(), QStringList());
    EXPECT_TRUE(Reach(0));
    EXPECT_TRUE(Reach(1));
    EXPECT_EQ(scanner->Taken(), (QStringList{u"a1"_qs, u"b2"_qs}));
    EXPECT_FALSE(Reach(0));
    EXPECT_FALSE(Reach(1));
    EXPECT_EQ(scanner->Taken(), QStringList());
}

TEST_F(LineColourings, AJumpScansEveryLineBeforeItOnce) {
    EXPECT_TRUE(Reach(5));
    EXPECT_FALSE(Reach(2));
    EXPECT_EQ(scanner->Taken(),
              (QStringList{u"a1"_qs, u"b2"_qs, u"c3"_qs, u"d4"_qs, u"e5"_qs, u"f6"_qs}));
}

TEST_F(LineColourings, FindsWhatIsInALine) {
    Reach(0);
    EXPECT_EQ(Spans(0), (std::vector<LineSpan>{{1, 1, LineKind::Number}}));
}

TEST_F(LineColourings, AnEditScansItsLineAlone) {
    Reach(5);
    scanner->Taken();
    Insert(2, 0, u"x"_qs);
    EXPECT_TRUE(Reach(2));
    EXPECT_FALSE(Reach(3));
    EXPECT_FALSE(Reach(5));
    EXPECT_EQ(scanner->Taken(), QStringList{u"xc3"_qs});
}

TEST_F(LineColourings, AnOpenedTextReachesTheLinesBelow) {
    Reach(5);
    Insert(1, 2, u"{"_qs);
    scanner->Taken();
    EXPECT_TRUE(Reach(1));
    EXPECT_TRUE(Reach(2));
    EXPECT_EQ(scanner->Taken(), (QStringList{u"b2{"_qs, u"c3"_qs}));
    EXPECT_EQ(Spans(2),
              (std::vector<LineSpan>{{0, 1, LineKind::String}, {1, 1, LineKind::String}}));
    EXPECT_TRUE(Reach(5));
    EXPECT_EQ(Spans(5),
              (std::vector<LineSpan>{{0, 1, LineKind::String}, {1, 1, LineKind::String}}));
}

TEST_F(LineColourings, AScanStopsWhereTheStateIsAsBefore) {
    Insert(3, 2, u"}"_qs);
    Reach(5);
    Insert(1, 2, u"{"_qs);
    scanner->Taken();
    Reach(5);
    EXPECT_EQ(scanner->Taken(), (QStringList{u"b2{"_qs, u"c3"_qs, u"d4}"_qs}));
}

TEST_F(LineColourings, ALineThatTakesThePlaceOfAnotherTakesItsState) {
    document.setPlainText(u"a{\n}\n5"_qs);
    Reach(2);
    EXPECT_EQ(Spans(2), (std::vector<LineSpan>{{0, 1, LineKind::Number}}));
    // The whole line in the middle.
    Remove(3, 2);
    Reach(1);
    EXPECT_EQ(Spans(1), (std::vector<LineSpan>{{0, 1, LineKind::String}}));
    Insert(1, 0, u"}\n"_qs);
    Reach(2);
    EXPECT_EQ(Spans(2), (std::vector<LineSpan>{{0, 1, LineKind::Number}}));
}

TEST_F(LineColourings, LeavesTheDocumentAsItIs) {
    int changes = 0;
    QObject::connect(&document, &QTextDocument::contentsChange, &document, [&] { ++changes; });
    Reach(5);
    Spans(5);
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(document.isModified());
    EXPECT_FALSE(document.isUndoAvailable());
    EXPECT_TRUE(Line(0).layout()->formats().isEmpty());
}

TEST_F(LineColourings, WithoutAScannerEveryLineIsPlain) {
    Reach(5);
    colouring.SetScanner(nullptr);
    EXPECT_FALSE(Reach(5));
    EXPECT_EQ(Spans(0), std::vector<LineSpan>());
    Insert(0, 0, u"1"_qs);
    colouring.SetScanner(scanner);
    EXPECT_TRUE(Reach(5));
    EXPECT_EQ(Spans(0).size(), 2u);
}

// Every line from the start, without anything kept.
std::vector<LineSpan> FreshSpans(const QTextDocument& document, int number) {
    const CurlyScanner fresh;
    int state = LineScanner::FirstState;
    std::vector<LineSpan> spans;
    for (QTextBlock line = document.begin(); line.isValid(); line = line.next()) {
        spans.clear();
        state = fresh.Scan(line.text(), state, &spans);
        if (line.blockNumber() == number) break;
    }
    return spans;
}

TEST_F(LineColourings, AfterAnyEditsSpansAreThoseOfAFreshScan) {
    std::mt19937 random(20'240'611);
    const auto upTo = [&random](int most) { return static_cast<int>(random() % (most + 1)); };
    const QStringList pieces{u"{"_qs,   u"}"_qs,      u"\n"_qs,    u"7"_qs,   u"x\n{\n1"_qs,
                             u"}\n"_qs, u"\n\n\n"_qs, u"{{\n}"_qs, u"2 3"_qs, u"}}}"_qs};
    for (int round = 0; round < 3000; ++round) {
        const int size = document.characterCount() - 1;
        const int at = upTo(size);
        if (upTo(3) == 0)
            document.undo();
        else if (upTo(1) == 0)
            Remove(at, std::min(upTo(5), size - at));
        else
            Insert(0, at, pieces[upTo(static_cast<int>(pieces.size()) - 1)]);
        const int top = upTo(document.blockCount() - 1);
        for (int line = top; line < std::min(top + 4, document.blockCount()); ++line) {
            Reach(line);
            ASSERT_EQ(Spans(line), FreshSpans(document, line)) << round << ' ' << line;
        }
    }
}

}  // namespace
}  // namespace quarv::forms
