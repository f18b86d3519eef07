#include "platform/forms/PropertyBag.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(PropertyBag, GivesBackWhatWasWritten) {
    PropertyBag bag;
    bag.WriteProperty(u"Caption"_qs, Value(u"Run"_qs), Value(u""_qs));
    EXPECT_EQ(bag.ReadProperty(u"Caption"_qs, Value(u""_qs)).ToText(), u"Run"_qs);
    EXPECT_EQ(bag.ReadProperty(u"caption"_qs).ToText(), u"Run"_qs);
}

TEST(PropertyBag, GivesTheDefaultForWhatItDoesNotHold) {
    const PropertyBag bag;
    EXPECT_EQ(bag.ReadProperty(u"Edges"_qs, Value(15)).ToInteger(), 15);
    EXPECT_TRUE(bag.ReadProperty(u"Edges"_qs).IsEmpty());
}

TEST(PropertyBag, DoesNotStoreDefaults) {
    PropertyBag bag;
    bag.WriteProperty(u"Edges"_qs, Value(15), Value(15));
    bag.WriteProperty(u"Text"_qs, Value::Null(), Value::Null());
    bag.WriteProperty(u"None"_qs, Value(), Value());
    EXPECT_EQ(bag.Count(), 0);
}

TEST(PropertyBag, NothingAndZeroAreNotTheSame) {
    PropertyBag bag;
    bag.WriteProperty(u"Edges"_qs, Value(0), Value());
    EXPECT_TRUE(bag.Contains(u"Edges"_qs));
}

TEST(PropertyBag, WritingTheDefaultTakesOutWhatWasStored) {
    PropertyBag bag;
    bag.WriteProperty(u"Down"_qs, Value(true), Value(false));
    EXPECT_TRUE(bag.Contains(u"Down"_qs));
    bag.WriteProperty(u"DOWN"_qs, Value(false), Value(false));
    EXPECT_FALSE(bag.Contains(u"Down"_qs));
}

}  // namespace
}  // namespace quarv::forms
