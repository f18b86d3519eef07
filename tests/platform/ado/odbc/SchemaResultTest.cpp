#include <gtest/gtest.h>

#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using C = FakeColumn;
using ado::Schema;

FakeValue Text(const char* text) {
    return Utf16(QString::fromUtf8(text));
}

QByteArray Tables() {
    FakeTds answer;
    answer.Columns({C::NVarChar("TABLE_QUALIFIER", 128), C::NVarChar("TABLE_OWNER", 128),
                    C::NVarChar("TABLE_NAME", 128), C::VarChar("TABLE_TYPE", 32),
                    C::VarChar("REMARKS", 254)});
    answer.Row({Text("db"), Text("sys"), Text("objects"), QByteArray("VIEW"), {}});
    answer.Row({Text("db"), Text("INFORMATION_SCHEMA"), Text("TABLES"), QByteArray("VIEW"), {}});
    answer.Row({Text("db"), Text("dbo"), Text("Größe"), QByteArray("TABLE"), QByteArray("note")});
    answer.Row({Text("db"), Text("system"), Text("v"), QByteArray("VIEW"), {}});
    return answer.Done(4);
}

QByteArray Procedures() {
    FakeTds answer;
    answer.Columns({C::NVarChar("PROCEDURE_QUALIFIER", 128), C::NVarChar("PROCEDURE_OWNER", 128),
                    C::NVarChar("PROCEDURE_NAME", 134), C::Int("NUM_INPUT_PARAMS"),
                    C::Int("NUM_OUTPUT_PARAMS"), C::Int("NUM_RESULT_SETS"),
                    C::VarChar("REMARKS", 254), C::Int("PROCEDURE_TYPE", 2)});
    const FakeValue any = Le(0xFFFFFFFF, 4);
    answer.Row({Text("db"), Text("dbo"), Text("p;1"), any, any, any, {}, Le(2, 2)});
    answer.Row({Text("db"), Text("sys"), Text("sp_x;1"), any, any, any, {}, Le(2, 2)});
    answer.Row({Text("db"), Text("dbo"), Text("q;1"), any, any, any, QByteArray("n"), Le(1, 2)});
    return answer.Done(3);
}

QByteArray Catalogs() {
    FakeTds answer;
    answer.Columns({C::NVarChar("TABLE_QUALIFIER", 128), C::NVarChar("TABLE_OWNER", 128),
                    C::NVarChar("TABLE_NAME", 128), C::VarChar("TABLE_TYPE", 32),
                    C::VarChar("REMARKS", 254)});
    answer.Row({Text("master"), {}, {}, {}, {}});
    answer.Row({Text("mirel"), {}, {}, {}, {}});
    return answer.Done(2);
}

QStringList Names(const ado::RecordsetPtr& rows) {
    QStringList names;
    for (int i = 0; i < rows->Fields().Count(); ++i) names += rows->Fields()[i].Name();
    return names;
}

}  // namespace

TEST(SchemaResult, TablesHaveTheRowsetsColumns) {
    const FakeServer server([](const QString&) { return Tables(); });
    const auto connection = Open(server);
    const auto rows = connection->OpenSchema(Schema::Tables);
    EXPECT_EQ(Names(rows), QStringList({"TABLE_CATALOG", "TABLE_SCHEMA", "TABLE_NAME", "TABLE_TYPE",
                                        "TABLE_GUID", "DESCRIPTION", "TABLE_PROPID", "DATE_CREATED",
                                        "DATE_MODIFIED"}));
    EXPECT_EQ(server.Statements(), QStringList({"sp_tables"}));
}

TEST(SchemaResult, ServersOwnTablesAreSystemTables) {
    const FakeServer server([](const QString&) { return Tables(); });
    const auto connection = Open(server);
    const auto rows = connection->OpenSchema(Schema::Tables);
    const struct {
        const char* schema;
        const char* name;
        const char* type;
    } expected[] = {{"sys", "objects", "SYSTEM TABLE"},
                    {"INFORMATION_SCHEMA", "TABLES", "SYSTEM TABLE"},
                    {"dbo", "Größe", "TABLE"},
                    {"system", "v", "VIEW"}};
    for (const auto& row : expected) {
        EXPECT_EQ((*rows)["table_type"].Text(), QString(row.type));
        EXPECT_EQ((*rows)["table_schema"].Text(), QString(row.schema));
        EXPECT_EQ((*rows)["table_name"].Text(), QString(row.name));
        EXPECT_EQ((*rows)["table_catalog"].Text(), QStringLiteral("db"));
        EXPECT_TRUE((*rows)["table_guid"].IsNull());
        EXPECT_TRUE((*rows)["date_created"].IsNull());
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF());
}

