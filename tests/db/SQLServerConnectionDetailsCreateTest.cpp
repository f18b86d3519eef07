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

TEST_F(SQLServerConnectionDetailsCreateTest, FailureIsShownInAPlainBox) {
    script_->Answer("CREATE DATABASE [fresh]", ado::MemoryResult::Fails("Permission denied."));
    Show();
    SetText("DatabaseList", "fresh");
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 2U);
    EXPECT_EQ(watch_->Seen()[1],
              (test::SeenBox{"Permission denied.", "Quarv", forms::BoxIcon::None}));
}

class MissingDatabaseTest : public SQLServerConnectionDetailsCreateTest,
                            public testing::WithParamInterface<int> {};

// The server refuses a login for a database that is not there, and this one is to be made.
TEST_P(MissingDatabaseTest, TheServerIsOpenedWithoutIt) {
    const QString naming =
        "Provider=sqloledb;Data Source=srv;Initial Catalog=fresh;Integrated Security=SSPI;";
    const QString plain = "Provider=sqloledb;Data Source=srv;Integrated Security=SSPI;";
    script_->FailOpenOf(naming, DataError(-2147467259, "No such database.", "42000", GetParam()));
    script_->Answer("CREATE DATABASE [fresh]", ado::MemoryResult::Closed());
    Show();
    SetText("Servername", "srv");
    SetText("DatabaseList", "fresh");
    Press("CreateDatabase");
    EXPECT_EQ(script_->Opened(), (QStringList{naming, plain}));
    EXPECT_EQ(script_->Statements(), QStringList{"CREATE DATABASE [fresh]"});
    EXPECT_EQ(TextOf("DatabaseList"), "fresh");
    // What is confirmed afterwards names the new database.
    Press("Okay");
    EXPECT_EQ(mainWindow_.opened, QStringList{naming});
}

INSTANTIATE_TEST_SUITE_P(, MissingDatabaseTest, testing::Values(4060, 911, 916));

TEST_F(SQLServerConnectionDetailsCreateTest, ADatabaseClosedToTheAccountIsNotCreatedAgain) {
    const QString naming =
        "Provider=sqloledb;Data Source=localhost;Initial Catalog=Sales;Integrated Security=SSPI;";
    script_->FailOpenOf(naming, DataError(-2147467259, "Closed to you.", "42000", 4060));
    Show();
    SetText("DatabaseList", "Sales");
    Press("CreateDatabase");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0].text, "This database already exists!!! Create Failed");
    EXPECT_TRUE(script_->Statements().isEmpty());
}

TEST_F(SQLServerConnectionDetailsCreateTest, AnyOtherRefusalIsNotTriedAgain) {
    script_->FailOpen(DataError(-2147217843, "Login failed.", "28000", 18456));
    Show();
    SetText("DatabaseList", "fresh");
    Press("CreateDatabase");
    EXPECT_EQ(script_->Opened().size(), 1);
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0].text,
              "Please test the connection before attempting to Create a new database!!!");
}

}  // namespace
}  // namespace quarv
