#include <gmock/gmock.h>

#include "RequestFixture.h"
#include "localdb/tds/TransactionRequest.h"

namespace quarv::localdb::server {

namespace {

using tds::Done;
using testing::ElementsAre;

}  // namespace

TEST_F(RequestTest, RowsArriveWithTheirCount) {
    const Reply reply = Run("rows 3");
    EXPECT_THAT(reply.tokens, ElementsAre(0x81, 0xD1, 0xFD));
    ASSERT_EQ(reply.metadata.columns.size(), 2u);
    EXPECT_EQ(reply.metadata.columns[0].name, QStringLiteral("id"));
    ASSERT_EQ(reply.rows.size(), 3u);
    EXPECT_EQ(reply.rows[2].values[0].bytes, QByteArray::fromHex("02000000"));
    EXPECT_EQ(reply.rows[2].values[1].bytes, QByteArray::fromHex("7400650078007400"));
    ASSERT_EQ(reply.dones.size(), 1u);
    EXPECT_EQ(reply.dones[0], (Done{tds::Token::Done, Done::Count, 0xC1, 3}));
}

TEST_F(RequestTest, NullsComeInTheBitmap) {
    const Reply reply = Run("nulls");
    EXPECT_THAT(reply.tokens, ElementsAre(0x81, 0xD2, 0xFD));
    EXPECT_TRUE(reply.rows[0].values[0].null);
    EXPECT_EQ(reply.rows[0].values[1].bytes, QByteArray::fromHex("6200"));
}

TEST_F(RequestTest, BatchThatSaysNothingEndsWithOneDone) {
    const Reply reply = Run("");
    EXPECT_THAT(reply.tokens, ElementsAre(0xFD));
    EXPECT_EQ(reply.dones[0].status, 0);
}

TEST_F(RequestTest, ErrorMarksItsDone) {
    const Reply reply = Run("error");
    EXPECT_THAT(reply.tokens, ElementsAre(0xAA, 0xFD));
    EXPECT_EQ(reply.messages[0].number, 208);
    EXPECT_EQ(reply.messages[0].severity, 16);
    EXPECT_EQ(reply.messages[0].line, 2u);
    EXPECT_EQ(reply.messages[0].server, QStringLiteral("here"));
    EXPECT_EQ(reply.dones[0].status, Done::Error);
}

TEST_F(RequestTest, ErrorInMidResultStandsBehindItsRows) {
    const Reply reply = Run("broken");
    EXPECT_THAT(reply.tokens, ElementsAre(0x81, 0xD1, 0xAA, 0xFD));
    EXPECT_EQ(reply.rows.size(), 2u);
    EXPECT_EQ(reply.dones[0].status, Done::Error | Done::Count);
}

TEST_F(RequestTest, ErrorFromSeverity20OnEndsTheConnectionBehindItsReply) {
    const Reply reply = Run("fatal");
    EXPECT_THAT(reply.tokens, ElementsAre(0xAA, 0xFD));
    EXPECT_EQ(reply.messages[0].severity, 20);
    EXPECT_FALSE(client_.Run(QStringLiteral("print")));
}

TEST_F(RequestTest, ProcedureThatAnErrorLeftIsOver) {
    const Reply reply = Run("aborted");
    EXPECT_THAT(reply.tokens, ElementsAre(0xFF, 0xFD));
    EXPECT_EQ(reply.dones[1].command, 0xC1);
}

TEST_F(RequestTest, InformationIsFollowedByDone) {
    const Reply reply = Run("print");
    EXPECT_THAT(reply.tokens, ElementsAre(0xAB, 0xFD));
    EXPECT_EQ(reply.messages[0].text, QStringLiteral("hello"));
}

TEST_F(RequestTest, ChangeOfDatabaseIsToldTwice) {
    const Reply reply = Run("use mirel");
    EXPECT_THAT(reply.tokens, ElementsAre(0xE3, 0xAB, 0xFD));
    EXPECT_EQ(reply.changes[0].newText, QStringLiteral("mirel"));
    EXPECT_EQ(reply.messages[0].number, 5701);
}

TEST_F(RequestTest, ProcedureInABatchEndsWithItsStatusAndDoneProc) {
    const Reply reply = Run("exec");
    EXPECT_THAT(reply.tokens, ElementsAre(0xFF, 0x79, 0xFE));
    EXPECT_EQ(reply.returnStatus, 4);
    EXPECT_EQ(reply.dones[0].status, Done::More | Done::Count);
    EXPECT_EQ(reply.dones[1].status, 0);
}

TEST_F(RequestTest, CallGivesRowsStatusAndOutputs) {
    tds::RpcCall call;
    call.name = QStringLiteral("p");
    call.parameters = {IntParameter("@a", "05000000"),
                       IntParameter("@b", "06000000", tds::RpcParameter::Output)};
    const Reply reply = Call(call);
    EXPECT_THAT(reply.tokens, ElementsAre(0x81, 0xD1, 0xFF, 0xFF, 0x79, 0xAC, 0xFE));
    EXPECT_EQ(reply.returnStatus, -6);
    EXPECT_EQ(reply.values[0].name, QStringLiteral("@b"));
    EXPECT_EQ(reply.values[0].ordinal, 1);
    EXPECT_EQ(reply.values[0].value.bytes, QByteArray::fromHex("4D000000"));
    EXPECT_EQ(reply.dones.back().status, 0);
    EXPECT_THAT(server_.Engine().Ran(), ElementsAre(QStringLiteral("call:p(@a=5,@b=6)")));
}

TEST_F(RequestTest, CallByNumberReachesTheEngineByName) {
    tds::RpcCall call;
    call.procedureId = 10;
    Call(call);
    EXPECT_EQ(server_.Engine().Ran().first(), QStringLiteral("call:sp_executesql()"));
}

TEST_F(RequestTest, CallOfAMissingProcedureEndsWithOneDoneProc) {
    tds::RpcCall call;
    call.name = QStringLiteral("missing");
    const Reply reply = Call(call);
    EXPECT_THAT(reply.tokens, ElementsAre(0xAA, 0xFE));
    EXPECT_EQ(reply.dones[0].status, Done::Error);
}

TEST_F(RequestTest, SeveralCallsShareOneMessage) {
    tds::RpcCall call;
    call.name = QStringLiteral("p");
    const Reply reply = Run(tds::PacketType::Rpc, tds::RpcRequest{{}, {call, call}});
    EXPECT_EQ(reply.dones.size(), 6u);
    EXPECT_EQ(reply.dones[2].status, Done::More);
    EXPECT_EQ(reply.dones[5].status, 0);
}

TEST_F(RequestTest, UnsupportedParameterIsRefusedAndTheSessionGoesOn) {
    tds::RpcCall call;
    call.name = QStringLiteral("p");
    tds::RpcParameter parameter;
    parameter.type.code = tds::TypeCode::Variant;
    parameter.type.size = 8009;
    call.parameters = {parameter};
    const Reply reply = Call(call);
    EXPECT_THAT(reply.tokens, ElementsAre(0xAA, 0xFD));
    EXPECT_EQ(reply.messages[0].number, 8009);
    EXPECT_TRUE(reply.messages[0].text.contains(QStringLiteral("0x62 (byte 30)")));
    EXPECT_EQ(Run("rows 1").rows.size(), 1u);
}

TEST_F(RequestTest, EngineKnowsTheClientByItsOwnWords) {
    EXPECT_EQ(server_.Engine().Client(), QStringLiteral("desk/Checks"));
}

TEST_F(RequestTest, TransactionRequestsCarryNamesAndIsolation) {
    tds::TransactionRequest request;
    request.name = QStringLiteral("outer");
    request.isolation = 4;
    Run(tds::PacketType::Transaction, request);
    request.kind = tds::TransactionRequest::Kind::Save;
    request.name = QStringLiteral("half");
    const Reply saved = Run(tds::PacketType::Transaction, request);
    EXPECT_TRUE(saved.changes.empty());
    EXPECT_EQ(saved.dones[0].status, Done::InTransaction);
    request.kind = tds::TransactionRequest::Kind::Rollback;
    Run(tds::PacketType::Transaction, request);
    request.kind = tds::TransactionRequest::Kind::Commit;
    request.beginsNext = true;
    request.nextName = QStringLiteral("next");
    request.nextIsolation = 2;
    Run(tds::PacketType::Transaction, request);
    EXPECT_EQ(server_.Engine().Ran(),
              QStringList({QStringLiteral("begin:outer/4"), QStringLiteral("save:half"),
                           QStringLiteral("rollback:half"), QStringLiteral("begin:next/2")}));
}

TEST_F(RequestTest, TransactionRequestsGiveTheirDescriptors) {
    tds::TransactionRequest request;
    const Reply begun = Run(tds::PacketType::Transaction, request);
    EXPECT_THAT(begun.tokens, ElementsAre(0xE3, 0xFD));
    EXPECT_EQ(begun.changes[0].newBytes, QByteArray::fromHex("0102030405060708"));
    EXPECT_EQ(begun.dones[0].status, Done::InTransaction);
    EXPECT_EQ(Run("rows 1").dones[0].status, Done::InTransaction | Done::Count);

    request.kind = tds::TransactionRequest::Kind::Commit;
    request.beginsNext = true;
    const Reply next = Run(tds::PacketType::Transaction, request);
    ASSERT_EQ(next.changes.size(), 2u);
    EXPECT_EQ(next.changes[0].kind, tds::EnvChange::Kind::CommitTransaction);
    EXPECT_EQ(next.changes[1].kind, tds::EnvChange::Kind::BeginTransaction);

    request.kind = tds::TransactionRequest::Kind::Rollback;
    request.beginsNext = false;
    const Reply back = Run(tds::PacketType::Transaction, request);
    EXPECT_EQ(back.changes[0].kind, tds::EnvChange::Kind::RollbackTransaction);
    EXPECT_EQ(back.dones[0].status, 0);
}

TEST_F(RequestTest, BulkLoadIsRefusedByName) {
    client_.Send(tds::PacketType::Bulk, {});
    const auto reply = client_.Receive();
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->Has(40517));
    EXPECT_EQ(Run("rows 1").rows.size(), 1u);
}