TEST(SchemaResult, DescriptionIsTheRemark) {
    const FakeServer server([](const QString&) { return Tables(); });
    const auto connection = Open(server);
    const auto rows = connection->OpenSchema(Schema::Tables);
    EXPECT_TRUE((*rows)["description"].IsNull());
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_EQ((*rows)["description"].Text(), QStringLiteral("note"));
}

TEST(SchemaResult, SystemProceduresAreLeftOut) {
    const FakeServer server([](const QString&) { return Procedures(); });
    const auto connection = Open(server);
    const auto rows = connection->OpenSchema(Schema::Procedures);
    EXPECT_EQ(Names(rows), QStringList({"PROCEDURE_CATALOG", "PROCEDURE_SCHEMA", "PROCEDURE_NAME",
                                        "PROCEDURE_TYPE", "PROCEDURE_DEFINITION", "DESCRIPTION",
                                        "DATE_CREATED", "DATE_MODIFIED"}));
    EXPECT_EQ((*rows)["procedure_name"].Text(), QStringLiteral("p;1"));
    EXPECT_EQ((*rows)["procedure_type"].ToInteger(), 3);
    rows->MoveNext();
    EXPECT_EQ((*rows)["procedure_name"].Text(), QStringLiteral("q;1"));
    EXPECT_EQ((*rows)["procedure_type"].ToInteger(), 2);
    EXPECT_EQ((*rows)["description"].Text(), QStringLiteral("n"));
    rows->MoveNext();
    EXPECT_TRUE(rows->EOF());
    EXPECT_EQ(server.Statements(), QStringList({"..sp_stored_procedures"}));
}

TEST(SchemaResult, CatalogsAreNamed) {
    const FakeServer server([](const QString&) { return Catalogs(); });
    const auto connection = Open(server);
    const auto rows = connection->OpenSchema(Schema::Catalogs);
    EXPECT_EQ(Names(rows), QStringList({"CATALOG_NAME", "DESCRIPTION"}));
    EXPECT_EQ((*rows)["catalog_name"].Text(), QStringLiteral("master"));
    rows->MoveNext();
    EXPECT_EQ((*rows)["catalog_name"].Text(), QStringLiteral("mirel"));
    EXPECT_TRUE((*rows)["description"].IsNull());
}

TEST(SchemaResult, RowsStayWhenTheConnectionIsNeeded) {
    const FakeServer server([](const QString& name) {
        return name == QStringLiteral("sp_tables") ? Tables() : Procedures();
    });
    const auto connection = Open(server);
    const auto tables = connection->OpenSchema(Schema::Tables);
    EXPECT_EQ((*tables)["table_type"].Text(), QStringLiteral("SYSTEM TABLE"));
    const auto procedures = connection->OpenSchema(Schema::Procedures);
    EXPECT_EQ((*procedures)["procedure_name"].Text(), QStringLiteral("p;1"));
    EXPECT_EQ((*tables)["table_type"].Text(), QStringLiteral("SYSTEM TABLE"));
    tables->MoveNext();
    tables->MoveNext();
    EXPECT_EQ((*tables)["table_name"].Text(), QStringLiteral("Größe"));
    EXPECT_EQ((*tables)["table_type"].Text(), QStringLiteral("TABLE"));
}

TEST(SchemaResult, RefusalIsTheServersMessage) {
    const FakeServer server(
        FakeTds()
            .Error(2812, QStringLiteral("Could not find stored procedure 'sp_tables'."))
            .DoneError());
    const auto connection = Open(server);
    EXPECT_EQ(ErrorOf([&] { connection->OpenSchema(Schema::Tables); }).Description(),
              QStringLiteral("Could not find stored procedure 'sp_tables'."));
}

}  // namespace quarv::test
