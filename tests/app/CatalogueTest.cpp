#include "app/Catalogue.h"

#include <gtest/gtest.h>

#include "app/FakeDatabase.h"
#include "base/DataError.h"
#include "db/SQLServerConnection.h"

namespace quarv {
namespace {

struct AddedNode {
    QString parent;
    QString key;
    QString text;
    CatalogueIcon image;

    bool operator==(const AddedNode&) const = default;
};

void PrintTo(const AddedNode& node, std::ostream* out) {
    *out << node.parent.toStdString() << " / " << node.key.toStdString() << " / "
         << node.text.toStdString() << " / " << node.image;
}

using Reading = void (*)(SQLServerConnection&, const AddCatalogueNode&);

class CatalogueTest : public testing::Test {
  protected:
    std::vector<AddedNode> Read(Reading read) {
        connection_.InitOpen(FakeDatabase::ConnStr);
        nodes_.clear();
        read(connection_, [this](const QString& parent, const QString& key, const QString& text,
                                 CatalogueIcon image) {
            nodes_.push_back({parent, key, text, image});
        });
        return nodes_;
    }

    FakeDatabase database_;
    SQLServerConnection connection_{database_.script->Factory()};
    std::vector<AddedNode> nodes_;
};

TEST_F(CatalogueTest, RootCarriesDescriptionAndVersion) {
    EXPECT_EQ(Read(ReadRoot),
              (std::vector<AddedNode>{{"", "_db_", "SQL Server srv Sales Server 9.1", DatabaseIcon},
                                      {"_db_", "Tables", "Tables", TablesIcon},
                                      {"_db_", "Routines", "Routines", RoutinesIcon}}));
}

TEST_F(CatalogueTest, TablesKeepTheServersOrderWithoutSystemTables) {
    EXPECT_EQ(Read(ReadTables),
              (std::vector<AddedNode>{{"Tables", "_tbl_Orders", "Orders", TableIcon},
                                      {"Tables", "_tbl_Customers", "Customers", TableIcon},
                                      {"Tables", "_tbl_AllOrders", "AllOrders", TableIcon}}));
}

TEST_F(CatalogueTest, ProceduresLoseTheirVersion) {
    EXPECT_EQ(Read(ReadProcedures),
              (std::vector<AddedNode>{{"Routines", "_sp_usp_Report", "usp_Report", ProcedureIcon},
                                      {"Routines", "_sp_Plain", "Plain", ProcedureIcon},
                                      {"Routines", "_sp_a", "a", ProcedureIcon}}));
}

TEST_F(CatalogueTest, TableWithoutATypeIsListed) {
    database_.SetTables({{u"Odd", Value::Null()}});
    EXPECT_EQ(Read(ReadTables), (std::vector<AddedNode>{{"Tables", "_tbl_Odd", "Odd", TableIcon}}));
}

TEST_F(CatalogueTest, ServerWithoutAVersionRowRaises) {
    database_.script->Answer("exec sp_server_info 2",
                             ado::MemoryResult::Rows({"attribute_value"}, {}));
    EXPECT_THROW(Read(ReadRoot), DataError);
    EXPECT_TRUE(nodes_.empty());
}

TEST_F(CatalogueTest, FailingListRaisesBehindItsRows) {
    database_.script->AnswerSchema(
        ado::Schema::Tables,
        ado::MemoryResult::Rows({"TABLE_NAME", "TABLE_TYPE"}, {{u"Orders", u"TABLE"}})
            .ThenFails("connection lost"));
    EXPECT_THROW(Read(ReadTables), DataError);
    EXPECT_EQ(nodes_.size(), 1U);
}

TEST_F(CatalogueTest, ListWithoutTheNameFieldRaises) {
    database_.script->AnswerSchema(ado::Schema::Procedures,
                                   ado::MemoryResult::Rows({"NAME"}, {{u"p"}}));
    EXPECT_THROW(Read(ReadProcedures), DataError);
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