TEST_F(RequestTest, ResetIsAcknowledgedAndGoesBackToTheFirstDatabase) {
    Run("use mirel");
    client_.SendBatch(QStringLiteral("rows 1"), 0x09);
    const auto reply = client_.Receive();
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->changes[0].kind, tds::EnvChange::Kind::ResetAcknowledged);
    EXPECT_EQ(Run("use x").changes[0].oldText, QStringLiteral("master"));
}

TEST_F(RequestTest, RequestTakenBackIsNotRun) {
    client_.SendBatch(QStringLiteral("rows 1"), 0x03);
    const auto reply = client_.Receive();
    ASSERT_TRUE(reply);
    EXPECT_THAT(reply->tokens, ElementsAre(0xFD));
    EXPECT_TRUE(server_.Engine().Ran().isEmpty());
}

TEST_F(RequestTest, BatchInManyPacketsIsOneBatch) {
    std::vector<std::byte> body(22 + 2 * 100'000, std::byte{0x20});
    const auto headers = tds::AllHeaders{};
    tds::BufferWriter writer;
    headers.Encode(writer);
    std::copy(writer.Written().begin(), writer.Written().end(), body.begin());
    for (size_t at = 23; at < body.size(); at += 2) body[at] = std::byte{0};
    for (size_t at = 0; at < body.size(); at += 4000) {
        const size_t count = std::min<size_t>(4000, body.size() - at);
        client_.Send(tds::PacketType::Batch, std::span(body).subspan(at, count),
                     at + count == body.size() ? 1 : 0);
    }
    ASSERT_TRUE(client_.Receive());
    EXPECT_EQ(server_.Engine().Ran().first().size(), 6 + 100'000);
}

TEST_F(RequestTest, WantOfMemoryIsAnErrorOfTheRequestAlone) {
    EXPECT_TRUE(Run("memory").Has(701));
    EXPECT_EQ(Run("rows 1").rows.size(), 1u);
}

TEST_F(RequestTest, AttentionStopsEndlessRowsInAMessageOfItsOwn) {
    client_.SendBatch(QStringLiteral("endless"));
    ASSERT_TRUE(Eventually([&] { return server_.Engine().RowsSent() > 1000; }));
    client_.SendAttention();
    const auto cut = client_.Receive();
    ASSERT_TRUE(cut);
    EXPECT_THAT(cut->tokens, ElementsAre(0x81, 0xD1, 0xFD));
    EXPECT_EQ(cut->dones[0].status & Done::Attention, 0);
    const auto ack = client_.Receive();
    ASSERT_TRUE(ack);
    EXPECT_THAT(ack->tokens, ElementsAre(0xFD));
    EXPECT_EQ(ack->dones[0].status, Done::Attention);
    EXPECT_EQ(Run("rows 2").rows.size(), 2u);
}

TEST_F(RequestTest, AttentionReachesAStatementThatSaysNothing) {
    client_.SendBatch(QStringLiteral("busy"));
    client_.SendAttention();
    const auto cut = client_.Receive();
    ASSERT_TRUE(cut);
    EXPECT_THAT(cut->tokens, ElementsAre(0xFD));
    EXPECT_EQ(cut->dones[0].status, 0);
    const auto ack = client_.Receive();
    ASSERT_TRUE(ack);
    EXPECT_THAT(ack->tokens, ElementsAre(0xFD));
    EXPECT_EQ(ack->dones[0].status, Done::Attention);
    EXPECT_EQ(Run("rows 2").rows.size(), 2u);
}

TEST_F(RequestTest, AttentionBehindTheEndIsAcknowledged) {
    Run("rows 1");
    client_.SendAttention();
    const auto ack = client_.Receive();
    ASSERT_TRUE(ack);
    EXPECT_EQ(ack->dones[0].status, Done::Attention);
    EXPECT_EQ(Run("rows 2").rows.size(), 2u);
}

}  // namespace quarv::localdb::server
