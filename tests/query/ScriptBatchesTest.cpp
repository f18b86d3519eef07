#include "query/ScriptBatches.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "support/Raised.h"

namespace quarv {

namespace {

// The batches of lines that "|" parts, with the separator that a caller appends, each in "[" and
// "]" with its line ends as "$".
QString Parted(const QString& script) {
    StringList lines;
    if (!script.isNull())
        for (const QString& line : script.split(u'|')) lines.Add(line);
    lines.Add("GO");
    ScriptBatches batches(lines);
    QString all;
    for (int i = batches.Count(); i > 0; --i) all += u'[' + batches.Next() + u']';
    EXPECT_EQ(Raised([&] { batches.Next(); }), 9);
    return all.replace("\r\n", "$");
}

struct Case {
    const char* name;
    const char* script;
    const char* batches;
};

const Case Cases[] = {
    {"WithoutGoIsOneBatch", "select 1|select 2", "[select 1$select 2$]"},
    {"GoParts", "a|GO|b", "[a$][b$]"},
    {"LastGoLeavesAnEmptyBatch", "a|GO", "[a$][]"},
    {"TwoGoInARowLeaveAnEmptyBatch", "a|GO|GO|b", "[a$][][b$]"},
    {"FirstGoLeavesAnEmptyBatch", "GO|a", "[][a$]"},
    {"AnyLetterCase", "a|go|b|Go|c|gO|d", "[a$][b$][c$][d$]"},
    {"GotoParts", "a|GOTO done|b", "[a$][b$]"},
    {"WordThatBeginsAlikeParts", "a|goods|b", "[a$][b$]"},
    {"CommentBehindParts", "a|go -- x|b", "[a$][b$]"},
    {"CountBehindParts", "a|GO 5|b", "[a$][b$]"},
    {"BlankBehindParts", "a|GO |b", "[a$][b$]"},
    {"SemicolonBehindParts", "a|GO;|b", "[a$][b$]"},
    {"IndentedDoesNot", "a| GO|b", "[a$ GO$b$]"},
    {"TabbedDoesNot", "a|\tGO|b", "[a$\tGO$b$]"},
    {"LaterInTheLineDoesNot", "a|x GO|b", "[a$x GO$b$]"},
    {"ShorterLineDoesNot", "g|G|o|b", "[g$G$o$b$]"},
    {"OtherLettersDoNot", "OG|G0|\u0262o|\uff27\uff2f", "[OG$G0$\u0262o$\uff27\uff2f$]"},
    {"InsideACommentParts", "/*|GO|*/", "[/*$][*/$]"},
    {"BlankLinesStay", "|a||b|", "[$a$$b$$]"},
    {"OnlyBlankLine", "", "[$]"},
    {"NoLine", nullptr, "[]"},
};

class ScriptBatchesTest : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(ScriptBatchesTest, PartsLinesThatBeginWithGo) {
    EXPECT_EQ(Parted(QString::fromUtf8(GetParam().script)), QString::fromUtf8(GetParam().batches));
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptBatchesTest, testing::ValuesIn(Cases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ScriptBatches, CountsBatchesWithoutTakingThem) {
    StringList lines;
    for (const char* line : {"a", "GO", "GO", "b", "go"}) lines.Add(line);
    ScriptBatches batches(lines);
    EXPECT_EQ(batches.Count(), 3);
    EXPECT_EQ(batches.Next(), "a\r\n");
    EXPECT_EQ(batches.Count(), 3);
    EXPECT_EQ(batches.Next(), "");
    EXPECT_EQ(batches.Next(), "b\r\n");
}

TEST(ScriptBatches, LinesBehindTheLastSeparatorAreNoBatch) {
    StringList lines;
    for (const char* line : {"a", "GO", "b"}) lines.Add(line);
    ScriptBatches batches(lines);
    EXPECT_EQ(batches.Count(), 1);
    EXPECT_EQ(batches.Next(), "a\r\n");
    EXPECT_EQ(Raised([&] { batches.Next(); }), 9);
    EXPECT_EQ(Raised([&] { batches.Next(); }), 9);
}

TEST(ScriptBatches, TakesAListThatIsFull) {
    StringList lines;
    for (int i = 1; i < StringList::MaxCount; ++i) lines.Add("x");
    lines.Add("GO");
    ScriptBatches batches(lines);
    EXPECT_EQ(batches.Count(), 1);
    EXPECT_EQ(batches.Next().size(), 32756 * 3);
}

}  // namespace quarv
