#include "localdb/engine/Guid.h"

#include <gtest/gtest.h>

namespace quarv::localdb::engine {

TEST(Guid, SortsByItsLastGroupFirst) {
    const auto bytes = Guid::Parse("00112233-4455-6677-8899-AABBCCDDEEFF");
    ASSERT_TRUE(bytes);
    const Guid::Bytes sorted = {'\xAA', '\xBB', '\xCC', '\xDD', '\xEE', '\xFF', '\x88', '\x99',
                                '\x77', '\x66', '\x55', '\x44', '\x33', '\x22', '\x11', '\x00'};
    EXPECT_EQ(*bytes, sorted);
    EXPECT_EQ(Guid::ToText({bytes->data(), bytes->size()}), "00112233-4455-6677-8899-AABBCCDDEEFF");
}

TEST(Guid, TextsThatAreNone) {
    for (const char* text :
         {"", "{", "00112233-4455-6677-8899-AABBCCDDEEF", "{00112233-4455-6677-8899-AABBCCDDEEFF",
          "00112233+4455-6677-8899-AABBCCDDEEFF", "0011223G-4455-6677-8899-AABBCCDDEEFF"}) {
        EXPECT_FALSE(Guid::Parse(text)) << text;
    }
}

}  // namespace quarv::localdb::engine
