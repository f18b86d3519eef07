#include "TokenChecks.h"
#include "localdb/tds/ReturnStatus.h"

namespace quarv::localdb::tds {

TEST(ReturnStatusTest, IsASignedNumber) {
    const ReturnStatus read = ExpectTokenBytes<ReturnStatus>({-6}, "79 FA FF FF FF");
    EXPECT_EQ(read.value, -6);
}

}  // namespace quarv::localdb::tds
