#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class RightsProceduresTest : public CatalogServer {
  protected:
    RightsProceduresTest() { Prepare({"create table t(b int, a int)", "create table u(c int)"}); }
};

TEST_F(RightsProceduresTest, TheOwnerMayDoAllWithATable) {
    const RecordedSet set = Query("exec sp_table_privileges 't'");
    EXPECT_EQ(set.columns,
              Texts({"TABLE_QUALIFIER nvarchar(128)", "TABLE_OWNER nvarchar(128)",
                     "TABLE_NAME nvarchar(128)", "GRANTOR nvarchar(128)", "GRANTEE nvarchar(128)",
                     "PRIVILEGE varchar(32)", "IS_GRANTABLE varchar(3)"}));
    EXPECT_EQ(set.rows, Texts({"shop|dbo|t|dbo|dbo|DELETE|YES", "shop|dbo|t|dbo|dbo|INSERT|YES",
                               "shop|dbo|t|dbo|dbo|REFERENCES|YES", "shop|dbo|t|dbo|dbo|SELECT|YES",
                               "shop|dbo|t|dbo|dbo|UPDATE|YES"}));
    EXPECT_EQ(Rows("exec sp_table_privileges '%'").size(), 10u);
    EXPECT_EQ(Rows("exec sp_table_privileges '%', @fUsePattern = 0"), Texts());
}

TEST_F(RightsProceduresTest, TheOwnerMayDoAllWithAColumn) {
    const RecordedSet set = Query("exec sp_column_privileges 't'");
    EXPECT_EQ(set.columns, Texts({"TABLE_QUALIFIER nvarchar(128)", "TABLE_OWNER nvarchar(128)",
                                  "TABLE_NAME nvarchar(128)", "COLUMN_NAME nvarchar(128)",
                                  "GRANTOR nvarchar(128)", "GRANTEE nvarchar(128)",
                                  "PRIVILEGE varchar(32)", "IS_GRANTABLE varchar(3)"}));
    ASSERT_EQ(set.rows.size(), 8u);
    EXPECT_EQ(set.rows[0], "shop|dbo|t|a|dbo|dbo|INSERT|YES");
    EXPECT_EQ(set.rows[7], "shop|dbo|t|b|dbo|dbo|UPDATE|YES");
    EXPECT_EQ(Rows("exec sp_column_privileges 't', @column_name = 'b'").size(), 4u);
    EXPECT_EQ(Rows("exec sp_column_privileges '%'"), Texts());
}

TEST_F(RightsProceduresTest, WhoShowsTheCaller) {
    const RecordedSet set = Query("exec sp_who");
    EXPECT_EQ(set.columns, Texts({"spid smallint", "ecid smallint", "status nchar(30)",
                                  "loginame nvarchar(128)", "hostname nchar(128)", "blk char(5)",
                                  "dbname nvarchar(128)", "cmd nchar(16)", "request_id int"}));
    ASSERT_EQ(set.rows.size(), 1u);
    const std::string spid = Rows("select @@spid")[0];
    EXPECT_EQ(set.rows[0].substr(0, spid.size() + 1), spid + "|");
    EXPECT_NE(set.rows[0].find("|shop|"), std::string::npos);
    EXPECT_EQ(Rows("exec sp_who '" + spid + "'").size(), 1u);
    EXPECT_EQ(Rows("exec sp_who '9999'"), Texts());
    EXPECT_EQ(Run("exec sp_who 'nobody'").messages,
              Texts({"15007 16 'nobody' is not a valid login or you do not have permission."}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
