#include "localdb/server/PreparedCalls.h"

#include <gmock/gmock.h>

#include "RequestFixture.h"

namespace quarv::localdb::server {

using testing::ElementsAre;

namespace {

class PreparedCallsTest : public RequestTest {};

tds::RpcParameter TextParameter(const char* text) {
    tds::RpcParameter parameter;
    parameter.type.code = tds::TypeCode::NText;
    parameter.type.size = 100;
    tds::BufferWriter writer;
    writer.Utf16(QString::fromLatin1(text));
    const auto bytes = writer.Written();
    parameter.value = {*text == '\0', QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                                 static_cast<qsizetype>(bytes.size()))};
    return parameter;
}

tds::RpcParameter NewHandle() {
    tds::RpcParameter parameter = IntParameter("", "", tds::RpcParameter::Output);
    parameter.value = {};
    return parameter;
}

tds::RpcCall NumberedCall(uint16_t number, std::vector<tds::RpcParameter> parameters) {
    tds::RpcCall call;
    call.procedureId = number;
    call.parameters = std::move(parameters);
    return call;
}

}  // namespace

TEST_F(PreparedCallsTest, PreparedStatementRunsByItsHandle) {
    const Reply first =
        Call(NumberedCall(13, {NewHandle(), TextParameter("@P1 int"), TextParameter("rows 2"),
                               IntParameter("", "05000000")}));
    EXPECT_EQ(first.rows.size(), 2u);
    ASSERT_EQ(first.values.size(), 1u);
    EXPECT_EQ(first.values[0].ordinal, 0);
    EXPECT_EQ(first.values[0].value.bytes, QByteArray::fromHex("01000000"));

    tds::RpcCall again;
    again.name = QStringLiteral("sp_execute");
    again.parameters = {IntParameter("", "01000000"), IntParameter("", "06000000")};
    EXPECT_EQ(Call(again).rows.size(), 2u);
    EXPECT_EQ(Call(NumberedCall(12, {IntParameter("", "01000000")})).rows.size(), 2u);
    EXPECT_THAT(server_.Engine().Ran(),
                testing::IsSupersetOf({QStringLiteral("call:sp_executesql(=rows 2,=@P1 int,=5)"),
                                       QStringLiteral("call:sp_executesql(=rows 2,=@P1 int,=6)")}));

    const Reply released = Call(NumberedCall(15, {IntParameter("", "01000000")}));
    EXPECT_THAT(released.tokens, ElementsAre(0x79, 0xFE));
    const Reply gone = Call(again);
    EXPECT_THAT(gone.tokens, ElementsAre(0xAA, 0xFE));
    EXPECT_EQ(gone.messages[0].text,
              QStringLiteral("Could not find prepared statement with handle 1."));
}

TEST_F(PreparedCallsTest, PreparingAloneGivesAHandleAndRunsNothing) {
    const Reply reply =
        Call(NumberedCall(11, {NewHandle(), TextParameter(""), TextParameter("rows 2")}));
    EXPECT_THAT(reply.tokens, ElementsAre(0x79, 0xAC, 0xFE));
    EXPECT_TRUE(server_.Engine().Ran().isEmpty());
    EXPECT_EQ(Call(NumberedCall(12, {IntParameter("", "01000000")})).rows.size(), 2u);
}

TEST_F(PreparedCallsTest, PreparingWithMetadataIsRefusedByName) {
    const Reply reply =
        Call(NumberedCall(11, {NewHandle(), TextParameter(""), TextParameter("rows 2"),
                               IntParameter("", "01000000")}));
    EXPECT_THAT(reply.tokens, ElementsAre(0xAA, 0xFE));
    EXPECT_EQ(reply.messages[0].text,
              QStringLiteral("Keyword or statement option 'sp_prepare with metadata' is not "
                             "supported in this version of SQL Server."));
}

TEST_F(PreparedCallsTest, PreparingNothingIsRefused) {
    EXPECT_TRUE(Call(NumberedCall(13, {NewHandle()})).Has(201));
    EXPECT_TRUE(Call(NumberedCall(12, {})).Has(8179));
}

TEST_F(PreparedCallsTest, ResetForgetsPreparedStatements) {
    Call(NumberedCall(11, {NewHandle(), TextParameter(""), TextParameter("rows 2")}));
    client_.SendBatch(QString(), 0x09);
    ASSERT_TRUE(client_.Receive());
    EXPECT_TRUE(Call(NumberedCall(12, {IntParameter("", "01000000")})).Has(8179));
}

}  // namespace quarv::localdb::server
