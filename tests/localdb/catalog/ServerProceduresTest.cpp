#include "localdb/catalog/CatalogServer.h"
#include "localdb/engine/Server.h"

namespace quarv::localdb::catalog {
namespace {

using ServerProceduresTest = CatalogServer;

TEST_F(ServerProceduresTest, ServerInfoTellsTheVersionAsAttributeTwo) {
    const RecordedSet set = Query("exec sp_server_info 2");
    EXPECT_EQ(set.columns, Texts({"ATTRIBUTE_ID int", "ATTRIBUTE_NAME varchar(60)",
                                  "ATTRIBUTE_VALUE varchar(255)"}));
    EXPECT_EQ(set.rows, Texts({"2|DBMS_VER|SQL Server 2022 - 16.00.1000"}));
}

TEST_F(ServerProceduresTest, ServerInfoListsAllAttributesInOrder) {
    const Texts rows = Rows("exec sp_server_info");
    ASSERT_EQ(rows.size(), 29u);
    EXPECT_EQ(rows[2], "10|OWNER_TERM|owner");
    EXPECT_EQ(rows.back(), "500|SYS_SPROC_VERSION|16.00.1000");
}

TEST_F(ServerProceduresTest, UnknownAttributeGivesNoRow) {
    EXPECT_EQ(Rows("exec sp_server_info @attribute_id = 3"), Texts());
}

TEST_F(ServerProceduresTest, WrongArgumentsAreRefused) {
    EXPECT_EQ(Run("exec sp_server_info 1, 2").messages,
              Texts({"8144 16 Procedure or function sp_server_info has too many arguments "
                     "specified."}));
    EXPECT_EQ(Run("exec sp_server_info @attribute = 2").messages,
              Texts({"8145 16 @attribute is not a parameter for procedure sp_server_info."}));
    const Recording wrongType = Run("exec sp_server_info 'x'");
    EXPECT_EQ(wrongType.messages, Texts({"8114 16 Error converting data type varchar to int."}));
    EXPECT_EQ(wrongType.sets.size(), 0u);
}

TEST_F(ServerProceduresTest, DatabasesAreListedByNameWithTheirSize) {
    const RecordedSet set = Query("exec sp_databases");
    EXPECT_EQ(set.columns,
              Texts({"DATABASE_NAME nvarchar(128)", "DATABASE_SIZE int", "REMARKS varchar(254)"}));
    ASSERT_EQ(set.rows.size(), 2u);
    EXPECT_EQ(set.rows[0].substr(0, 7), "master|");
    EXPECT_EQ(set.rows[1].substr(0, 5), "shop|");
    EXPECT_NE(set.rows[1], "shop|0|NULL");
}

}  // namespace
}  // namespace quarv::localdb::catalog
