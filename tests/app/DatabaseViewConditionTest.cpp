// The condition box of the main window: what Enter runs, and the history behind the box.
#include "app/DatabaseViewFixture.h"

namespace quarv {
namespace {

using ado::MemoryResult;

class DatabaseViewConditionTest : public DatabaseViewFixture {
  protected:
    void ShowOrders() {
        window_.DoView(FakeDatabase::ConnStr);
        ClickNode("_tbl_Orders");
        before_ = database_.script->Statements().size();
    }
    void Enter() { QTest::keyClick(&Condition(), Qt::Key_Return); }
    // The statements since the table was shown.
    QStringList Ran() { return database_.script->Statements().sliced(before_); }
    static QStringList ListOf(const forms::ComboBox& box) {
        QStringList entries;
        for (int i = 0; i < box.ListCount(); ++i) entries += box.List(i);
        return entries;
    }
    QStringList History() { return ListOf(Condition()); }

    qsizetype before_ = 0;
};

TEST_F(DatabaseViewConditionTest, EnterRunsTheConditionAsTyped) {
    database_.script->Answer("select top 100 * from [Orders] where id > 5",
                             MemoryResult::Rows({"id", "note"}, {{9, u"z"}}));
    ShowOrders();
    TypeCondition("id > 5");
    EXPECT_EQ(Ran(), QStringList());
    Enter();
    EXPECT_EQ(Ran(), QStringList{"select top 100 * from [Orders] where id > 5"});
    EXPECT_EQ(Records(), QStringList{"9|z"});
    EXPECT_EQ(Condition().Text(), "id > 5");
    EXPECT_EQ(History(), QStringList{"id > 5"});
}

TEST_F(DatabaseViewConditionTest, BlanksAroundTheConditionStay) {
    ShowOrders();
    TypeCondition("  id > 5 ");
    Enter();
    EXPECT_EQ(Ran(), QStringList{"select top 100 * from [Orders] where   id > 5 "});
    EXPECT_EQ(History(), QStringList{"  id > 5 "});
}

TEST_F(DatabaseViewConditionTest, BlanksAloneAreNoCondition) {
    ShowOrders();
    for (const char* text : {"", "   "}) {
        TypeCondition(text);
        Enter();
    }
    EXPECT_EQ(Ran(), (QStringList{FakeDatabase::RowsOfOrders, FakeDatabase::RowsOfOrders}));
    EXPECT_EQ(History(), QStringList());
}

TEST_F(DatabaseViewConditionTest, AClickLeavesTheConditionAndDoesNotUseIt) {
    ShowOrders();
    TypeCondition("id > 5");
    ClickNode("_tbl_Orders");
    EXPECT_EQ(Ran().last(), FakeDatabase::RowsOfOrders);
    EXPECT_EQ(Condition().Text(), "id > 5");
}

TEST_F(DatabaseViewConditionTest, AFailingConditionIsToldAndKeptInTheHistory) {
    database_.script->Answer("select top 100 * from [Orders] where id >",
                             MemoryResult::Fails("Incorrect syntax near '>'."));
    ShowOrders();
    TypeCondition("id >");
    Enter();
    ASSERT_EQ(boxes_.Seen().size(), 1U);
    EXPECT_EQ(boxes_.Seen()[0].text, "Error: Incorrect syntax near '>'.");
    EXPECT_EQ(Records(), (QStringList{"1|a", "2|b"}));
    EXPECT_EQ(History(), QStringList{"id >"});
}

TEST_F(DatabaseViewConditionTest, TheBoxNeverGetsTheEnter) {
    registry_.SaveSectionString("where", "Where-1", "ID > 5");
    ShowOrders();
    database_.script->AnswerSchema(ado::Schema::Tables, "Orders", MemoryResult::Fails("gone", -5));
    TypeCondition("id > 5");
    testing::internal::CaptureStderr();
    Enter();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "-5: gone\n");
    EXPECT_EQ(Condition().Text(), "id > 5");
    EXPECT_EQ(Condition().ListIndex(), -1);
}

TEST_F(DatabaseViewConditionTest, BeforeAnyTableTheErrorIsTold) {
    database_.script->Answer("select top 100 * from []", MemoryResult::Fails("A name is missing"));
    window_.DoView(FakeDatabase::ConnStr);
    Enter();
    ASSERT_EQ(boxes_.Seen().size(), 1U);
    EXPECT_EQ(boxes_.Seen()[0].text, "Error: A name is missing");
}

TEST_F(DatabaseViewConditionTest, AProcedureLeavesTheCurrentTable) {
    ShowOrders();
    ClickNode("_sp_Plain");
    before_ = database_.script->Statements().size();
    // The box is hidden with its frame then, and no key of a person comes to it.
    int character = 13;
    Q_EMIT Condition().KeyPress(character);
    EXPECT_EQ(Ran(), QStringList{FakeDatabase::RowsOfOrders});
    EXPECT_EQ(character, 0);
}

TEST_F(DatabaseViewConditionTest, OtherKeysAreTheBoxs) {
    ShowOrders();
    TypeCondition("abc");
    QTest::keyClick(&Condition(), Qt::Key_Backspace);
    QTest::keyClick(&Condition(), Qt::Key_Tab);
    EXPECT_EQ(Condition().Text(), "ab");
    EXPECT_EQ(Ran(), QStringList());
}

TEST_F(DatabaseViewConditionTest, TheHistoryIsThereInTheNextRun) {
    ShowOrders();
    for (const char* text : {"id = 1", "id = 2", "id = 1"}) {
        TypeCondition(text);
        Enter();
    }
    EXPECT_EQ(History(), (QStringList{"id = 1", "id = 2"}));
    EXPECT_EQ(registry_.GetSectionString("where", "Where-1", {}), "id = 1");

    DatabaseView next(database_.script->Factory(), registry_);
    next.DoView(FakeDatabase::ConnStr);
    const auto* box = next.findChild<forms::ComboBox*>(QStringLiteral("TableEditCondition"));
    EXPECT_EQ(ListOf(*box), (QStringList{"id = 1", "id = 2"}));
    EXPECT_EQ(box->Text(), "");
}

TEST_F(DatabaseViewConditionTest, AnEntryOfTheHistoryIsRunByEnter) {
    registry_.SaveSectionString("where", "Where-1", "id = 2");
    ShowOrders();
    QTest::keyClick(&Condition(), Qt::Key_Down);
    EXPECT_EQ(Condition().Text(), "id = 2");
    EXPECT_EQ(Ran(), QStringList());
    Enter();
    EXPECT_EQ(Ran(), QStringList{"select top 100 * from [Orders] where id = 2"});
}

}  // namespace
}  // namespace quarv
