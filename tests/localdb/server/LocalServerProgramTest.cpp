// quarv-localdb itself, with its engine and its sample, as clients meet it.
#include <gmock/gmock.h>

#include "LocalProgramFixture.h"
#include "RequestFixture.h"

namespace quarv::localdb::server {

namespace {

using testing::HasSubstr;

class LocalServerProgramTest : public LocalProgramFixture {};

tds::RpcParameter TextParameter(const char* text) {
    tds::RpcParameter parameter;
    parameter.type.code = tds::TypeCode::NText;
    parameter.type.size = 100;
    tds::BufferWriter writer;
    writer.Utf16(QString::fromLatin1(text));
    const auto bytes = writer.Written();
    parameter.value = {false, QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                         static_cast<qsizetype>(bytes.size()))};
    return parameter;
}

Reply Call(TestClient& client, const tds::RpcCall& call) {
    tds::BufferWriter writer;
    tds::RpcRequest{{}, {call}}.Encode(writer);
    client.Send(tds::PacketType::Rpc, writer.Written());
    return client.Receive().value_or(Reply{});
}

}  // namespace

TEST_F(LocalServerProgramTest, TsqlRunsTheCatalogueQueries) {
    if (!HasProgram("tsql")) GTEST_SKIP() << "tsql is not installed";
    const Output output = RunTsql(target_,
                                  "exec sp_server_info 2\ngo\n"
                                  "exec sp_tables\ngo\n"
                                  "exec sp_stored_procedures\ngo\n"
                                  "select COLUMN_NAME from INFORMATION_SCHEMA.COLUMNS "
                                  "where TABLE_NAME = 'Products'\ngo\nexit\n");
    EXPECT_EQ(output.status, 0);
    EXPECT_THAT(output.text, HasSubstr("DBMS_VER"));
    EXPECT_THAT(output.text, HasSubstr("mirel\tdbo\tProducts\tTABLE"));
    EXPECT_THAT(output.text, HasSubstr("PROCEDURE_NAME"));
    EXPECT_THAT(output.text, HasSubstr("ProductID"));
    EXPECT_EQ(output.text.find("Msg "), std::string::npos) << output.text;
}

TEST_F(LocalServerProgramTest, TsqlIsServedInEveryVersion) {
    if (!HasProgram("tsql")) GTEST_SKIP() << "tsql is not installed";
    for (const char* version : {"7.1", "7.2", "7.3", "7.4"}) {
        SCOPED_TRACE(version);
        Target target = target_;
        target.version = QString::fromLatin1(version);
        const Output output = RunTsql(target,
                                      "select top 2 CategoryID, Description, "
                                      "cast('2024-02-29' as date) d, cast(null as int) n "
                                      "from Categories order by CategoryID\ngo\n"
                                      "select cast(N'long' as nvarchar(max)) m, 1.50 x\ngo\n"
                                      "begin transaction\ngo\nrollback\ngo\n"
                                      "select *\nfrom nowhere\ngo\n"
                                      "exec sp_helpindex 'Products'\ngo\nexit\n");
        EXPECT_EQ(output.status, 0) << output.text;
        // Before 7.3 a date goes as text.
        const bool text = target.version < u"7.3";
        EXPECT_THAT(output.text, HasSubstr(text ? "\t2024-02-29\t" : "\tFeb 29 2024"));
        EXPECT_THAT(output.text, HasSubstr("NULL"));
        EXPECT_THAT(output.text, HasSubstr("(2 rows affected)"));
        EXPECT_THAT(output.text, HasSubstr("long\t1.50"));
        EXPECT_THAT(output.text, HasSubstr("Line 2:\n\t\"Invalid object name 'nowhere'.\""));
        EXPECT_THAT(output.text, HasSubstr("PK_Products"));
    }
}

TEST_F(LocalServerProgramTest, IsqlIsServedInEveryVersion) {
    if (!HasProgram("isql")) GTEST_SKIP() << "isql is not installed";
    for (const char* version : {"7.1", "7.2", "7.3", "7.4"}) {
        SCOPED_TRACE(version);
        Target target = target_;
        target.version = QString::fromLatin1(version);
        const Output output =
            RunIsql(target,
                    "help\n"
                    "select ProductID, ProductName, UnitPrice from Products where ProductID = 1\n"
                    "select cast(null as nvarchar(max)) n, 'b' b\n");
        EXPECT_THAT(output.text, HasSubstr("mirel,dbo,Products,TABLE"));
        EXPECT_THAT(output.text, HasSubstr("\n,b\n"));
    }
}

