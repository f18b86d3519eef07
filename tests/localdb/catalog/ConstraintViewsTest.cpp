#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class ConstraintViewsTest : public CatalogServer {
  protected:
    ConstraintViewsTest() {
        Prepare(
            {"create table parent(a int not null, b int not null, c int constraint UQ_c unique, "
             "constraint PK_parent primary key (a, b))",
             "create table child(id int identity(10, 5) constraint PK_child primary key "
             "nonclustered, x int, y int, z int constraint DF_z default 3, w as z + 1, p as z * 2 "
             "persisted, constraint FK_xy foreign key (x, y) references parent(a, b) on delete "
             "cascade on update set null, constraint FK_z foreign key (z) references parent(c), "
             "constraint CK_z check (z > 0), constraint CK_xy check (x < y))",
             "create table bare(n int check (n <> 5))"});
    }
};

// What all views over sys.objects begin with.
const Texts ObjectColumns = {
    "name nvarchar(128)",     "object_id int",        "principal_id int",
    "schema_id int",          "parent_object_id int", "type char(2)",
    "type_desc nvarchar(60)", "create_date datetime", "modify_date datetime",
    "is_ms_shipped bit",      "is_published bit",     "is_schema_published bit"};

Texts ObjectColumnsAnd(const Texts& more) {
    Texts columns = ObjectColumns;
    columns.insert(columns.end(), more.begin(), more.end());
    return columns;
}

TEST_F(ConstraintViewsTest, KeysNameTheirIndex) {
    EXPECT_EQ(Query("select * from sys.key_constraints").columns,
              ObjectColumnsAnd({"unique_index_id int", "is_system_named bit", "is_enforced bit"}));
    EXPECT_EQ(Rows("select name, type, type_desc, object_name(parent_object_id), unique_index_id, "
                   "is_system_named from sys.key_constraints order by name"),
              Texts({"PK_child|PK|PRIMARY_KEY_CONSTRAINT|child|2|0",
                     "PK_parent|PK|PRIMARY_KEY_CONSTRAINT|parent|1|0",
                     "UQ_c|UQ|UNIQUE_CONSTRAINT|parent|2|0"}));
    EXPECT_EQ(Rows("select name from sys.key_constraints where parent_object_id = "
                   "object_id('child')"),
              Texts({"PK_child"}));
}

TEST_F(ConstraintViewsTest, ForeignKeysTellTheirActions) {
    EXPECT_EQ(
        Query("select * from sys.foreign_keys").columns,
        ObjectColumnsAnd({"referenced_object_id int", "key_index_id int", "is_disabled bit",
                          "is_not_for_replication bit", "is_not_trusted bit",
                          "delete_referential_action tinyint",
                          "delete_referential_action_desc nvarchar(60)",
                          "update_referential_action tinyint",
                          "update_referential_action_desc nvarchar(60)", "is_system_named bit"}));
    EXPECT_EQ(Rows("select name, object_name(parent_object_id), object_name(referenced_object_id), "
                   "key_index_id, is_disabled, is_not_trusted, delete_referential_action, "
                   "delete_referential_action_desc, update_referential_action, "
                   "update_referential_action_desc from sys.foreign_keys order by name"),
              Texts({"FK_xy|child|parent|1|0|0|1|CASCADE|2|SET_NULL",
                     "FK_z|child|parent|2|0|0|0|NO_ACTION|0|NO_ACTION"}));
}

TEST_F(ConstraintViewsTest, ForeignKeyColumnsPairTheirColumns) {
    const RecordedSet set = Query(
        "select * from sys.foreign_key_columns where constraint_object_id = object_id('FK_xy')");
    EXPECT_EQ(set.columns, Texts({"constraint_object_id int", "constraint_column_id int",
                                  "parent_object_id int", "parent_column_id int",
                                  "referenced_object_id int", "referenced_column_id int"}));
    EXPECT_EQ(Rows("select constraint_column_id, parent_column_id, referenced_column_id from "
                   "sys.foreign_key_columns order by constraint_object_id, 1"),
              Texts({"1|2|1", "2|3|2", "1|4|3"}));
}

