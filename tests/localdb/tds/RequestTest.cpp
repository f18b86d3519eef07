#include "TokenChecks.h"
#include "localdb/tds/RpcRequest.h"
#include "localdb/tds/SqlBatch.h"
#include "localdb/tds/TransactionRequest.h"

namespace quarv::localdb::tds {

namespace {

constexpr auto Headers = "16 00 00 00 12 00 00 00 02 00 00 00 00 00 00 00 00 00 01 00 00 00 ";

std::vector<std::byte> Request(const std::string& rest) {
    return Hex(Headers + rest);
}

// A call of "p" with an nvarchar parameter "@a" = "x".
constexpr auto NamedCall =
    "01 00 70 00 00 00  02 40 00 61 00 00 E7 02 00 09 04 D0 00 34 02 00 78 00";

Fault RpcFault(const std::string& rest, size_t* position = nullptr) {
    return FaultOf([&] { RpcRequest::Decode(Request(rest)); }, position);
}

}  // namespace

TEST(AllHeadersTest, HasItsBytes) {
    AllHeaders headers;
    headers.transaction = 0x0102030405060708;
    const AllHeaders read = ExpectTokenBytes<AllHeaders>(
        headers, "16 00 00 00 12 00 00 00 02 00 08 07 06 05 04 03 02 01 01 00 00 00");
    EXPECT_EQ(read.transaction, headers.transaction);
}

TEST(AllHeadersTest, OtherHeadersArePassedOver) {
    const auto bytes = Hex("0E 00 00 00 0A 00 00 00 03 00 01 02 03 04");
    ByteReader reader(bytes);
    EXPECT_EQ(AllHeaders::Decode(reader).transaction, 0u);
    EXPECT_TRUE(reader.AtEnd());
}

struct BadHeaders {
    const char* bytes;
    Fault fault;
};

class BadHeaderLengths : public testing::TestWithParam<BadHeaders> {};

TEST_P(BadHeaderLengths, AreRefused) {
    const auto bytes = Hex(GetParam().bytes);
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  AllHeaders::Decode(reader);
              }),
              GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadHeaderLengths,
    testing::Values(BadHeaders{"03 00 00 00", Fault::HeadersLength},
                    BadHeaders{"FF FF FF FF 12 00 00 00", Fault::Truncated},
                    BadHeaders{"0A 00 00 00 05 00 00 00 02 00", Fault::HeadersLength},
                    BadHeaders{"0A 00 00 00 00 00 00 00 02 00", Fault::HeadersLength},
                    BadHeaders{"0A 00 00 00 FF FF FF FF 03 00", Fault::Truncated},
                    BadHeaders{"0A 00 00 00 06 00 00 00 02 00", Fault::HeadersLength}));

TEST(SqlBatchTest, IsHeadersAndText) {
    SqlBatch batch;
    batch.sql = QStringLiteral("go");
    EXPECT_EQ(Encoded(batch), std::string(Headers) + "67 00 6F 00");
    EXPECT_EQ(SqlBatch::Decode(Request("67 00 6F 00")).sql, QStringLiteral("go"));
    EXPECT_TRUE(SqlBatch::Decode(Request("")).sql.isEmpty());
}

TEST(SqlBatchTest, OddTextIsRefusedWhereItBegins) {
    size_t position = 0;
    EXPECT_EQ(FaultOf([] { SqlBatch::Decode(Request("67 00 6F")); }, &position), Fault::TextLength);
    EXPECT_EQ(position, 22u);
}

TEST(RpcRequestTest, CallByNameCarriesItsParameters) {
    const RpcRequest request = RpcRequest::Decode(Request(NamedCall));
    ASSERT_EQ(request.calls.size(), 1u);
    const RpcCall& call = request.calls[0];
    EXPECT_EQ(call.name, QStringLiteral("p"));
    EXPECT_EQ(call.procedureId, 0);
    ASSERT_EQ(call.parameters.size(), 1u);
    EXPECT_EQ(call.parameters[0].name, QStringLiteral("@a"));
    EXPECT_EQ(call.parameters[0].type.code, TypeCode::NVarChar);
    EXPECT_EQ(call.parameters[0].value.bytes, QByteArray::fromHex("7800"));
    EXPECT_EQ(Encoded(request), ToHex(Request(NamedCall)));
}

TEST(RpcRequestTest, CallByNumberHasItsName) {
    const RpcRequest request = RpcRequest::Decode(Request("FF FF 0A 00 02 00"));
    EXPECT_EQ(request.calls[0].procedureId, 10);
    EXPECT_EQ(request.calls[0].options, 2);
    EXPECT_TRUE(request.calls[0].name.isEmpty());
    EXPECT_EQ(ProcedureNameOf(10), QStringLiteral("sp_executesql"));
    EXPECT_EQ(ProcedureNameOf(13), QStringLiteral("sp_prepexec"));
    EXPECT_EQ(ProcedureNameOf(15), QStringLiteral("sp_unprepare"));
}

