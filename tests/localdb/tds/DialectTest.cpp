// What the versions of the protocol have different, by hand-typed bytes.
#include "localdb/tds/Dialect.h"

#include "TokenChecks.h"
#include "localdb/tds/ColMetadata.h"
#include "localdb/tds/Done.h"
#include "localdb/tds/ReturnValue.h"
#include "localdb/tds/RpcRequest.h"
#include "localdb/tds/ServerMessage.h"
#include "localdb/tds/SqlBatch.h"

namespace quarv::localdb::tds {

namespace {

// The token's bytes in version 7.1 are `hex`, both ways; every cut of them is seen.
template <typename T>
T ExpectOldBytes(const T& token, std::string_view hex) {
    EXPECT_EQ(Written([&](ByteWriter& writer) { token.Encode(writer, Dialect::V71); }),
              ToHex(Hex(hex)));
    ExpectEveryCutIsSeen(hex, [](ByteReader& reader) { T::Decode(reader, Dialect::V71); });
    const auto bytes = Hex(hex);
    ByteReader reader(bytes);
    T read = T::Decode(reader, Dialect::V71);
    EXPECT_TRUE(reader.AtEnd());
    return read;
}

}  // namespace

struct VersionCase {
    uint32_t stated;
    std::optional<Dialect> spoken;
    uint32_t answered;
};

class Versions : public testing::TestWithParam<VersionCase> {};

TEST_P(Versions, AreAnsweredInKind) {
    EXPECT_EQ(DialectOf(GetParam().stated), GetParam().spoken);
    if (GetParam().spoken) {
        EXPECT_EQ(AckVersionOf(GetParam().stated), GetParam().answered);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Versions,
                         testing::Values(VersionCase{0x74000004, Dialect::V74, 0x74000004},
                                         VersionCase{0x730B0003, Dialect::V73B, 0x730B0003},
                                         VersionCase{0x730A0003, Dialect::V73A, 0x730A0003},
                                         VersionCase{0x72090002, Dialect::V72, 0x72090002},
                                         VersionCase{0x71000001, Dialect::V71, 0x71000001},
                                         VersionCase{0x71000000, Dialect::V71, 0x07010000},
                                         VersionCase{0x70000000, std::nullopt, 0},
                                         VersionCase{0x74000005, std::nullopt, 0},
                                         VersionCase{0, std::nullopt, 0},
                                         VersionCase{0xFFFFFFFF, std::nullopt, 0}));

TEST(DialectTest, RefusalGoesOutInTheNearestVersion) {
    EXPECT_EQ(NearestDialect(0x70000000), Dialect::V71);
    EXPECT_EQ(NearestDialect(0x75000000), Dialect::V74);
    EXPECT_EQ(NearestDialect(0x72090002), Dialect::V72);
}

TEST(DialectTest, OldDoneCountsIn32Bits) {
    const Done done{Token::Done, Done::More | Done::Count, 0xC1, 258};
    EXPECT_EQ(ExpectOldBytes(done, "FD 11 00 C1 00 02 01 00 00"), done);
}

TEST(DialectTest, OldMessageHasAShortLine) {
    ServerMessage message;
    message.number = 208;
    message.severity = 16;
    message.text = QStringLiteral("no");
    message.server = QStringLiteral("s");
    message.line = 3;
    EXPECT_EQ(
        ExpectOldBytes(message, "AA 12 00 D0 00 00 00 01 10 02 00 6E 00 6F 00 01 73 00 00 03 00"),
        message);
}

TEST(DialectTest, OldMessageKeepsTheLargestLineThatItCan) {
    ServerMessage message;
    message.line = 70000;
    EXPECT_EQ(Written([&](ByteWriter& w) { message.Encode(w, Dialect::V71); }).substr(39, 5),
              "FF FF");
}

TEST(DialectTest, OldColumnHasAShortUserTypeAndOneTableName) {
    ColumnInfo column;
    column.name = QStringLiteral("t");
    column.userType = 0x50;
    column.flags = ColumnInfo::Nullable;
    column.type.code = TypeCode::Text;
    column.type.size = 0x7FFFFFFF;
    column.table = {QStringLiteral("a"), QStringLiteral("b")};
    const ColMetadata read = ExpectOldBytes(
        ColMetadata{{column}},
        "81 01 00 50 00 01 00 23 FF FF FF 7F 09 04 D0 00 34 03 00 61 00 2E 00 62 00 01 74 00");
    EXPECT_EQ(read.columns[0], column);
}

TEST(DialectTest, OldReturnValueHasAShortUserType) {
    ReturnValue value;
    value.name = QStringLiteral("@a");
    value.type.code = TypeCode::IntN;
    value.type.size = 4;
    value.value = {false, QByteArray::fromHex("07000000")};
    ExpectOldBytes(value, "AC 00 00 02 40 00 61 00 01 00 00 00 00 26 04 04 07 00 00 00");
}

TEST(DialectTest, OldRequestsBeginWithoutHeaders) {
    EXPECT_EQ(SqlBatch::Decode(Hex("67 00 6F 00"), Dialect::V71).sql, QStringLiteral("go"));
    SqlBatch batch;
    batch.sql = QStringLiteral("go");
    EXPECT_EQ(Written([&](ByteWriter& w) { batch.Encode(w, Dialect::V71); }), "67 00 6F 00");
    EXPECT_TRUE(SqlBatch::Decode({}, Dialect::V71).sql.isEmpty());
}

TEST(DialectTest, OldCallsHaveASeparatorOfTheirOwn) {
    const auto bytes = Hex("FF FF 0C 00 00 00 80 01 00 70 00 00 00");
    const RpcRequest request = RpcRequest::Decode(bytes, Dialect::V71);
    ASSERT_EQ(request.calls.size(), 2u);
    EXPECT_EQ(request.calls[0].procedureId, 12);
    EXPECT_EQ(request.calls[1].name, QStringLiteral("p"));
    EXPECT_EQ(Written([&](ByteWriter& w) { request.Encode(w, Dialect::V71); }), ToHex(bytes));
}

}  // namespace quarv::localdb::tds
