#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class InformationConstraintsTest : public CatalogServer {
  protected:
    InformationConstraintsTest() {
        Prepare(
            {"create table parent(a int not null, b int not null, c int constraint UQ_c unique, "
             "constraint PK_parent primary key (b, a))",
             "create table child(x int, y int, z int, note varchar(9), constraint FK_xy foreign "
             "key (y, x) references parent(b, a) on delete cascade on update set default, "
             "constraint FK_z foreign key (z) references parent(c), "
             "constraint CK_y check (y > 0), constraint CK_xz check (x < z and note <> 'y'))"});
    }

    // name_CATALOG, name_SCHEMA and name_NAME.
    static Texts Names(const std::string& what) {
        return {what + "_CATALOG nvarchar(128)", what + "_SCHEMA nvarchar(128)",
                what + "_NAME nvarchar(128)"};
    }
    static Texts Join(const std::vector<Texts>& parts) {
        Texts all;
        for (const Texts& part : parts) all.insert(all.end(), part.begin(), part.end());
        return all;
    }
    Texts ColumnsOf(const std::string& view) {
        return Query("select * from information_schema." + view).columns;
    }
};

TEST_F(InformationConstraintsTest, TableConstraintsListAllButDefaults) {
    Prepare({"create table d(a int default 1)"});
    EXPECT_EQ(ColumnsOf("table_constraints"),
              Join({Names("CONSTRAINT"),
                    Names("TABLE"),
                    {"CONSTRAINT_TYPE varchar(11)", "IS_DEFERRABLE varchar(2)",
                     "INITIALLY_DEFERRED varchar(2)"}}));
    EXPECT_EQ(Rows("select * from information_schema.table_constraints order by constraint_name"),
              Texts({"shop|dbo|CK_xz|shop|dbo|child|CHECK|NO|NO",
                     "shop|dbo|CK_y|shop|dbo|child|CHECK|NO|NO",
                     "shop|dbo|FK_xy|shop|dbo|child|FOREIGN KEY|NO|NO",
                     "shop|dbo|FK_z|shop|dbo|child|FOREIGN KEY|NO|NO",
                     "shop|dbo|PK_parent|shop|dbo|parent|PRIMARY KEY|NO|NO",
                     "shop|dbo|UQ_c|shop|dbo|parent|UNIQUE|NO|NO"}));
}

TEST_F(InformationConstraintsTest, KeyColumnsComeInTheOrderOfTheKey) {
    EXPECT_EQ(ColumnsOf("key_column_usage"),
              Join({Names("CONSTRAINT"),
                    Names("TABLE"),
                    {"COLUMN_NAME nvarchar(128)", "ORDINAL_POSITION int"}}));
    EXPECT_EQ(Rows("select constraint_name, table_name, column_name, ordinal_position from "
                   "information_schema.key_column_usage order by 1, 4"),
              Texts({"FK_xy|child|y|1", "FK_xy|child|x|2", "FK_z|child|z|1", "PK_parent|parent|b|1",
                     "PK_parent|parent|a|2", "UQ_c|parent|c|1"}));
}

TEST_F(InformationConstraintsTest, ReferencesNameTheKeyAndTheRules) {
    EXPECT_EQ(
        ColumnsOf("referential_constraints"),
        Join({Names("CONSTRAINT"),
              Names("UNIQUE_CONSTRAINT"),
              {"MATCH_OPTION varchar(7)", "UPDATE_RULE varchar(11)", "DELETE_RULE varchar(11)"}}));
    EXPECT_EQ(
        Rows("select * from information_schema.referential_constraints order by constraint_name"),
        Texts({"shop|dbo|FK_xy|shop|dbo|PK_parent|SIMPLE|SET DEFAULT|CASCADE",
               "shop|dbo|FK_z|shop|dbo|UQ_c|SIMPLE|NO ACTION|NO ACTION"}));
}

TEST_F(InformationConstraintsTest, ChecksShowTheirClause) {
    EXPECT_EQ(ColumnsOf("check_constraints"),
              Join({Names("CONSTRAINT"), {"CHECK_CLAUSE nvarchar(4000)"}}));
    EXPECT_EQ(Rows("select * from information_schema.check_constraints order by constraint_name"),
              Texts({"shop|dbo|CK_xz|([x]<[z] AND [note]<>'y')", "shop|dbo|CK_y|([y]>(0))"}));
}

// CK_xz has 'y' as a text only.
TEST_F(InformationConstraintsTest, ColumnUsageListsTheOwnTablesColumns) {
    EXPECT_EQ(ColumnsOf("constraint_column_usage"),
              Join({Names("TABLE"), {"COLUMN_NAME nvarchar(128)"}, Names("CONSTRAINT")}));
    EXPECT_EQ(Rows("select table_name, column_name, constraint_name from "
                   "information_schema.constraint_column_usage where table_name = 'child' "
                   "order by constraint_name, column_name"),
              Texts({"child|note|CK_xz", "child|x|CK_xz", "child|z|CK_xz", "child|y|CK_y",
                     "child|x|FK_xy", "child|y|FK_xy", "child|z|FK_z"}));
}

TEST_F(InformationConstraintsTest, TableUsageListsTheConstraints) {
    EXPECT_EQ(ColumnsOf("constraint_table_usage"), Join({Names("TABLE"), Names("CONSTRAINT")}));
    EXPECT_EQ(Rows("select * from information_schema.constraint_table_usage where "
                   "table_name = 'parent' order by constraint_name"),
              Texts({"shop|dbo|parent|shop|dbo|PK_parent", "shop|dbo|parent|shop|dbo|UQ_c"}));
}

TEST_F(InformationConstraintsTest, WhatIsNotThereHasNoRows) {
    EXPECT_EQ(ColumnsOf("table_privileges"),
              Join({{"GRANTOR nvarchar(128)", "GRANTEE nvarchar(128)"},
                    Names("TABLE"),
                    {"PRIVILEGE_TYPE varchar(10)", "IS_GRANTABLE varchar(3)"}}));
    EXPECT_EQ(ColumnsOf("column_privileges"),
              Join({{"GRANTOR nvarchar(128)", "GRANTEE nvarchar(128)"},
                    Names("TABLE"),
                    {"COLUMN_NAME nvarchar(128)", "PRIVILEGE_TYPE varchar(10)",
                     "IS_GRANTABLE varchar(3)"}}));
    EXPECT_EQ(ColumnsOf("domain_constraints"),
              Join({Names("CONSTRAINT"),
                    Names("DOMAIN"),
                    {"IS_DEFERRABLE varchar(2)", "INITIALLY_DEFERRED varchar(2)"}}));
    EXPECT_EQ(ColumnsOf("sequences").size(), 15u);
    EXPECT_EQ(ColumnsOf("routine_columns").size(), 23u);
    for (const char* view : {"table_privileges", "column_privileges", "domain_constraints",
                             "sequences", "routine_columns"}) {
        EXPECT_EQ(Rows(std::string("select * from information_schema.") + view), Texts());
    }
}

}  // namespace
}  // namespace quarv::localdb::catalog
