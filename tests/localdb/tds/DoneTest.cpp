#include "TokenChecks.h"
#include "localdb/tds/Done.h"

namespace quarv::localdb::tds {

TEST(DoneTest, CarriesStatusCommandAndCount) {
    const Done done{Token::Done, Done::More | Done::Count, 0xC1, 258};
    const Done read = ExpectTokenBytes<Done>(done, "FD 11 00 C1 00 02 01 00 00 00 00 00 00");
    EXPECT_EQ(read, done);
}

TEST(DoneTest, ThreeKindsHaveThreeTokens) {
    EXPECT_EQ(Encoded(Done{Token::Done, 0, 0, 0}).substr(0, 2), "FD");
    EXPECT_EQ(Encoded(Done{Token::DoneProc, 0, 0, 0}).substr(0, 2), "FE");
    EXPECT_EQ(Encoded(Done{Token::DoneInProc, 0, 0, 0}).substr(0, 2), "FF");
}

TEST(DoneTest, AnotherTokenIsRefused) {
    const auto bytes = Hex("79 11 00 C1 00 02 01 00 00 00 00 00 00");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  Done::Decode(reader);
              }),
              Fault::UnexpectedToken);
}

}  // namespace quarv::localdb::tds
