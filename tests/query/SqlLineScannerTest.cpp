#include "query/SqlLineScanner.h"

#include <gtest/gtest.h>

#include <QString>
#include <random>

#include "support/TextPrinter.h"

namespace quarv {
namespace {

using forms::LineKind;
using forms::LineSpan;

struct Scanned {
    QString marks;  // a letter for each unit: k, s, c, n, or a dot for what is plain
    int state;
};

Scanned Scan(const QString& line, int state = SqlLineScanner::InNothing) {
    std::vector<LineSpan> spans;
    const int end = SqlLineScanner().Scan(line, state, &spans);
    QString marks(line.size(), u'.');
    for (const LineSpan& span : spans)
        for (int i = span.start; i < span.start + span.length; ++i)
            marks[i] = u".kscn"_qs.at(static_cast<int>(span.kind));
    return {marks, end};
}

struct Row {
    const char* line;
    const char* marks;
};

class SqlLines : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Lines, SqlLines,
    testing::Values(
        // words
        Row{"", ""}, Row{"   ", "..."}, Row{"select a from t", "kkkkkk...kkkk.."},
        Row{"SELECT*FROM[t]", "kkkkkk.kkkk..."},
        Row{"selecta @select #from _in", "........................."},
        Row{"in1 a$in in", ".........kk"}, Row{"t.order, dbo . date", "..................."},
        Row{"x.y order", "....kkkkk"}, Row{"1.from", "nnkkkk"}, Row{"$action $in", "..........."},
        // texts
        Row{"'a'", "sss"}, Row{"'a''b'", "ssssss"}, Row{"''", "ss"}, Row{"''''", "ssss"},
        Row{"N'x' n'y'", "ssss.ssss"}, Row{"an'x'", "..sss"}, Row{"in'x'", "kksss"},
        Row{"'--' '/*'", "ssss.ssss"}, Row{"'select' in", "ssssssss.kk"},
        // names in quotes
        Row{"\"in\" [in] in", "..........kk"}, Row{"\"a\"\"'in\" in", ".........kk"},
        Row{"[a]]'in] in", ".........kk"}, Row{"[']", "..."}, Row{"] in", "..kk"},
        // comments
        Row{"a--b 'in", ".ccccccc"}, Row{"a- -b", "....."}, Row{"a/*b*/c", ".ccccc."},
        Row{"/*/* */ in */ in", "ccccccccccccc.kk"}, Row{"/*--*/in", "cccccckk"},
        Row{"--/*", "cccc"}, Row{"/*/", "ccc"}, Row{"*/in", "..kk"},
        // numbers
        Row{"1 1.5 .5 5. 1e10 1E+5 1.5e-3", "n.nnn.nn.nn.nnnn.nnnn.nnnnnn"},
        Row{"0xAB 0Xf 0x", "nnnn.nnn.nn"}, Row{"0xAG", "nnn."},
        Row{"$1.5 $.5 $ -$2", "nnnn.nnn....nn"}, Row{"a1 @p1 #t1 a.b1", "..............."},
        Row{"1e 1e+ 1ea", "n..n...n.."}, Row{"1.2.3", "nnnnn"}, Row{"(1,2)", ".n.n."},
        Row{"1in", "nkk"},
        // GO
        Row{"go", "kk"}, Row{"GO  ", "kk.."}, Row{" go", "..."}, Row{"go 5", "...n"},
        Row{"goto x", "kkkk.."}, Row{"go--", "..cc"}, Row{"a.go", "...."}));

TEST_P(SqlLines, AreMarked) {
    const QString line = QString::fromLatin1(GetParam().line);
    EXPECT_EQ(Scan(line).marks, QString::fromLatin1(GetParam().marks)) << GetParam().line;
}

TEST(SqlLineScanner, TextsGoOnInTheNextLine) {
    const Scanned first = Scan(u"x 'in"_qs);
    EXPECT_EQ(first.marks, u"..sss"_qs);
    EXPECT_EQ(first.state, SqlLineScanner::InText);
    const Scanned second = Scan(u"in '' in"_qs, first.state);
    EXPECT_EQ(second.marks, u"ssssssss"_qs);
    EXPECT_EQ(second.state, SqlLineScanner::InText);
    const Scanned last = Scan(u"' in"_qs, second.state);
    EXPECT_EQ(last.marks, u"s.kk"_qs);
    EXPECT_EQ(last.state, SqlLineScanner::InNothing);
}

TEST(SqlLineScanner, ACloserAtALinesEndIsNotDoubledByTheNextLine) {
    EXPECT_EQ(Scan(u"'a'"_qs).state, SqlLineScanner::InNothing);
    EXPECT_EQ(Scan(u"'b"_qs).marks, u"ss"_qs);
}

TEST(SqlLineScanner, NamesInQuotesGoOnInTheNextLine) {
    EXPECT_EQ(Scan(u"[in"_qs).state, SqlLineScanner::InBrackets);
    EXPECT_EQ(Scan(u"in ]] in] in"_qs, SqlLineScanner::InBrackets).marks, u"..........kk"_qs);
    EXPECT_EQ(Scan(u"\"in"_qs).state, SqlLineScanner::InQuotes);
    EXPECT_EQ(Scan(u"' in\" in"_qs, SqlLineScanner::InQuotes).marks, u"......kk"_qs);
}

TEST(SqlLineScanner, CommentsNestOverLines) {
    const Scanned first = Scan(u"/* /*"_qs);
    EXPECT_EQ(first.state, SqlLineScanner::InComment + 1);
    const Scanned second = Scan(u"a */ in"_qs, first.state);
    EXPECT_EQ(second.marks, u"ccccccc"_qs);
    EXPECT_EQ(second.state, SqlLineScanner::InComment);
    const Scanned last = Scan(u"*/ in"_qs, second.state);
    EXPECT_EQ(last.marks, u"cc.kk"_qs);
    EXPECT_EQ(last.state, SqlLineScanner::InNothing);
}

TEST(SqlLineScanner, ALineCommentEndsWithItsLine) {
    EXPECT_EQ(Scan(u"-- ' /* ["_qs).state, SqlLineScanner::InNothing);
}

TEST(SqlLineScanner, EmptyLinesKeepWhatIsOpen) {
    for (int state = 0; state < 8; ++state) EXPECT_EQ(Scan({}, state).state, state);
}

TEST(SqlLineScanner, GoInsideATextPartsNothing) {
    EXPECT_EQ(Scan(u"go"_qs, SqlLineScanner::InText).marks, u"ss"_qs);
    EXPECT_EQ(Scan(u"go"_qs, SqlLineScanner::InBrackets).marks, u".."_qs);
}

TEST(SqlLineScanner, TheDepthOfCommentsHasAnEnd) {
    const int deepest = SqlLineScanner::InComment + SqlLineScanner::DeepestComment - 1;
    const QString opened = QString(u"/*"_qs).repeated(SqlLineScanner::DeepestComment + 5);
    EXPECT_EQ(Scan(opened).state, deepest);
    EXPECT_EQ(Scan(u"/*"_qs, deepest).state, deepest);
    EXPECT_EQ(Scan(u"*/"_qs, deepest).state, deepest - 1);
}

TEST(SqlLineScanner, StatesThatNoLineEndsInAreTaken) {
    EXPECT_EQ(Scan(u"in"_qs, -1).marks, u"kk"_qs);
    EXPECT_EQ(Scan(u"in"_qs, 2'147'483'647).marks, u"cc"_qs);
}

TEST(SqlLineScanner, LettersOfAllScriptsBelongToNames) {
    EXPECT_EQ(Scan(u"\u00e4in in\u0416 \u4e2din in"_qs).marks, u"............kk"_qs);
    EXPECT_EQ(Scan(u"\U0001F600in in"_qs).marks, u".....kk"_qs);
    EXPECT_EQ(Scan(u"\u00a0in\u2028in"_qs).marks, u".kk.kk"_qs);
    EXPECT_EQ(Scan(QString(QChar(0xDC00)) + u"in in"_qs).marks, u"....kk"_qs);
}

// Whatever the line, and in whatever state it begins.
TEST(SqlLineScanner, SpansAreInOrderInTheLineAndTheStateNeedsThemNot) {
    std::mt19937 random(7);
    const QString likely = u"'\"[]/*-.$0x1eEnN go\t_@#\u00e9"_qs;
    const SqlLineScanner scanner;
    for (int round = 0; round < 20'000; ++round) {
        QString line;
        for (int length = static_cast<int>(random() % 24); length > 0; --length)
            line += random() % 8 == 0 ? QChar(static_cast<char16_t>(random() % 0x10000))
                                      : likely.at(static_cast<qsizetype>(random() % 24));
        // Without room behind it, for a tool that watches reads.
        const auto exact = std::make_unique<char16_t[]>(static_cast<size_t>(line.size()));
        std::copy_n(line.utf16(), line.size(), reinterpret_cast<ushort*>(exact.get()));
        const QStringView view(exact.get(), line.size());
        const int state = static_cast<int>(random() % 7);
        std::vector<LineSpan> spans;
        const int end = scanner.Scan(view, state, &spans);
        ASSERT_GE(end, 0);
        ASSERT_EQ(scanner.Scan(view, state, nullptr), end);
        int from = 0;
        for (const LineSpan& span : spans) {
            ASSERT_GE(span.start, from);
            ASSERT_GT(span.length, 0);
            ASSERT_NE(span.kind, LineKind::Plain);
            from = span.start + span.length;
        }
        ASSERT_LE(from, line.size());
    }
}

}  // namespace
}  // namespace quarv
