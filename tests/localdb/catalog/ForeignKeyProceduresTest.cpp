#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class ForeignKeyProceduresTest : public CatalogServer {
  protected:
    ForeignKeyProceduresTest() {
        Prepare(
            {"create table parent(a int not null, b int not null, c int constraint UQ_c unique, "
             "constraint PK_parent primary key (b, a))",
             "create table zebra(x int, y int, constraint FK_xy foreign key (y, x) references "
             "parent(b, a) on delete cascade on update set default)",
             "create table apple(z int constraint FK_z references parent(c) on delete set null, "
             "constraint CK_z check (z > 0))",
             "create table plain(id int constraint DF_id default 0, lo int, hi int, constraint "
             "CK_hi check (lo < hi))"});
    }
};

TEST_F(ForeignKeyProceduresTest, KeysThatReferToATableComeByTheirTables) {
    const RecordedSet set = Query("exec sp_fkeys @pktable_name = 'PARENT'");
    EXPECT_EQ(set.columns,
              Texts({"PKTABLE_QUALIFIER nvarchar(128)", "PKTABLE_OWNER nvarchar(128)",
                     "PKTABLE_NAME nvarchar(128)", "PKCOLUMN_NAME nvarchar(128)",
                     "FKTABLE_QUALIFIER nvarchar(128)", "FKTABLE_OWNER nvarchar(128)",
                     "FKTABLE_NAME nvarchar(128)", "FKCOLUMN_NAME nvarchar(128)",
                     "KEY_SEQ smallint", "UPDATE_RULE smallint", "DELETE_RULE smallint",
                     "FK_NAME nvarchar(128)", "PK_NAME nvarchar(128)", "DEFERRABILITY smallint"}));
    EXPECT_EQ(set.rows, Texts({"shop|dbo|parent|c|shop|dbo|apple|z|1|1|2|FK_z|UQ_c|7",
                               "shop|dbo|parent|b|shop|dbo|zebra|y|1|3|0|FK_xy|PK_parent|7",
                               "shop|dbo|parent|a|shop|dbo|zebra|x|2|3|0|FK_xy|PK_parent|7"}));
}

TEST_F(ForeignKeyProceduresTest, KeysOfATable) {
    EXPECT_EQ(Rows("exec sp_fkeys @fktable_name = 'zebra', @fktable_owner = 'dbo'").size(), 2u);
    EXPECT_EQ(Rows("exec sp_fkeys 'parent', null, null, 'apple'").size(), 1u);
    EXPECT_EQ(Rows("exec sp_fkeys @fktable_name = 'parent'"), Texts());
    EXPECT_EQ(Rows("exec sp_fkeys 'zeb%'"), Texts());
}

TEST_F(ForeignKeyProceduresTest, OneTableIsRequired) {
    EXPECT_EQ(Run("exec sp_fkeys").messages,
              Texts({"15252 16 The primary or foreign key table name must be given."}));
    EXPECT_EQ(Run("exec sp_fkeys 'parent', null, 'master'").messages.size(), 1u);
}

TEST_F(ForeignKeyProceduresTest, ConstraintsAreDescribedByName) {
    const Recording recording = Run("exec sp_helpconstraint 'apple'");
    ASSERT_EQ(recording.sets.size(), 2u);
    EXPECT_EQ(recording.sets[0].columns, Texts({"Object Name nvarchar(776)"}));
    EXPECT_EQ(recording.sets[0].rows, Texts({"apple"}));
    EXPECT_EQ(recording.sets[1].columns,
              Texts({"constraint_type nvarchar(146)", "constraint_name nvarchar(128)",
                     "delete_action nvarchar(9)", "update_action nvarchar(13)",
                     "status_enabled varchar(8)", "status_for_replication varchar(19)",
                     "constraint_keys nvarchar(max)"}));
    EXPECT_EQ(recording.sets[1].rows,
              Texts({"CHECK on column z|CK_z|(n/a)|(n/a)|Enabled|Is_For_Replication|([z]>(0))",
                     "FOREIGN KEY|FK_z|Set Null|No Action|Enabled|Is_For_Replication|z",
                     " | | | | | |REFERENCES shop.dbo.parent (c)"}));
    EXPECT_EQ(recording.messages,
              Texts({"15470 10 No foreign keys reference table 'apple', or you do not have "
                     "permissions on referencing tables."}));
}

TEST_F(ForeignKeyProceduresTest, ReferringKeysAreNamed) {
    const Recording recording = Run("exec sp_helpconstraint 'dbo.parent', 'nomsg'");
    ASSERT_EQ(recording.sets.size(), 2u);
    EXPECT_EQ(recording.sets[0].rows,
              Texts({"PRIMARY KEY (clustered)|PK_parent|(n/a)|(n/a)|(n/a)|(n/a)|b, a",
                     "UNIQUE (non-clustered)|UQ_c|(n/a)|(n/a)|(n/a)|(n/a)|c"}));
    EXPECT_EQ(recording.sets[1].columns,
              Texts({"Table is referenced by foreign key nvarchar(516)"}));
    EXPECT_EQ(recording.sets[1].rows, Texts({"shop.dbo.zebra: FK_xy", "shop.dbo.apple: FK_z"}));
    EXPECT_EQ(recording.messages, Texts());
}

TEST_F(ForeignKeyProceduresTest, TablesChecksAndDefaultsAreToldApart) {
    const Recording recording = Run("exec sp_helpconstraint 'plain', 'nomsg'");
    ASSERT_EQ(recording.sets.size(), 1u);
    EXPECT_EQ(recording.sets[0].rows,
              Texts({"CHECK Table Level |CK_hi|(n/a)|(n/a)|Enabled|Is_For_Replication|([lo]<[hi])",
                     "DEFAULT on column id|DF_id|(n/a)|(n/a)|(n/a)|(n/a)|((0))"}));
}

TEST_F(ForeignKeyProceduresTest, WithoutConstraintsThereIsAMessage) {
    Prepare({"create table t(a int)"});
    const Recording recording = Run("exec sp_helpconstraint 't', 'nomsg'");
    EXPECT_EQ(recording.sets.size(), 0u);
    ASSERT_EQ(recording.messages.size(), 2u);
    EXPECT_EQ(recording.messages[0],
              "15469 10 No constraints are defined on object 't', or you do not have "
              "permissions.");
    EXPECT_EQ(Run("exec sp_helpconstraint 'nothing'").messages[0].substr(0, 5), "15009");
}

TEST_F(ForeignKeyProceduresTest, HelpShowsComputedColumnsAndRowGuids) {
    Prepare({"create table t(a int, b as a + 1, g uniqueidentifier rowguidcol)"});
    const Recording recording = Run("exec sp_help 't'");
    EXPECT_EQ(recording.sets[1].rows[1].substr(0, 10), "b|int|yes|");
    EXPECT_EQ(recording.sets[3].rows, Texts({"g"}));
    EXPECT_EQ(Run("exec sp_help 'parent'").sets.back().rows.size(), 2u);
}

}  // namespace
}  // namespace quarv::localdb::catalog
