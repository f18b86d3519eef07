#include "TokenChecks.h"
#include "localdb/tds/Order.h"

namespace quarv::localdb::tds {

TEST(OrderTest, CountsItsColumnsInBytes) {
    const Order read = ExpectTokenBytes<Order>({{1, 300}}, "A9 04 00 01 00 2C 01");
    EXPECT_EQ(read.columns, (std::vector<uint16_t>{1, 300}));
}

TEST(OrderTest, OddLengthIsRefused) {
    const auto bytes = Hex("A9 03 00 01 00 2C");
    EXPECT_EQ(FaultOf([&] {
                  ByteReader reader(bytes);
                  Order::Decode(reader);
              }),
              Fault::TokenLength);
}

}  // namespace quarv::localdb::tds
