#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class StorageProceduresTest : public CatalogServer {
  protected:
    StorageProceduresTest() {
        Prepare({"create table t(id int primary key, name varchar(100))",
                 "create index ix on t(name)", "insert into t values (1, 'a'), (2, 'b'), (3, 'c')",
                 "create view v as select id from t"});
    }

    // The number before " KB".
    static int KilobytesOf(const std::string& text) { return std::stoi(text); }
    static Texts Split(const std::string& row) {
        Texts parts(1);
        for (const char c : row) {
            if (c == '|') {
                parts.emplace_back();
            } else {
                parts.back() += c;
            }
        }
        return parts;
    }
};

TEST_F(StorageProceduresTest, RowsOfATableAreCounted) {
    const RecordedSet set = Query("exec sp_spaceused 'dbo.T'");
    EXPECT_EQ(set.columns,
              Texts({"name nvarchar(128)", "rows char(20)", "reserved varchar(18)",
                     "data varchar(18)", "index_size varchar(18)", "unused varchar(18)"}));
    ASSERT_EQ(set.rows.size(), 1u);
    const Texts values = Split(set.rows[0]);
    EXPECT_EQ(values[0], "t");
    EXPECT_EQ(values[1], "3                   ");
    EXPECT_GT(KilobytesOf(values[3]), 0);
    EXPECT_GT(KilobytesOf(values[4]), 0);
    EXPECT_EQ(KilobytesOf(values[2]), KilobytesOf(values[3]) + KilobytesOf(values[4]));
    Prepare({"delete from t where id > 1"});
    EXPECT_EQ(Split(Rows("exec sp_spaceused 't'")[0])[1], "1                   ");
}

TEST_F(StorageProceduresTest, DataGrowsWithTheRows) {
    const int before = KilobytesOf(Split(Rows("exec sp_spaceused 't'")[0])[3]);
    Prepare(
        {"declare @i int = 10 while @i < 1000 begin insert t values (@i, replicate('x', 100)) "
         "set @i = @i + 1 end"});
    EXPECT_GT(KilobytesOf(Split(Rows("exec sp_spaceused 't'")[0])[3]), before + 50);
}

TEST_F(StorageProceduresTest, OnlyTablesTakeRoom) {
    EXPECT_EQ(Run("exec sp_spaceused 'v'").messages[0].substr(0, 5), "15009");
    EXPECT_EQ(Run("exec sp_spaceused 'none'").messages[0].substr(0, 5), "15009");
}

TEST_F(StorageProceduresTest, TheDatabaseHasTwoResults) {
    const Recording recording = Run("exec sp_spaceused");
    ASSERT_EQ(recording.sets.size(), 2u);
    EXPECT_EQ(recording.sets[0].columns,
              Texts({"database_name nvarchar(128)", "database_size varchar(18)",
                     "unallocated space varchar(18)"}));
    EXPECT_EQ(Split(recording.sets[0].rows[0])[0], "shop");
    EXPECT_EQ(recording.sets[1].columns, Texts({"reserved varchar(18)", "data varchar(18)",
                                                "index_size varchar(18)", "unused varchar(18)"}));
    EXPECT_GT(KilobytesOf(Split(recording.sets[1].rows[0])[1]), 0);
}

TEST_F(StorageProceduresTest, DatabasesAreDescribed) {
    const RecordedSet all = Query("exec sp_helpdb");
    EXPECT_EQ(all.columns, Texts({"name nvarchar(128)", "db_size nvarchar(13)",
                                  "owner nvarchar(128)", "dbid smallint", "created nvarchar(11)",
                                  "status nvarchar(600)", "compatibility_level tinyint"}));
    ASSERT_EQ(all.rows.size(), 3u);
    EXPECT_EQ(Split(all.rows[0])[0], "master");
    EXPECT_EQ(Split(all.rows[1])[0], "shop");
    EXPECT_EQ(Split(all.rows[2])[0], "tempdb");
    EXPECT_EQ(Split(all.rows[1])[2], "sa");
    EXPECT_EQ(Split(all.rows[1])[3], "5");
    EXPECT_EQ(Split(all.rows[1])[1].size(), 13u);
    const Recording one = Run("exec sp_helpdb 'SHOP'");
    ASSERT_EQ(one.sets.size(), 2u);
    EXPECT_EQ(one.sets[0].rows.size(), 1u);
    EXPECT_EQ(Split(one.sets[1].rows[0])[0], "shop");
    EXPECT_EQ(Run("exec sp_helpdb 'none'").messages,
              Texts({"15010 16 The database 'none' does not exist. Supply a valid database name. "
                     "To see available databases, use sys.databases."}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
