#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class ColumnsProceduresTest : public CatalogServer {
  protected:
    ColumnsProceduresTest() {
        Prepare(
            {"create table goods(id int identity not null primary key, name nvarchar(40) not "
             "null default N'new', price money, weight decimal(9,3), notes varchar(max), made "
             "smalldatetime, born date, ratio float, flag bit not null, code char(3))"});
    }
};

TEST_F(ColumnsProceduresTest, NineteenColumnsDescribeAColumn) {
    EXPECT_EQ(Query("exec sp_columns goods").columns,
              Texts({"TABLE_QUALIFIER nvarchar(128)", "TABLE_OWNER nvarchar(128)",
                     "TABLE_NAME nvarchar(128)", "COLUMN_NAME nvarchar(128)", "DATA_TYPE smallint",
                     "TYPE_NAME nvarchar(128)", "PRECISION int", "LENGTH int", "SCALE smallint",
                     "RADIX smallint", "NULLABLE smallint", "REMARKS varchar(254)",
                     "COLUMN_DEF nvarchar(4000)", "SQL_DATA_TYPE smallint",
                     "SQL_DATETIME_SUB smallint", "CHAR_OCTET_LENGTH int", "ORDINAL_POSITION int",
                     "IS_NULLABLE varchar(254)", "SS_DATA_TYPE tinyint"}));
}

TEST_F(ColumnsProceduresTest, EachTypeHasItsCodesAndSizes) {
    const std::string front = "shop|dbo|goods|";
    EXPECT_EQ(Rows("exec sp_columns @table_name = 'goods', @ODBCVer = 3"),
              Texts({front + "id|4|int identity|10|4|0|10|0|NULL|NULL|4|NULL|NULL|1|NO|56",
                     front + "name|-9|nvarchar|40|80|NULL|NULL|0|NULL|(N'new')|-9|NULL|80|2|NO|39",
                     front + "price|3|money|19|21|4|10|1|NULL|NULL|3|NULL|NULL|3|YES|110",
                     front + "weight|3|decimal|9|11|3|10|1|NULL|NULL|3|NULL|NULL|4|YES|106",
                     front + "notes|-1|varchar|2147483647|2147483647|NULL|NULL|1|NULL|NULL|-1|NULL|"
                             "2147483647|5|YES|39",
                     front + "made|93|smalldatetime|16|16|0|NULL|1|NULL|NULL|9|3|NULL|6|YES|111",
                     front + "born|91|date|10|6|NULL|NULL|1|NULL|NULL|9|1|NULL|7|YES|0",
                     front + "ratio|6|float|15|8|NULL|10|1|NULL|NULL|6|NULL|NULL|8|YES|109",
                     front + "flag|-7|bit|1|1|NULL|NULL|0|NULL|NULL|-7|NULL|NULL|9|NO|50",
                     front + "code|1|char|3|3|NULL|NULL|1|NULL|NULL|1|NULL|3|10|YES|39"}));
}

TEST_F(ColumnsProceduresTest, OlderClientsGetOlderCodes) {
    EXPECT_EQ(Rows("exec sp_columns 'goods', null, null, 'made'"),
              Texts({"shop|dbo|goods|made|11|smalldatetime|16|16|0|NULL|1|NULL|NULL|9|3|NULL|6|"
                     "YES|111"}));
}

TEST_F(ColumnsProceduresTest, TablesAndColumnsArePatternsAndViewsCount) {
    Prepare({"create view cheap as select id as a, name as b from goods"});
    EXPECT_EQ(Rows("exec sp_columns 'chea[pq]', 'd%', 'shop', 'b'").size(), 1u);
    EXPECT_EQ(Rows("exec sp_columns '%', 'dbo'").size(), 12u);
    EXPECT_EQ(Rows("exec sp_columns 'nothing'"), Texts());
}

TEST_F(ColumnsProceduresTest, AnotherQualifierIsRefused) {
    EXPECT_EQ(Run("exec sp_columns 'goods', null, 'other'").messages,
              Texts({"15250 16 The database name component of the object qualifier must be the "
                     "name of the current database."}));
}

TEST_F(ColumnsProceduresTest, PrimaryKeyIdentifiesARow) {
    EXPECT_EQ(Rows("exec sp_special_columns 'goods'"), Texts({"0|id|4|int identity|10|4|0|1"}));
    EXPECT_EQ(Rows("exec sp_special_columns 'goods', @col_type = 'V'"), Texts());
    EXPECT_EQ(Run("exec sp_special_columns").messages,
              Texts({"201 16 Procedure or function 'sp_special_columns' expects parameter "
                     "'@table_name', which was not supplied."}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
