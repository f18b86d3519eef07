#include "localdb/engine/StatementPool.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace quarv::localdb::engine {

namespace {

class StatementPoolTest : public testing::Test {
  protected:
    StatementPoolTest() { sqlite3_open(":memory:", &handle_); }
    ~StatementPoolTest() override {
        pool_.Clear();
        sqlite3_close(handle_);
    }

    // How many statements the connection has.
    int Statements() const {
        int count = 0;
        for (auto* s = sqlite3_next_stmt(handle_, nullptr); s; s = sqlite3_next_stmt(handle_, s)) {
            ++count;
        }
        return count;
    }
    StatementPool::Entry* Add(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr);
        StatementPool::Entry* entry = pool_.Add(statement);
        if (!entry) sqlite3_finalize(statement);
        return entry;
    }

    sqlite3* handle_ = nullptr;
    StatementPool pool_;
};

}  // namespace

TEST_F(StatementPoolTest, GivesAStatementToOneAtATime) {
    StatementPool::Entry* entry = Add("SELECT ?1");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(pool_.Lend("SELECT ?1"), nullptr);
    EXPECT_EQ(Add("SELECT ?1"), nullptr);
    StatementPool::Return(*entry);
    EXPECT_EQ(pool_.Lend("SELECT ?1"), entry);
    EXPECT_EQ(pool_.Lend("SELECT ?2"), nullptr);
}

TEST_F(StatementPoolTest, AReturnedStatementHasNoValues) {
    StatementPool::Entry* entry = Add("SELECT ?1");
    sqlite3_bind_int(entry->statement, 1, 5);
    ASSERT_EQ(sqlite3_step(entry->statement), SQLITE_ROW);
    StatementPool::Return(*entry);
    EXPECT_EQ(sqlite3_stmt_busy(entry->statement), 0);
    ASSERT_EQ(sqlite3_step(entry->statement), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_type(entry->statement, 0), SQLITE_NULL);
}

TEST_F(StatementPoolTest, TheLongestUnusedGoesFirst) {
    for (size_t i = 0; i < StatementPool::Most; ++i) {
        StatementPool::Return(*Add("SELECT " + std::to_string(i)));
    }
    StatementPool::Return(*pool_.Lend("SELECT 0"));
    StatementPool::Return(*Add("SELECT 'new'"));
    EXPECT_EQ(Statements(), static_cast<int>(StatementPool::Most));
    EXPECT_NE(pool_.Lend("SELECT 0"), nullptr);
    EXPECT_EQ(pool_.Lend("SELECT 1"), nullptr);
}

TEST_F(StatementPoolTest, WhatIsLentStays) {
    StatementPool::Entry* lent = Add("SELECT 'lent'");
    for (size_t i = 0; i < 2 * StatementPool::Most; ++i) {
        StatementPool::Return(*Add("SELECT " + std::to_string(i)));
    }
    EXPECT_EQ(sqlite3_step(lent->statement), SQLITE_ROW);
    StatementPool::Return(*lent);
    EXPECT_EQ(pool_.Lend("SELECT 'lent'"), lent);
}

TEST_F(StatementPoolTest, IsBoundedInMemory) {
    std::string sql = "SELECT 0";
    for (int column = 0; column < 1500; ++column) sql += ",?1+?2";
    int most = 0;
    for (size_t i = 0; i < StatementPool::Most; ++i) {
        StatementPool::Return(*Add(sql + "," + std::to_string(i)));
        most = std::max(most, Statements());
    }
    EXPECT_LT(most, static_cast<int>(StatementPool::Most));
    EXPECT_GT(most, 0);
}

TEST_F(StatementPoolTest, ForgetsBySchema) {
    sqlite3_exec(handle_, "CREATE TABLE t(a)", nullptr, nullptr, nullptr);
    StatementPool::Return(*Add("SELECT a FROM main.t"));
    StatementPool::Return(*Add("SELECT 1"));
    pool_.Forget("main.");
    EXPECT_EQ(Statements(), 1);
    EXPECT_EQ(pool_.Lend("SELECT a FROM main.t"), nullptr);
    EXPECT_NE(pool_.Lend("SELECT 1"), nullptr);
}

TEST(StatementPool, KeepsQueriesAndChangesOfRows) {
    EXPECT_TRUE(StatementPool::Keeps("SELECT 1"));
    EXPECT_TRUE(StatementPool::Keeps("WITH w AS (SELECT 1) SELECT * FROM w"));
    EXPECT_TRUE(StatementPool::Keeps("INSERT INTO t VALUES (1)"));
    EXPECT_FALSE(StatementPool::Keeps("CREATE TABLE t(a)"));
    EXPECT_FALSE(StatementPool::Keeps("ATTACH ? AS d5"));
    EXPECT_FALSE(StatementPool::Keeps("SAVEPOINT q"));
    EXPECT_FALSE(
        StatementPool::Keeps("SELECT '" + std::string(StatementPool::LongestText, 'x') + "'"));
}

}  // namespace quarv::localdb::engine
