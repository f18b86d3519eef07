#include "base/RuntimeError.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

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

TEST(RuntimeError, SaysThatAKeyIsNotUnique) {
    EXPECT_EQ(RuntimeError(RuntimeError::KeyNotUnique, "_tbl_Orders").Description(),
              u"Key is not unique in collection: _tbl_Orders");
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

}  // namespace quarv
