#include "base/RPairList.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/TextPrinter.h"

namespace quarv {

namespace {

struct Thing : Object {};

}  // namespace

TEST(RPairList, TextKeysMatchExactly) {
    RPairList list;
    list.Add(Value(u"Key"), 1);
    EXPECT_EQ(list.FindKey(Value(u"key")).ToObject(), nullptr);
    EXPECT_EQ(list.FindKey(Value(u"Key")).ToInteger(), 1);
}

TEST(RPairList, NumberKeysMatchNumerically) {
    RPairList list;
    list.Add(5, Value(u"five"));
    EXPECT_EQ(list.FindKey(5.0).Text(), "five");
    EXPECT_FALSE(list.IsPresent(Value(u"5")));
}

TEST(RPairList, ObjectKeysMatchByIdentity) {
    const ObjectRef one = std::make_shared<Thing>();
    const ObjectRef other = std::make_shared<Thing>();
    RPairList list;
    list.Add(one, 1);
    EXPECT_EQ(list.Keys(1).ToObject(), one);
    EXPECT_TRUE(list.IsPresent(one));
    EXPECT_FALSE(list.IsPresent(other));
}

}  // namespace quarv
