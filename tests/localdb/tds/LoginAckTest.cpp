#include "TokenChecks.h"
#include "localdb/tds/LoginAck.h"

namespace quarv::localdb::tds {

TEST(LoginAckTest, VersionStandsBigEndian) {
    LoginAck ack;
    ack.program = QStringLiteral("q");
    ack.version = {15, 0, 0x104D};
    EXPECT_EQ(ExpectTokenBytes<LoginAck>(ack, "AD 0C 00 01 74 00 00 04 01 71 00 0F 00 10 4D"), ack);
}

TEST(LoginAckTest, LengthThatDoesNotFitIsRefused) {
    const auto bytes = Hex("AD 0B 00 01 74 00 00 04 01 71 00 0F 00 10 4D");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  LoginAck::Decode(reader);
              }),
              Fault::TokenLength);
}

}  // namespace quarv::localdb::tds
