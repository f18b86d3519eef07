#include "TokenChecks.h"
#include "localdb/tds/Prelogin.h"

namespace quarv::localdb::tds {

namespace {

// Version 15.0.4173, encryption not supported, no instance, thread, MARS off.
constexpr auto PreloginHex =
    "00 00 1A 00 06  01 00 20 00 01  02 00 21 00 01  03 00 22 00 00  04 00 22 00 01  FF"
    "0F 00 10 4D 00 00  02  00  00";

}  // namespace

TEST(PreloginTest, HasItsBytes) {
    Prelogin prelogin;
    prelogin.version = {15, 0, 0x104D};
    EXPECT_EQ(Encoded(prelogin), ToHex(Hex(PreloginHex)));
    const Prelogin read = Prelogin::Decode(Hex(PreloginHex));
    EXPECT_EQ(read.version, prelogin.version);
    EXPECT_EQ(read.encryption, Encryption::NotSupported);
    EXPECT_EQ(read.instance, QByteArray(1, '\0'));
    EXPECT_FALSE(read.mars);
    EXPECT_FALSE(read.fedAuth.has_value());
}

TEST(PreloginTest, UnknownOptionsArePassedOver) {
    // A trace of 36 bytes is announced under 5 and 1 byte under 6; 2 stands in between.
    const Prelogin read =
        Prelogin::Decode(Hex("05 00 10 00 02 01 00 12 00 01 06 00 13 00 01 FF"
                             "AA BB 03 01"));
    EXPECT_EQ(read.encryption, Encryption::Required);
    EXPECT_EQ(read.fedAuth, std::optional(true));
}

TEST(PreloginTest, EveryTruncationIsRefused) {
    const auto bytes = Hex(PreloginHex);
    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        const auto part = std::span(bytes).first(cut);
        const Fault fault = FaultOf([&] { Prelogin::Decode(part); });
        EXPECT_TRUE(fault == Fault::Truncated || fault == Fault::PreloginEntry);
    }
}

TEST(PreloginTest, EntryOutsideTheMessageIsRefusedAtItsPlace) {
    size_t position = 0;
    EXPECT_EQ(FaultOf([] { Prelogin::Decode(Hex("01 FF FF 00 01 FF")); }, &position),
              Fault::PreloginEntry);
    EXPECT_EQ(position, 1u);
    EXPECT_EQ(FaultOf([] { Prelogin::Decode(Hex("01 00 06 FF FF FF")); }), Fault::PreloginEntry);
}

}  // namespace quarv::localdb::tds
