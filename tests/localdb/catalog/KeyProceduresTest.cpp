#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class KeyProceduresTest : public CatalogServer {
  protected:
    KeyProceduresTest() {
        Prepare(
            {"create table lines(doc int not null, line int not null, sku varchar(20),"
             " constraint PK_lines primary key (line, doc))",
             "create unique index ux_sku on lines(sku desc)", "create index ix_doc on lines(doc)",
             "create table plain(id int)", "insert into lines values (1, 1, 'a'), (1, 2, 'b')"});
    }
};

TEST_F(KeyProceduresTest, PrimaryKeyColumnsComeInTheOrderOfTheKey) {
    const RecordedSet set = Query("exec sp_pkeys 'LINES'");
    EXPECT_EQ(set.columns, Texts({"TABLE_QUALIFIER nvarchar(128)", "TABLE_OWNER nvarchar(128)",
                                  "TABLE_NAME nvarchar(128)", "COLUMN_NAME nvarchar(128)",
                                  "KEY_SEQ smallint", "PK_NAME nvarchar(128)"}));
    EXPECT_EQ(set.rows, Texts({"shop|dbo|lines|line|1|PK_lines", "shop|dbo|lines|doc|2|PK_lines"}));
}

TEST_F(KeyProceduresTest, NoKeyIsAnEmptyResult) {
    EXPECT_EQ(Rows("exec sp_pkeys @table_name = 'plain', @table_owner = 'dbo'"), Texts());
    EXPECT_EQ(Rows("exec sp_pkeys 'nothing'"), Texts());
    EXPECT_EQ(Rows("exec sp_pkeys 'l%'"), Texts());
}

TEST_F(KeyProceduresTest, TableNameIsRequired) {
    EXPECT_EQ(Run("exec sp_pkeys").messages,
              Texts({"201 16 Procedure or function 'sp_pkeys' expects parameter '@table_name', "
                     "which was not supplied."}));
}

TEST_F(KeyProceduresTest, StatisticsBeginWithTheTable) {
    const RecordedSet set = Query("exec sp_statistics 'lines'");
    EXPECT_EQ(set.columns,
              Texts({"TABLE_QUALIFIER nvarchar(128)", "TABLE_OWNER nvarchar(128)",
                     "TABLE_NAME nvarchar(128)", "NON_UNIQUE smallint",
                     "INDEX_QUALIFIER nvarchar(128)", "INDEX_NAME nvarchar(128)", "TYPE smallint",
                     "SEQ_IN_INDEX smallint", "COLUMN_NAME nvarchar(128)", "COLLATION char(1)",
                     "CARDINALITY int", "PAGES int", "FILTER_CONDITION varchar(128)"}));
    EXPECT_EQ(set.rows, Texts({"shop|dbo|lines|NULL|NULL|NULL|0|NULL|NULL|NULL|NULL|NULL|NULL",
                               "shop|dbo|lines|0|lines|PK_lines|1|1|line|A|NULL|NULL|NULL",
                               "shop|dbo|lines|0|lines|PK_lines|1|2|doc|A|NULL|NULL|NULL",
                               "shop|dbo|lines|0|lines|ux_sku|3|1|sku|D|NULL|NULL|NULL",
                               "shop|dbo|lines|1|lines|ix_doc|3|1|doc|A|NULL|NULL|NULL"}));
}

TEST_F(KeyProceduresTest, StatisticsCountRowsWhereExactnessIsAsked) {
    EXPECT_EQ(Rows("exec sp_statistics 'lines', null, null, 'ux%', 'Y', 'E'"),
              Texts({"shop|dbo|lines|NULL|NULL|NULL|0|NULL|NULL|NULL|2|NULL|NULL",
                     "shop|dbo|lines|0|lines|ux_sku|3|1|sku|D|2|NULL|NULL"}));
}

TEST_F(KeyProceduresTest, StatisticsOfAnUnknownTableAreEmpty) {
    EXPECT_EQ(Rows("exec sp_statistics 'nothing'"), Texts());
}

}  // namespace
}  // namespace quarv::localdb::catalog
