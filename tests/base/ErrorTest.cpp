#include "base/DataError.h"
#include "base/RuntimeError.h"
#include "support/Raised.h"

namespace quarv {

TEST(RuntimeError, CarriesNumberAndText) {
    const RuntimeError error(RuntimeError::SubscriptOutOfRange);
    EXPECT_EQ(error.Number(), 9);
    EXPECT_EQ(error.Description(), u"Subscript out of range");
    EXPECT_STREQ(error.what(), "9: Subscript out of range");
}

TEST(RuntimeError, AppendsDetail) {
    EXPECT_EQ(RuntimeError(RuntimeError::NoSuchMember, "Colour").Description(),
              u"No such property or method: Colour");
}

TEST(RuntimeError, KnowsEachNumber) {
    const std::pair<RuntimeError::Code, int> codes[] = {
        {RuntimeError::InvalidProcedureCall, 5},   {RuntimeError::Overflow, 6},
        {RuntimeError::SubscriptOutOfRange, 9},    {RuntimeError::DivisionByZero, 11},
        {RuntimeError::TypeMismatch, 13},          {RuntimeError::FileNotFound, 53},
        {RuntimeError::PermissionDenied, 70},      {RuntimeError::PathFileAccess, 75},
        {RuntimeError::ObjectNotSet, 91},          {RuntimeError::NullAsText, 94},
        {RuntimeError::InvalidPropertyValue, 380}, {RuntimeError::NoSuchMember, 438},
        {RuntimeError::ElementNotFound, 35601},    {RuntimeError::KeyNotUnique, 35602},
    };
    for (const auto& [code, number] : codes) {
        const RuntimeError error(code);
        EXPECT_EQ(error.Number(), number);
        EXPECT_NE(error.Description(), u"Unknown error") << number;
    }
}

TEST(DataError, CarriesWhatTheServerSaid) {
    const DataError error(-2147217900, "Incorrect syntax near 'x'.", "42000", 102, 3);
    EXPECT_EQ(error.Number(), -2147217900);
    EXPECT_EQ(error.Description(), u"Incorrect syntax near 'x'.");
    EXPECT_EQ(error.SqlState(), u"42000");
    EXPECT_EQ(error.NativeError(), 102);
    EXPECT_EQ(error.Line(), 3);
}

}  // namespace quarv
