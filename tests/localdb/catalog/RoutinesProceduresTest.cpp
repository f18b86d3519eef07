#include "localdb/catalog/CatalogServer.h"

namespace quarv::localdb::catalog {
namespace {

class RoutinesProceduresTest : public CatalogServer {
  protected:
    RoutinesProceduresTest() {
        Prepare(
            {"create procedure totals @from datetime, @name nvarchar(50) = N'x',"
             " @sum decimal(10,2) output as select 1",
             "create procedure Archive as select 1", "create table totals_log(id int)"});
    }
};

TEST_F(RoutinesProceduresTest, ProceduresAreListedByNameWithTheirVersion) {
    const RecordedSet set = Query("exec ..sp_stored_procedures");
    EXPECT_EQ(
        set.columns,
        Texts({"PROCEDURE_QUALIFIER nvarchar(128)", "PROCEDURE_OWNER nvarchar(128)",
               "PROCEDURE_NAME nvarchar(134)", "NUM_INPUT_PARAMS int", "NUM_OUTPUT_PARAMS int",
               "NUM_RESULT_SETS int", "REMARKS varchar(254)", "PROCEDURE_TYPE smallint"}));
    EXPECT_EQ(set.rows,
              Texts({"shop|dbo|Archive;1|-1|-1|-1|NULL|2", "shop|dbo|totals;1|-1|-1|-1|NULL|2"}));
}

TEST_F(RoutinesProceduresTest, NamesAndOwnersArePatterns) {
    EXPECT_EQ(Rows("exec sp_stored_procedures 'TOT%', 'dbo', 'shop'"),
              Texts({"shop|dbo|totals;1|-1|-1|-1|NULL|2"}));
    EXPECT_EQ(Rows("exec sp_stored_procedures @sp_name = 'totals;1'"),
              Texts({"shop|dbo|totals;1|-1|-1|-1|NULL|2"}));
    EXPECT_EQ(Rows("exec sp_stored_procedures @sp_owner = 'guest'"), Texts());
}

TEST_F(RoutinesProceduresTest, AnotherQualifierIsRefused) {
    EXPECT_EQ(Run("exec sp_stored_procedures @sp_qualifier = 'other'").messages,
              Texts({"15250 16 The database name component of the object qualifier must be the "
                     "name of the current database."}));
}

TEST_F(RoutinesProceduresTest, ParametersStandBehindTheReturnValue) {
    EXPECT_EQ(
        Rows("exec sp_sproc_columns 'totals', @ODBCVer = 3"),
        Texts({"shop|dbo|totals;1|@RETURN_VALUE|5|4|int|10|4|0|10|0|NULL|NULL|4|NULL|NULL|0|NO|56",
               "shop|dbo|totals;1|@from|1|93|datetime|23|16|3|NULL|1|NULL|NULL|9|3|NULL|1|YES|111",
               "shop|dbo|totals;1|@name|1|-9|nvarchar|50|100|NULL|NULL|1|NULL|NULL|-9|NULL|100|2|"
               "YES|39",
               "shop|dbo|totals;1|@sum|2|3|decimal|10|12|2|10|1|NULL|NULL|3|NULL|NULL|3|YES|"
               "106"}));
    EXPECT_EQ(Rows("exec sp_sproc_columns 'Archive'").size(), 1u);
}

}  // namespace
}  // namespace quarv::localdb::catalog
