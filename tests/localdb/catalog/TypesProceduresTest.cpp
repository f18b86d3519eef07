#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

using TypesProceduresTest = CatalogServer;

TEST_F(TypesProceduresTest, TypesComeInTheOrderOfTheirCodes) {
    const RecordedSet set = Query("exec sp_datatype_info_100 0, 3");
    EXPECT_EQ(set.columns.size(), 20u);
    EXPECT_EQ(set.columns.front(), "TYPE_NAME nvarchar(128)");
    EXPECT_EQ(set.columns[1], "DATA_TYPE smallint");
    EXPECT_EQ(set.columns.back(), "USERTYPE smallint");
    ASSERT_EQ(set.rows.size(), 33u);
    EXPECT_EQ(set.rows[3],
              "uniqueidentifier|-11|36|'|'|NULL|1|0|2|NULL|0|NULL|uniqueidentifier|NULL|NULL|-11|"
              "NULL|NULL|NULL|0");
    EXPECT_EQ(set.rows[5],
              "nvarchar|-9|4000|N'|'|max length|1|0|3|NULL|0|NULL|nvarchar|NULL|NULL|-9|NULL|NULL|"
              "NULL|0");
    EXPECT_EQ(set.rows.back().substr(0, 12), "datetime2|93");
}

TEST_F(TypesProceduresTest, OneCodeGivesItsTypes) {
    EXPECT_EQ(Rows("sp_datatype_info 4"),
              Texts({"int|4|10|NULL|NULL|NULL|1|0|2|0|0|0|int|0|0|4|NULL|10|NULL|0",
                     "int identity|4|10|NULL|NULL|NULL|0|0|2|0|0|1|int identity|0|0|4|NULL|10|"
                     "NULL|0"}));
    EXPECT_EQ(Rows("sp_datatype_info 3").size(), 3u);
    EXPECT_EQ(Rows("sp_datatype_info 11").size(), 2u);
    EXPECT_EQ(Rows("sp_datatype_info 93").size(), 0u);
    EXPECT_EQ(Rows("sp_datatype_info 93, 3").size(), 3u);
}

}  // namespace
}  // namespace quarv::localdb::catalog
