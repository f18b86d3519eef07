#include "db/ConnectionChoices.h"

#include <gtest/gtest.h>

#include "db/ConnectionInfo.h"

namespace quarv {
namespace {

ConnectionChoices Load(const char* connectionString) {
    ConnectionInfo model;
    model.SetConnectionString(QLatin1String(connectionString));
    return ConnectionChoices::From(model);
}

QString Build(const ConnectionChoices& choices, const char* stored = "") {
    ConnectionInfo model;
    model.SetConnectionString(QLatin1String(stored));
    choices.BuildInto(model);
    return model.ConnectionString();
}

TEST(ConnectionChoicesTest, BuiltInStringChoosesTheWindowsAccount) {
    const ConnectionChoices choices = Load(
        "Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;"
        "Integrated Security=SSPI;");
    EXPECT_EQ(choices.server, "localhost");
    EXPECT_EQ(choices.database, "mirel");
    EXPECT_TRUE(choices.useWinAccount);
    EXPECT_FALSE(choices.useSQLAccount);
    EXPECT_EQ(choices.user, "");
    EXPECT_EQ(choices.password, "");
}

TEST(ConnectionChoicesTest, SecurityWordMatchesInAnyCase) {
    EXPECT_TRUE(Load("Provider=sqloledb;Integrated Security=sSpI;").useWinAccount);
    EXPECT_FALSE(Load("Provider=sqloledb;Integrated Security=true;").useWinAccount);
    EXPECT_FALSE(Load("Provider=sqloledb;").useWinAccount);
}

TEST(ConnectionChoicesTest, UserNameChoosesTheSqlAccount) {
    const ConnectionChoices choices =
        Load("Provider=sqloledb;Data Source=srv;User Id=sa;Password=secret;");
    EXPECT_TRUE(choices.useSQLAccount);
    EXPECT_FALSE(choices.useWinAccount);
    EXPECT_EQ(choices.user, "sa");
    EXPECT_EQ(choices.password, "secret");
}

TEST(ConnectionChoicesTest, MissingDatabaseIsTheSampleAndAnEmptyOneStaysEmpty) {
    EXPECT_EQ(Load("Provider=sqloledb;Data Source=srv;").database, "mirel");
    EXPECT_EQ(Load("Provider=sqloledb;Initial Catalog=;").database, "");
}

TEST(ConnectionChoicesTest, SqlAccountWithAnEmptyPasswordPassesAndBuilds) {
    const ConnectionChoices choices{
        .server = "srv", .database = "db", .user = "sa", .useSQLAccount = true};
    EXPECT_FALSE(choices.FindMissing());
    EXPECT_EQ(Build(choices),
              "Provider=sqloledb;Data Source=srv;Initial Catalog=db;User Id=sa;Password=;");
}

TEST(ConnectionChoicesTest, WindowsAccountBuildsIntegratedSecurity) {
    EXPECT_EQ(Build({.server = "srv", .database = "db", .useWinAccount = true}),
              "Provider=sqloledb;Data Source=srv;Initial Catalog=db;Integrated Security=SSPI;");
}

TEST(ConnectionChoicesTest, EmptyDatabaseIsLeftOut) {
    EXPECT_EQ(Build({.server = "srv", .useWinAccount = true}),
              "Provider=sqloledb;Data Source=srv;Integrated Security=SSPI;");
}

TEST(ConnectionChoicesTest, DatabaseWithASemicolonIsQuoted) {
    EXPECT_EQ(Build({.server = "srv", .database = "a;Trusted=1", .useWinAccount = true}),
              "Provider=sqloledb;Data Source=srv;Initial Catalog=\"a;Trusted=1\";"
              "Integrated Security=SSPI;");
}

TEST(ConnectionChoicesTest, OtherParametersOfTheStoredStringAreDropped) {
    EXPECT_EQ(Build({.server = "new", .database = "db", .useWinAccount = true},
                    "Provider=SQLOLEDB.1;Data Source=old;Initial Catalog=x;Connect Timeout=3;"),
              "Provider=sqloledb;Data Source=new;Initial Catalog=db;Integrated Security=SSPI;");
}

TEST(ConnectionChoicesTest, StoredAccountStaysBesideTheWindowsAccount) {
    EXPECT_EQ(Build({.server = "srv", .database = "db", .user = "x", .useWinAccount = true},
                    "Provider=sqloledb;User Id=sa;Password=p;"),
              "Provider=sqloledb;Data Source=srv;Initial Catalog=db;Integrated Security=SSPI;"
              "User Id=sa;Password=p;");
}

TEST(ConnectionChoicesTest, ServerIsAskedForFirst) {
    const auto missing = ConnectionChoices{.useSQLAccount = true}.FindMissing();
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->text, "You must provide the name of the SQL Server.");
    EXPECT_EQ(missing->title, "Server name");
}

TEST(ConnectionChoicesTest, SqlAccountNeedsAUserName) {
    const auto missing = ConnectionChoices{.server = "srv", .useSQLAccount = true}.FindMissing();
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->text,
              "You must provide the name and password of an account on the SQL Server.");
    EXPECT_EQ(missing->title, "Username");
}

TEST(ConnectionChoicesTest, NoAccountAtAllPasses) {
    EXPECT_FALSE(ConnectionChoices{.server = "srv"}.FindMissing());
}

TEST(ConnectionChoicesTest, OneLetterDatabaseIsEnoughToOpen) {
    EXPECT_FALSE(ConnectionChoices{.database = "x"}.FindMissingDatabase());
    const auto missing = ConnectionChoices{}.FindMissingDatabase();
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->text,
              "You must provide the name of a database within the SQL Server you have chosen.");
    EXPECT_EQ(missing->title, "Database name");
}

}  // namespace
}  // namespace quarv
