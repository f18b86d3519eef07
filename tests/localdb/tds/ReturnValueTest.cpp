#include "TokenChecks.h"
#include "localdb/tds/ReturnValue.h"

namespace quarv::localdb::tds {

TEST(ReturnValueTest, CarriesTypeAndValue) {
    ReturnValue value;
    value.ordinal = 2;
    value.name = QStringLiteral("@a");
    value.type.code = TypeCode::IntN;
    value.type.size = 4;
    value.value = {false, QByteArray::fromHex("07000000")};
    const ReturnValue read = ExpectTokenBytes<ReturnValue>(
        value, "AC 02 00 02 40 00 61 00 01 00 00 00 00 00 00 26 04 04 07 00 00 00");
    EXPECT_EQ(read.name, QStringLiteral("@a"));
    EXPECT_EQ(read.value, value.value);
}

}  // namespace quarv::localdb::tds