TEST(RpcRequestTest, CallsAreSeparated) {
    const RpcRequest request = RpcRequest::Decode(
        Request(std::string(NamedCall) + "FF" + NamedCall + "FF FF FF 0C 00 00 00"));
    ASSERT_EQ(request.calls.size(), 3u);
    EXPECT_EQ(request.calls[1].parameters.size(), 1u);
    EXPECT_EQ(request.calls[2].procedureId, 12);
}

TEST(RpcRequestTest, EveryTruncationIsRefusedOrShorter) {
    const auto bytes = Request(NamedCall);
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        const auto part = std::span(bytes).first(cut);
        if (cut == 28) {
            // Up to here stands a whole call without parameters.
            EXPECT_TRUE(RpcRequest::Decode(part).calls[0].parameters.empty());
            continue;
        }
        EXPECT_EQ(FaultOf([&] { RpcRequest::Decode(part); }), Fault::Truncated);
    }
}

TEST(RpcRequestTest, UnservedTypeIsUnsupportedAtItsCode) {
    size_t position = 0;
    // sql_variant, a table, a CLR type.
    for (const char* code : {"62", "F3", "F0"}) {
        EXPECT_EQ(RpcFault(std::string("01 00 70 00 00 00 00 00 ") + code, &position),
                  Fault::ParameterType);
        EXPECT_EQ(position, 30u);
    }
    EXPECT_EQ(ProtocolError(Fault::ParameterType, 0).Outcome(), ProtocolError::Kind::Unsupported);
}

TEST(RpcRequestTest, UnknownNumberIsUnsupported) {
    size_t position = 0;
    EXPECT_EQ(RpcFault("FF FF 10 00 00 00", &position), Fault::ProcedureId);
    EXPECT_EQ(position, 22u);
    EXPECT_EQ(RpcFault("FF FF 00 00 00 00"), Fault::ProcedureId);
}

TEST(RpcRequestTest, UnknownParameterStatusIsRefused) {
    EXPECT_EQ(RpcFault("01 00 70 00 00 00 00 04 26 04 00"), Fault::ParameterStatus);
}

TEST(TransactionRequestTest, CommitMayBeginTheNextAtOnce) {
    TransactionRequest request;
    request.kind = TransactionRequest::Kind::Commit;
    request.beginsNext = true;
    EXPECT_EQ(Encoded(request), std::string(Headers) + "07 00 00 01 00 00");
    const auto read = TransactionRequest::Decode(Request("07 00 00 01 00 00"));
    EXPECT_EQ(read.kind, TransactionRequest::Kind::Commit);
    EXPECT_TRUE(read.beginsNext);
}

TEST(TransactionRequestTest, BeginCarriesIsolationAndName) {
    TransactionRequest request;
    request.isolation = 2;
    request.name = QStringLiteral("t");
    EXPECT_EQ(Encoded(request), std::string(Headers) + "05 00 02 02 74 00");
    const auto read = TransactionRequest::Decode(Request("05 00 02 02 74 00"));
    EXPECT_EQ(read.isolation, 2);
    EXPECT_EQ(read.name, QStringLiteral("t"));
}

TEST(TransactionRequestTest, SaveCarriesItsName) {
    TransactionRequest request;
    request.kind = TransactionRequest::Kind::Save;
    request.name = QStringLiteral("t");
    EXPECT_EQ(Encoded(request), std::string(Headers) + "09 00 02 74 00");
    const auto read = TransactionRequest::Decode(Request("09 00 02 74 00"));
    EXPECT_EQ(read.kind, TransactionRequest::Kind::Save);
    EXPECT_EQ(read.name, QStringLiteral("t"));
}

TEST(TransactionRequestTest, EveryTruncationIsRefused) {
    const auto bytes = Request("07 00 02 74 00 01 02 02 75 00");
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        EXPECT_EQ(FaultOf([&] { TransactionRequest::Decode(std::span(bytes).first(cut)); }),
                  Fault::Truncated);
    }
}

TEST(TransactionRequestTest, OtherKindsAreUnsupported) {
    size_t position = 0;
    EXPECT_EQ(FaultOf([] { TransactionRequest::Decode(Request("00 00 00 00")); }, &position),
              Fault::TransactionKind);
    EXPECT_EQ(position, 22u);
}

TEST(TransactionRequestTest, BytesBehindItAreRefused) {
    EXPECT_EQ(FaultOf([] { TransactionRequest::Decode(Request("08 00 00 00 00")); }),
              Fault::TrailingBytes);
}

}  // namespace quarv::localdb::tds
