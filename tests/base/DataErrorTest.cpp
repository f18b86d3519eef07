#include "base/DataError.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv {

TEST(DataError, CarriesWhatTheServerSaid) {
    const DataError error(-2147217900, "Incorrect syntax near 'x'.", "42000", 102, 3);
    EXPECT_EQ(error.Number(), -2147217900);
    EXPECT_EQ(error.Description(), u"Incorrect syntax near 'x'.");
    EXPECT_EQ(error.SqlState(), u"42000");
    EXPECT_EQ(error.NativeError(), 102);
    EXPECT_EQ(error.Line(), 3);
}

}  // namespace quarv
