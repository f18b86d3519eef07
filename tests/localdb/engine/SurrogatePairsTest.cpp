#include "localdb/engine/SurrogatePairs.h"

#include <gtest/gtest.h>

namespace quarv::localdb::engine {

TEST(SurrogatePairs, AreTakenApartAndPutTogether) {
    TextArena arena;
    EXPECT_EQ(SplitPairs("a😀", arena), "a\xED\xA0\xBD\xED\xB8\x80");
    EXPECT_EQ(JoinPairs("a\xED\xA0\xBD\xED\xB8\x80z", arena), "a😀z");
    EXPECT_EQ(JoinPairs(SplitPairs("😀😁")), "😀😁");
    EXPECT_EQ(SplitPairs("a€", arena), "a€");
}

TEST(SurrogatePairs, AHalfAloneStays) {
    TextArena arena;
    const std::string high = "\xED\xA0\xBD", low = "\xED\xB8\x80";
    EXPECT_EQ(JoinPairs(high, arena), high);
    EXPECT_EQ(JoinPairs(low + high, arena), low + high);
    EXPECT_EQ(JoinPairs(high + 'a' + low, arena), high + 'a' + low);
    EXPECT_EQ(JoinPairs(high + high + low, arena), high + "😀");
    EXPECT_EQ(JoinPairs("\xED\xA0", arena), "\xED\xA0");
    // A letter of Korean begins with the same byte.
    EXPECT_EQ(JoinPairs("\uD55C\uD55C", arena), "\uD55C\uD55C");
}

}  // namespace quarv::localdb::engine