TEST_F(ConstraintViewsTest, ChecksTellTheirConditionAndColumn) {
    EXPECT_EQ(
        Query("select * from sys.check_constraints").columns,
        ObjectColumnsAnd({"is_disabled bit", "is_not_for_replication bit", "is_not_trusted bit",
                          "parent_column_id int", "definition nvarchar(max)",
                          "uses_database_collation bit", "is_system_named bit"}));
    EXPECT_EQ(Rows("select name, parent_column_id, definition, is_system_named from "
                   "sys.check_constraints where name like 'CK[_][xz]%' order by name"),
              Texts({"CK_xy|0|([x]<[y])|0", "CK_z|4|([z]>(0))|0"}));
    EXPECT_EQ(Rows("select parent_column_id, definition, is_system_named from "
                   "sys.check_constraints where parent_object_id = object_id('bare')"),
              Texts({"1|([n]<>(5))|1"}));
}

TEST_F(ConstraintViewsTest, DefaultsTellTheirColumn) {
    EXPECT_EQ(Query("select * from sys.default_constraints").columns,
              ObjectColumnsAnd(
                  {"parent_column_id int", "definition nvarchar(max)", "is_system_named bit"}));
    EXPECT_EQ(Rows("select name, object_name(parent_object_id), parent_column_id, definition, "
                   "is_system_named from sys.default_constraints"),
              Texts({"DF_z|child|4|((3))|0"}));
}

// The columns that each view adds stand behind rule_object_id.
TEST_F(ConstraintViewsTest, ComputedColumnsShowTheirExpression) {
    const RecordedSet set = Query("select * from sys.computed_columns");
    ASSERT_GT(set.columns.size(), 26u);
    EXPECT_EQ(set.columns[0], "object_id int");
    EXPECT_EQ(
        Texts(set.columns.begin() + 21, set.columns.begin() + 28),
        Texts({"rule_object_id int", "definition nvarchar(max)", "uses_database_collation bit",
               "is_persisted bit", "is_computed bit", "is_sparse bit", "is_column_set bit"}));
    EXPECT_EQ(Rows("select name, column_id, definition, is_persisted, is_computed, is_nullable "
                   "from sys.computed_columns order by column_id"),
              Texts({"w|5|([z]+(1))|0|1|1", "p|6|([z]*(2))|1|1|1"}));
}

TEST_F(ConstraintViewsTest, IdentityColumnsShowTheirLastValue) {
    const std::string query =
        "select name, seed_value, increment_value, last_value, is_not_for_replication, "
        "is_identity from sys.identity_columns where object_id = object_id('child')";
    EXPECT_EQ(Rows(query), Texts({"id|10|5|NULL|0|1"}));
    Prepare({"insert into child(z) values (null)", "insert into child(z) values (null)"});
    EXPECT_EQ(Rows(query), Texts({"id|10|5|15|0|1"}));
}

TEST_F(ConstraintViewsTest, OlderProgramsFindTheTypes) {
    EXPECT_EQ(Query("select * from systypes").columns,
              Texts({"name nvarchar(128)", "xtype tinyint",          "status tinyint",
                     "xusertype smallint", "length smallint",        "xprec tinyint",
                     "xscale tinyint",     "tdefault int",           "domain int",
                     "uid smallint",       "reserved smallint",      "collationid int",
                     "usertype smallint",  "variable bit",           "allownulls bit",
                     "type tinyint",       "printfmt varchar(255)",  "prec smallint",
                     "scale tinyint",      "collation nvarchar(128)"}));
    EXPECT_EQ(Rows("select name, xtype, xusertype, usertype, variable, allownulls, type, prec, "
                   "scale from systypes where name in ('int', 'varchar', 'sysname', 'timestamp', "
                   "'decimal', 'nchar') order by name"),
              Texts({"decimal|106|106|24|0|1|55|38|38", "int|56|56|7|0|1|56|10|0",
                     "nchar|239|239|0|0|1|47|4000|NULL", "sysname|231|256|18|1|0|39|128|NULL",
                     "timestamp|189|189|80|0|0|45|8|NULL", "varchar|167|167|2|1|1|39|8000|NULL"}));
    EXPECT_EQ(Rows("select c.name, t.name from syscolumns c join systypes t on t.xusertype = "
                   "c.xusertype where c.id = object_id('bare')"),
              Texts({"n|int"}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
