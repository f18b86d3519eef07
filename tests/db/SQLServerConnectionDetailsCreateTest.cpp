// The dialog's button Create.
#include "db/SQLServerConnectionDetails.h"

#include "db/ConnectionDialogFixture.h"

namespace quarv {
namespace {

class SQLServerConnectionDetailsCreateTest : public ConnectionDialogFixture {};

TEST_F(SQLServerConnectionDetailsCreateTest, RefusesAOneLetterName) {
    Show();
    SetText("DatabaseList", "x");
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0], (test::SeenBox{"You need a valid database name!", "Note",
                                                forms::BoxIcon::Information}));
    EXPECT_TRUE(script_->Opened().isEmpty());
}

TEST_F(SQLServerConnectionDetailsCreateTest, NeedsAConnection) {
    script_->FailOpen(DataError(-2147467259, "no server"));
    Show();
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0].text,
              "Please test the connection before attempting to Create a new database!!!");
    EXPECT_EQ(watch_->Seen()[0].icon, forms::BoxIcon::None);
    EXPECT_TRUE(script_->Statements().isEmpty());
}

TEST_F(SQLServerConnectionDetailsCreateTest, RefusesAKnownNameInAnyCase) {
    Show();
    SetText("DatabaseList", "sales");
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0].text, "This database already exists!!! Create Failed");
    EXPECT_TRUE(script_->Statements().isEmpty());
}

TEST_F(SQLServerConnectionDetailsCreateTest, AsksFirst) {
    Show();
    SetText("DatabaseList", "fresh");
    watch_.emplace(forms::BoxAnswer::No);
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0],
              (test::SeenBox{"Are you sure you wish to create a database called [fresh]?",
                             "Question", forms::BoxIcon::Question}));
    EXPECT_TRUE(script_->Statements().isEmpty());
}

TEST_F(SQLServerConnectionDetailsCreateTest, SendsTheStatementAndKeepsTheName) {
    script_->Answer("CREATE DATABASE [fresh]", ado::MemoryResult::Closed());
    Show();
    SetText("DatabaseList", "fresh");
    Press("CreateDatabase");
    EXPECT_EQ(script_->Statements(), QStringList{"CREATE DATABASE [fresh]"});
    EXPECT_EQ(TextOf("DatabaseList"), "fresh");
    EXPECT_EQ(watch_->Seen().size(), 1U);
}

TEST_F(SQLServerConnectionDetailsCreateTest, FailureIsShown) {
    script_->Answer("CREATE DATABASE [fresh]", ado::MemoryResult::Fails("Permission denied."));
    Show();
    SetText("DatabaseList", "fresh");
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 2U);
    EXPECT_EQ(watch_->Seen()[1],
              (test::SeenBox{"Permission denied.", "Error -2147217900", forms::BoxIcon::Critical}));
}

}  // namespace
}  // namespace quarv
