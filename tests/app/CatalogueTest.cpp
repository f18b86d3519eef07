#include "app/Catalogue.h"

#include <gtest/gtest.h>

#include "app/FakeDatabase.h"
#include "base/DataError.h"
#include "db/SQLServerConnection.h"
#include "support/TextPrinter.h"

namespace quarv {

void PrintTo(const CatalogueNode& node, std::ostream* out) {
    *out << node.parent.toStdString() << " / " << node.key.toStdString() << " / "
         << node.text.toStdString() << " / " << node.image;
}

namespace {

class CatalogueTest : public testing::Test {
  protected:
    CatalogueTest() { connection_.InitOpen(FakeDatabase::ConnStr); }

    FakeDatabase database_;
    SQLServerConnection connection_{database_.script->Factory()};
};

TEST_F(CatalogueTest, RootCarriesDescriptionAndVersion) {
    EXPECT_EQ(
        ReadRoot(connection_),
        (std::vector<CatalogueNode>{{"", "_db_", "SQL Server srv Sales Server 9.1", DatabaseIcon},
                                    {"_db_", "Tables", "Tables", TablesIcon},
                                    {"_db_", "Routines", "Routines", RoutinesIcon}}));
}

TEST_F(CatalogueTest, TablesKeepTheServersOrderWithoutSystemTables) {
    const CatalogueGroup tables = ReadTables(connection_);
    EXPECT_EQ(tables.parent, "Tables");
    EXPECT_EQ(tables.keyPrefix, "_tbl_");
    EXPECT_EQ(tables.image, TableIcon);
    EXPECT_EQ(tables.names, (std::vector<QString>{"Orders", "Customers", "AllOrders"}));
}

TEST_F(CatalogueTest, ProceduresLoseTheirVersion) {
    const CatalogueGroup procedures = ReadProcedures(connection_);
    EXPECT_EQ(procedures.parent, "Routines");
    EXPECT_EQ(procedures.keyPrefix, "_sp_");
    EXPECT_EQ(procedures.image, ProcedureIcon);
    EXPECT_EQ(procedures.names, (std::vector<QString>{"usp_Report", "Plain", "a"}));
}

TEST_F(CatalogueTest, TableWithoutATypeIsListed) {
    database_.SetTables({{u"Odd", Value::Null()}});
    EXPECT_EQ(ReadTables(connection_).names, std::vector<QString>{"Odd"});
}

TEST_F(CatalogueTest, ServerWithoutAVersionRowRaises) {
    database_.script->Answer("exec sp_server_info 2",
                             ado::MemoryResult::Rows({"attribute_value"}, {}));
    EXPECT_THROW(ReadRoot(connection_), DataError);
}

TEST_F(CatalogueTest, FailingListRaisesBehindItsRows) {
    database_.script->AnswerSchema(
        ado::Schema::Tables,
        ado::MemoryResult::Rows({"TABLE_NAME", "TABLE_TYPE"}, {{u"Orders", u"TABLE"}})
            .ThenFails("connection lost"));
    EXPECT_THROW(ReadTables(connection_), DataError);
}

TEST_F(CatalogueTest, ListWithoutTheNameFieldRaises) {
    database_.script->AnswerSchema(ado::Schema::Procedures,
                                   ado::MemoryResult::Rows({"NAME"}, {{u"p"}}));
    EXPECT_THROW(ReadProcedures(connection_), DataError);
}

struct KeyCase {
    const char* key;
    bool table;
    bool procedure;
};

class CatalogueKey : public testing::TestWithParam<KeyCase> {};

TEST_P(CatalogueKey, PrefixMatchesInAnyCase) {
    const KeyCase& c = GetParam();
    EXPECT_EQ(IsTableKey(QLatin1String(c.key)), c.table);
    EXPECT_EQ(IsProcedureKey(QLatin1String(c.key)), c.procedure);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, CatalogueKey,
    testing::Values(KeyCase{"_tbl_Orders", true, false}, KeyCase{"_TBL_Orders", true, false},
                    KeyCase{"_tbl_", true, false}, KeyCase{"_sp_Report", false, true},
                    KeyCase{"_Sp_Report", false, true}, KeyCase{"_db_", false, false},
                    KeyCase{"Tables", false, false}, KeyCase{"Routines", false, false},
                    KeyCase{"", false, false}));

}  // namespace
}  // namespace quarv