TEST_F(LocalServerProgramTest, IsqlRunsTheCatalogueQueries) {
    if (!HasProgram("isql")) GTEST_SKIP() << "isql is not installed";
    const Output output = RunIsql(target_,
                                  "help\n"
                                  "sp_server_info 2\n"
                                  "select top 1 ProductID from Products order by ProductID\n"
                                  "select cast(null as int) n, 'b' b\n"
                                  "select * from nowhere\n");
    EXPECT_THAT(output.text, HasSubstr("mirel,dbo,Products,TABLE"));
    EXPECT_THAT(output.text, HasSubstr("2,DBMS_VER"));
    EXPECT_THAT(output.text, HasSubstr("\n1\n"));
    EXPECT_THAT(output.text, HasSubstr("\n,b\n"));
    EXPECT_THAT(output.text, HasSubstr("Invalid object name 'nowhere'."));
}

TEST_F(LocalServerProgramTest, BsqldbReadsATable) {
    if (!HasProgram("bsqldb")) GTEST_SKIP() << "bsqldb is not installed";
    const Output output = RunBsqldb(target_, "select CategoryID from Categories\n");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_THAT(output.text, HasSubstr("rows affected"));
}

TEST_F(LocalServerProgramTest, UnknownDatabaseAndWrongPasswordAreRefused) {
    tds::Login7 login = TestClient::GoodLogin();
    login.database = QStringLiteral("nowhere");
    TestClient lost(target_.port);
    const auto refused = lost.LogIn(login);
    ASSERT_TRUE(refused);
    EXPECT_TRUE(refused->Has(4060));
    EXPECT_TRUE(refused->Has(18456));
    login.password = QStringLiteral("wrong");
    TestClient stranger(target_.port);
    EXPECT_TRUE(stranger.LogIn(login)->Has(18456));
}

TEST_F(LocalServerProgramTest, ChangeOfDatabaseIsToldOnce) {
    TestClient client(target_.port);
    ASSERT_TRUE(client.LogIn()->ack);
    const auto reply = client.Run(QStringLiteral("use mirel"));
    ASSERT_TRUE(reply);
    ASSERT_THAT(reply->tokens, testing::ElementsAre(0xE3, 0xAB, 0xFD));
    ASSERT_EQ(reply->messages.size(), 1u);
    EXPECT_EQ(reply->messages[0].text, QStringLiteral("Changed database context to 'mirel'."));
}

TEST_F(LocalServerProgramTest, PreparedStatementRunsByItsHandle) {
    TestClient client(target_.port);
    ASSERT_TRUE(client.LogIn()->ack);
    tds::RpcParameter handle = IntParameter("", "", tds::RpcParameter::Output);
    handle.value = {};
    // sp_prepexec, sp_execute twice, the second by name, and sp_unprepare.
    tds::RpcCall call{QString(),
                      13,
                      0,
                      {handle, TextParameter("@P1 int"), TextParameter("select @P1 + 1 a"),
                       IntParameter("", "05000000")}};
    const Reply first = Call(client, call);
    ASSERT_EQ(first.rows.size(), 1u);
    EXPECT_EQ(first.rows[0].values[0].bytes, QByteArray::fromHex("06000000"));
    ASSERT_EQ(first.values.size(), 1u);
    EXPECT_EQ(first.values[0].ordinal, 0);
    EXPECT_EQ(first.values[0].value.bytes, QByteArray::fromHex("01000000"));
    EXPECT_THAT(first.tokens, testing::ElementsAre(0x81, 0xD1, 0xFF, 0x79, 0xAC, 0xFE));

    call = {QString(), 12, 0, {IntParameter("", "01000000"), IntParameter("", "06000000")}};
    EXPECT_EQ(Call(client, call).rows[0].values[0].bytes, QByteArray::fromHex("07000000"));
    call = {QStringLiteral("sp_execute"), 0, 0, call.parameters};
    EXPECT_EQ(Call(client, call).rows[0].values[0].bytes, QByteArray::fromHex("07000000"));
    const Reply released = Call(client, {QString(), 15, 0, {IntParameter("", "01000000")}});
    EXPECT_THAT(released.tokens, testing::ElementsAre(0x79, 0xFE));
    const Reply gone = Call(client, call);
    EXPECT_THAT(gone.tokens, testing::ElementsAre(0xAA, 0xFE));
    EXPECT_EQ(gone.messages[0].text,
              QStringLiteral("Could not find prepared statement with handle 1."));
}

TEST_F(LocalServerProgramTest, RunningStatementsAreStoppedAndTheSessionGoesOn) {
    TestClient client(target_.port);
    tds::Login7 login = TestClient::GoodLogin();
    login.database = QStringLiteral("mirel");
    ASSERT_TRUE(client.LogIn(login)->ack);
    for (const char* sql : {"while 1 = 1 print 'x'", "declare @i int while 1 = 1 set @i = 1"}) {
        SCOPED_TRACE(sql);
        client.SendBatch(QString::fromLatin1(sql));
        client.SendAttention();
        ASSERT_TRUE(client.Receive());
        const auto ack = client.Receive();
        ASSERT_TRUE(ack);
        EXPECT_EQ(ack->dones[0].status, tds::Done::Attention);
    }
    EXPECT_EQ(client.Run(QStringLiteral("select top 1 * from Products"))->rows.size(), 1u);
}

}  // namespace quarv::localdb::server
