#include "base/Object.h"

#include <gtest/gtest.h>

namespace quarv {

namespace {

struct Thing : Object {};

}  // namespace

TEST(Object, BorrowedReferenceDoesNotOwn) {
    Thing thing;
    const ObjectRef reference = Borrow(&thing);
    EXPECT_EQ(reference.get(), &thing);
    EXPECT_EQ(reference.use_count(), 0);
    EXPECT_EQ(Borrow(nullptr), nullptr);
}

}  // namespace quarv
