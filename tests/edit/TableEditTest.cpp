#include "edit/TableEdit.h"

#include "edit/TableEditFixture.h"

namespace quarv::test {
namespace {

using ado::MemoryResult;

constexpr int ObjectNotSet = 91;
constexpr int ItemNotFound = -2146825023;  // 3265 as an HRESULT

class TableEditTest : public TableEditFixture {
  protected:
    // What is asked for a click on a table with a key: the table, its key, its indexes, its rows.
    QStringList Asked() { return script_->Schemas() + script_->Statements(); }
};

TEST_F(TableEditTest, ShowsTheRowsInOneColumnAField) {
    Show({{1, u"a", u"x"}, {2, u"b", Value::Null()}});
    EXPECT_EQ(Columns(), (QStringList{"id 1400 0", "sub 1400 0", "note 1400 0"}));
    EXPECT_EQ(Cells(), (QStringList{"1|a|x", "2|b|NULL"}));
    EXPECT_EQ(boxes_.Seen().size(), 0U);
}

TEST_F(TableEditTest, NothingIsAskedTwice) {
    Show({{1, u"a", u"x"}});
    EXPECT_EQ(script_->Statements(), QStringList{Query});
    EXPECT_EQ(script_->Schemas(), (QStringList{"20 .t", "28 dbo.t", "12 dbo.t"}));
}

TEST_F(TableEditTest, AnEmptyResultGivesColumnsWithoutRows) {
    Show({});
    EXPECT_EQ(Columns(), (QStringList{"id 1400 0", "sub 1400 0", "note 1400 0"}));
    EXPECT_EQ(Cells(), QStringList());
}

TEST_F(TableEditTest, AnotherTableReplacesColumnsRowsAndKey) {
    Show({{1, u"a", u"x"}, {2, u"b", u"y"}});
    SetTables({"u"});
    SetKey("u", {"code", "part"});
    script_->Answer("select top 100 * from [u]", MemoryResult::Rows({"code", "part"}, {{u"c", 9}}));
    pane_.Investigate("select top 100 * from [u]", "u", db_);
    EXPECT_EQ(Columns(), (QStringList{"code 1400 0", "part 1400 0"}));
    EXPECT_EQ(Cells(), QStringList{"c|9"});
    EXPECT_EQ(Row(1).PKValue(2).ToInteger(), 9);
}

TEST_F(TableEditTest, TheKeysColumnsStandInItsOrder) {
    SetKey("t", {"sub", "id"});
    Show({{7, u"O'Hara", u"x"}});
    EXPECT_EQ(Row(1).PKValue(1).Text(), "O'Hara");
    EXPECT_EQ(Row(1).PKValue(2).ToInteger(), 7);
}

TEST_F(TableEditTest, ATableWithoutAPrimaryKeyIsKeyedOnItsFirstColumn) {
    SetKey("t", {});
    script_->Answer("select top 0 * from [t]", Table({}));
    Show({{7, u"s", u"x"}, {7, u"s", u"x"}});
    EXPECT_EQ(Row(2).PKValue(1).ToInteger(), 7);
    EXPECT_EQ(Raised([this] { (void)Row(2).PKValue(2); }), 9);
    EXPECT_EQ(script_->Statements(), (QStringList{"select top 0 * from [t]", Query}));
}

TEST_F(TableEditTest, AnUnknownTableRaisesAndLeavesTheGrid) {
    Show({{1, u"a", u"x"}});
    EXPECT_EQ(Raised([this] { pane_.Investigate("q", "gone", db_); }), ItemNotFound);
    EXPECT_EQ(Cells(), QStringList{"1|a|x"});
    EXPECT_EQ(boxes_.Seen().size(), 0U);
}

TEST_F(TableEditTest, AFailingCatalogueRaises) {
    script_->AnswerSchema(ado::Schema::PrimaryKeys, "t", MemoryResult::Fails("no keys", -5));
    EXPECT_EQ(Raised([this] { Show(); }), -5);
    EXPECT_EQ(boxes_.Seen().size(), 0U);
}

TEST_F(TableEditTest, TheKeyOfNoDatabaseRaises) {
    EXPECT_EQ(Raised([this] { pane_.DeterminePrimaryKey("t"); }), ObjectNotSet);
}

TEST_F(TableEditTest, AFailingQueryIsToldAndLeavesTheGrid) {
    Show({{1, u"a", u"x"}});
    script_->Answer(Query, MemoryResult::Fails("Incorrect syntax near ')'."));
    Show();
    EXPECT_EQ(boxes_.Seen(), std::vector<SeenBox>{NoteBox("Error: Incorrect syntax near ')'.")});
    EXPECT_EQ(Cells(), QStringList{"1|a|x"});
}

TEST_F(TableEditTest, ARowThatCannotBeReadLeavesTheColumnsWithoutRows) {
    Show({{1, u"a", u"x"}});
    script_->Answer(Query, MemoryResult::Rows({"id"}, {{1}, {2}}).ThenFails("Connection is gone"));
    Show();
    EXPECT_EQ(boxes_.Seen(), std::vector<SeenBox>{NoteBox("Error: Connection is gone")});
    EXPECT_EQ(Columns(), QStringList{"id 1400 0"});
    EXPECT_EQ(Cells(), QStringList());
}

TEST_F(TableEditTest, AQueryWithoutRowsIsTold) {
    script_->Answer(Query, MemoryResult::Closed());
    Show();
    EXPECT_EQ(boxes_.Seen(),
              std::vector<SeenBox>{NoteBox("Error: Operation is not allowed when the object is "
                                           "closed.")});
}

TEST_F(TableEditTest, BarsInAnErrorAreLineBreaks) {
    script_->Answer(Query, MemoryResult::Fails("one|two"));
    Show();
    EXPECT_EQ(boxes_.Seen(), std::vector<SeenBox>{NoteBox("Error: one\r\ntwo")});
}

TEST_F(TableEditTest, BeforeAnyTableTheQuerysOwnErrorIsTold) {
    script_->Answer("select top 100 * from []", MemoryResult::Fails("A name is missing"));
    pane_.Investigate("select top 100 * from []", QString(), db_);
    EXPECT_EQ(boxes_.Seen(), std::vector<SeenBox>{NoteBox("Error: A name is missing")});
    EXPECT_EQ(script_->Schemas(), QStringList());
}

TEST_F(TableEditTest, TheNextResultsOfAQueryAreLeft) {
    script_->Answer(Query, {Table({{1, u"a", u"x"}}), MemoryResult::Fails("later")});
    Show();
    EXPECT_EQ(Cells(), QStringList{"1|a|x"});
    EXPECT_EQ(boxes_.Seen().size(), 0U);
    Show({{2, u"b", u"y"}});
    EXPECT_EQ(Cells(), QStringList{"2|b|y"});
}

TEST_F(TableEditTest, AThousandColumnsAreShown) {
    QStringList names;
    MemoryResult::Row row;
    for (int i = 1; i <= 1024; ++i) {
        names += QStringLiteral("c%1").arg(i);
        row.emplace_back(i);
    }
    SetKey("t", {"c1024"});
    script_->Answer(Query, MemoryResult::Rows(names, {row}));
    Show();
    EXPECT_EQ(Grid().State().columns->Count(), 1024);
    EXPECT_EQ(Row(1).ColumnValue(1024).ToInteger(), 1024);
    EXPECT_EQ(Row(1).PKValue(1).ToInteger(), 1024);
}

TEST_F(TableEditTest, TheGridFillsThePane) {
    EXPECT_EQ(Grid().geometry(), pane_.rect());
    pane_.SetWidth(30);
    EXPECT_EQ(Grid().Width(), 9000);
    pane_.SetWidth(31);
    EXPECT_EQ(Grid().Width(), 31);
}

}  // namespace
}  // namespace quarv::test
