// What the catalogue tells of objects that ALTER and sp_rename have changed.
#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class AlteredObjectsTest : public CatalogServer {
  protected:
    AlteredObjectsTest() {
        Prepare({"create table t(id int identity constraint PK_t primary key, n varchar(5))",
                 "create view v as select id from t", "create procedure p @a int as select @a",
                 "select object_id, create_date, name into seen from sys.objects"});
    }
};

TEST_F(AlteredObjectsTest, KeepTheirNumberAndTheDayTheyWereMade) {
    Prepare({"alter view v as select n, id from t", "alter proc p @b int, @c int as select @b",
             "alter table t add x int null"});
    EXPECT_EQ(Rows("select s.name from seen s join sys.objects o on o.object_id = s.object_id and "
                   "o.create_date = s.create_date and o.modify_date >= s.create_date "
                   "where o.type in ('U', 'V', 'P') and s.name <> 'seen' order by s.name"),
              Texts({"p", "t", "v"}));
    EXPECT_EQ(Rows("select name from sys.columns where object_id = object_id('v') "
                   "order by column_id"),
              Texts({"n", "id"}));
    EXPECT_EQ(Rows("select name from sys.parameters where object_id = object_id('p') "
                   "order by parameter_id"),
              Texts({"@b", "@c"}));
}

TEST_F(AlteredObjectsTest, ColumnsTellTheirNewTypes) {
    Prepare({"alter table t alter column n nvarchar(20) not null",
             "alter table t add d decimal(9,2) null", "alter table t drop column d",
             "alter table t add e as id + 1"});
    EXPECT_EQ(Rows("select name, column_id, type_name(system_type_id), max_length, is_nullable, "
                   "is_computed from sys.columns where object_id = object_id('t') "
                   "order by column_id"),
              Texts({"id|1|int|4|0|0", "n|2|nvarchar|40|0|0", "e|4|int|4|1|1"}));
    EXPECT_EQ(Rows("select max_column_id_used from sys.tables where name = 't'"), Texts({"4"}));
}

TEST_F(AlteredObjectsTest, KeysComeAndGo) {
    Prepare({"alter table t drop constraint PK_t", "alter table t add constraint UQ_n unique (n)"});
    EXPECT_EQ(Rows("select name, is_primary_key, is_unique_constraint from sys.indexes "
                   "where object_id = object_id('t') and name is not null"),
              Texts({"UQ_n|0|1"}));
    EXPECT_EQ(Run("exec sp_rename 'UQ_n', 'UQ_m'").status, 0);
    EXPECT_EQ(Rows("select name from sys.indexes where object_id = object_id('t') and name is not "
                   "null"),
              Texts({"UQ_m"}));
    EXPECT_EQ(Rows("select name, type from sys.objects where parent_object_id = object_id('t')"),
              Texts({"UQ_m|UQ"}));
}

TEST_F(AlteredObjectsTest, ConstraintsTellWhetherTheyAreAskedAndTrusted) {
    Prepare(
        {"create table c(t int constraint FK_c references t(id), a int constraint CK_a check "
         "(a > 0), b int)",
         "alter table c with nocheck add constraint CK_b check (b > 0)",
         "alter table c nocheck constraint CK_a, FK_c"});
    const std::string checks =
        "select name, is_disabled, is_not_trusted from sys.check_constraints order by name";
    const std::string keys = "select name, is_disabled, is_not_trusted from sys.foreign_keys";
    EXPECT_EQ(Rows(checks), Texts({"CK_a|1|1", "CK_b|0|1"}));
    EXPECT_EQ(Rows(keys), Texts({"FK_c|1|1"}));
    Prepare({"alter table c check constraint all"});
    EXPECT_EQ(Rows(checks), Texts({"CK_a|0|1", "CK_b|0|1"}));
    EXPECT_EQ(Rows(keys), Texts({"FK_c|0|1"}));
    Prepare({"alter table c with check check constraint CK_a, FK_c"});
    EXPECT_EQ(Rows(checks), Texts({"CK_a|0|0", "CK_b|0|1"}));
    EXPECT_EQ(Rows(keys), Texts({"FK_c|0|0"}));
}

}  // namespace
}  // namespace quarv::localdb::catalog
