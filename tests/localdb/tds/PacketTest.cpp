#include "TokenChecks.h"
#include "localdb/tds/MessageReader.h"
#include "localdb/tds/PacketWriter.h"

namespace quarv::localdb::tds {

namespace {

constexpr size_t Enough = 1 << 20;

// Two packets of one batch, with three bytes and one.
constexpr auto TwoPackets = "01 00 00 0B 00 33 01 00 AA BB CC  01 01 00 09 00 33 02 00 DD";

class Collected final : public PacketOutput {
  public:
    explicit Collected(bool takesEarly = true) : takesEarly_(takesEarly) {}
    bool Take(std::span<const std::byte> packets, bool must) override {
        if (!must && !takesEarly_) return false;
        bytes.insert(bytes.end(), packets.begin(), packets.end());
        ++calls;
        return true;
    }
    std::vector<std::byte> bytes;
    int calls = 0;

  private:
    bool takesEarly_;
};

}  // namespace

TEST(PacketHeaderTest, HasItsBytes) {
    PacketHeader header;
    header.status = packet_status::EndOfMessage;
    header.length = 0x1234;
    header.spid = 51;
    header.id = 7;
    std::array<std::byte, PacketHeader::Size> bytes{};
    header.Encode(bytes);
    EXPECT_EQ(ToHex(bytes), "04 01 12 34 00 33 07 00");
    const PacketHeader read = PacketHeader::Decode(bytes, 0x1234);
    EXPECT_EQ(read.type, PacketType::Reply);
    EXPECT_TRUE(read.EndsMessage());
    EXPECT_EQ(read.length, 0x1234);
    EXPECT_EQ(read.spid, 51);
    EXPECT_EQ(read.id, 7);
}

TEST(MessageReaderTest, JoinsPacketsWhereverTheyAreCut) {
    const auto bytes = Hex(TwoPackets);
    for (size_t cut = 0; cut <= bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        MessageReader reader(512, Enough);
        const auto all = std::span(bytes);
        EXPECT_EQ(reader.Feed(all.first(cut)), cut);
        EXPECT_EQ(reader.HasMessage(), cut == bytes.size());
        EXPECT_EQ(reader.Feed(all.subspan(cut)), bytes.size() - cut);
        ASSERT_TRUE(reader.HasMessage());
        const Message message = reader.Take();
        EXPECT_EQ(message.type, PacketType::Batch);
        EXPECT_EQ(ToHex(message.body), "AA BB CC DD");
        EXPECT_FALSE(message.Ignored());
    }
}

TEST(MessageReaderTest, StopsBehindAWholeMessage) {
    const auto bytes = Hex("06 01 00 08 00 00 01 00  01 01 00 09 00 00 01 00 EE");
    MessageReader reader(512, Enough);
    EXPECT_EQ(reader.Feed(bytes), 8u);
    EXPECT_EQ(reader.Take().type, PacketType::Attention);
    EXPECT_EQ(reader.Feed(std::span(bytes).subspan(8)), 9u);
    EXPECT_EQ(ToHex(reader.Take().body), "EE");
}

TEST(MessageReaderTest, TakenBackMessageSaysSo) {
    const auto bytes = Hex("01 03 00 08 00 00 01 00");
    MessageReader reader(512, Enough);
    reader.Feed(bytes);
    EXPECT_TRUE(reader.Take().Ignored());
}

struct BadPacket {
    const char* bytes;
    Fault fault;
    size_t position;
};

class BadPackets : public testing::TestWithParam<BadPacket> {};

TEST_P(BadPackets, AreRefusedAtTheirPlace) {
    const auto bytes = Hex(GetParam().bytes);
    size_t position = 0;
    EXPECT_EQ(FaultOf(
                  [&] {
                      MessageReader reader(512, 600);
                      reader.Feed(bytes);
                  },
                  &position),
              GetParam().fault);
    EXPECT_EQ(position, GetParam().position);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadPackets,
    testing::Values(BadPacket{"47 45 54 20 2F 20 48 54", Fault::PacketType, 0},  // "GET / HT"
                    BadPacket{"01 01 00 07 00 00 01 00", Fault::PacketLength, 2},
                    BadPacket{"01 01 02 01 00 00 01 00", Fault::PacketLength, 2},
                    BadPacket{"01 01 FF FF 00 00 01 00", Fault::PacketLength, 2},
                    BadPacket{"01 00 00 09 00 00 01 00 AA 03 01 00 09 00 00 02 00 BB",
                              Fault::PacketTypeChanged, 9}));

TEST(MessageReaderTest, MessageBeyondItsLimitIsRefusedBeforeItIsHeld) {
    MessageReader reader(512, 600);
    auto packet = Hex("01 00 02 00 00 00 01 00");
    packet.resize(512);
    EXPECT_EQ(reader.Feed(packet), 512u);
    size_t position = 0;
    EXPECT_EQ(FaultOf([&] { reader.Feed(std::span(packet).first(8)); }, &position),
              Fault::MessageTooLong);
    EXPECT_EQ(position, 512u);
}

TEST(MessageReaderTest, EmptyPacketsCountTowardsTheLimit) {
    MessageReader reader(512, 16);
    const auto packet = Hex("01 00 00 08 00 00 01 00");
    reader.Feed(packet);
    reader.Feed(packet);
    EXPECT_EQ(FaultOf([&] { reader.Feed(packet); }), Fault::MessageTooLong);
}

TEST(PacketWriterTest, CutsAtThePacketSizeAndNumbersPackets) {
    Collected out;
    PacketWriter writer(out, 512, 51);
    for (int i = 0; i < 505; ++i) writer.U8(0x11);
    writer.EndMessage();
    ASSERT_EQ(out.bytes.size(), 512u + 9u);
    EXPECT_EQ(ToHex(std::span(out.bytes).first(8)), "04 00 02 00 00 33 01 00");
    EXPECT_EQ(ToHex(std::span(out.bytes).subspan(512)), "04 01 00 09 00 33 02 00 11");
}

TEST(PacketWriterTest, IntegerAcrossThePacketsEdgeIsWhole) {
    Collected out;
    PacketWriter writer(out, 512, 0);
    for (int i = 0; i < 503; ++i) writer.U8(0);
    writer.U32(0x44332211);
    writer.EndMessage();
    EXPECT_EQ(std::to_integer<int>(out.bytes[511]), 0x11);
    EXPECT_EQ(ToHex(std::span(out.bytes).subspan(512)), "04 01 00 0B 00 00 02 00 22 33 44");
}

TEST(PacketWriterTest, FullLastPacketEndsTheMessageItself) {
    Collected out;
    PacketWriter writer(out, 512, 0);
    for (int i = 0; i < 504; ++i) writer.U8(0);
    writer.EndMessage();
    EXPECT_EQ(out.bytes.size(), 512u);
    EXPECT_EQ(ToHex(std::span(out.bytes).first(8)), "04 01 02 00 00 00 01 00");
}

TEST(PacketWriterTest, WhatIsSentNowLeavesInAShorterPacket) {
    Collected out(false);
    PacketWriter writer(out, 512, 51);
    writer.SendNow();
    EXPECT_EQ(out.calls, 0);
    writer.U8(0x11);
    writer.SendNow();
    EXPECT_EQ(ToHex(out.bytes), "04 00 00 09 00 33 01 00 11");
    for (int i = 0; i < 504; ++i) writer.U8(0x22);
    writer.U8(0x33);
    writer.SendNow();
    ASSERT_EQ(out.bytes.size(), 9u + 512u + 9u);
    EXPECT_EQ(ToHex(std::span(out.bytes).subspan(521)), "04 00 00 09 00 33 03 00 33");
    writer.EndMessage();
    EXPECT_EQ(ToHex(std::span(out.bytes).subspan(530)), "04 01 00 08 00 33 04 00");
}

TEST(PacketWriterTest, EmptyMessageIsOneEmptyPacket) {
    Collected out;
    PacketWriter writer(out, 512, 0);
    writer.EndMessage();
    EXPECT_EQ(ToHex(out.bytes), "04 01 00 08 00 00 01 00");
}

TEST(PacketWriterTest, GathersPacketsThatAreNotTakenAtOnceAndHoldsABoundedNumber) {
    Collected early;
    Collected late(false);
    for (Collected* out : {&early, &late}) {
        PacketWriter writer(*out, 4096, 0);
        for (int i = 0; i < 100'000; ++i) writer.U8(static_cast<uint8_t>(i));
        writer.EndMessage();
    }
    EXPECT_EQ(early.bytes, late.bytes);
    EXPECT_EQ(early.calls, 25);
    EXPECT_EQ(late.calls, 4);
}

TEST(PacketWriterTest, ReadsBackAsOneMessage) {
    Collected out;
    PacketWriter writer(out, 600, 0);
    std::vector<std::byte> sent;
    for (int i = 0; i < 5000; ++i) sent.push_back(static_cast<std::byte>(i * 7));
    writer.Bytes(sent);
    writer.EndMessage();
    MessageReader reader(600, Enough);
    EXPECT_EQ(reader.Feed(out.bytes), out.bytes.size());
    ASSERT_TRUE(reader.HasMessage());
    EXPECT_EQ(reader.Take().body, sent);
}

TEST(PacketWriterTest, NewSizeHoldsForTheNextMessage) {
    Collected out;
    PacketWriter writer(out, 4096, 0);
    writer.EndMessage();
    out.bytes.clear();
    writer.SetPacketSize(512);
    for (int i = 0; i < 505; ++i) writer.U8(0);
    writer.EndMessage();
    EXPECT_EQ(out.bytes.size(), 512u + 9u);
}

}  // namespace quarv::localdb::tds
