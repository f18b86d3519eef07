#include "base/RNamedList.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv {

TEST(RNamedList, KeysMatchInAnyLetterCase) {
    RNamedList list;
    list.Add("Data Source", Value(u"x"));
    EXPECT_EQ(list.ValueByKey("data source").Text(), "x");
    EXPECT_TRUE(list.IsPresent("DATA SOURCE"));
    EXPECT_FALSE(list.IsPresent("DataSource"));
}

TEST(RNamedList, WritingAKeyChangesEveryMatch) {
    RNamedList list;
    list.Add("a", 1);
    list.Add("b", 2);
    list.Add("A", 3);
    list.SetValueByKey("a", list.Values(2));
    EXPECT_EQ(list.Values(1).ToInteger(), 2);
    EXPECT_EQ(list.Values(2).ToInteger(), 2);
    EXPECT_EQ(list.Values(3).ToInteger(), 2);
    list.SetValueByKey("a", 9);
    EXPECT_EQ(list.Values(1).ToInteger(), 9);
    EXPECT_EQ(list.Values(2).ToInteger(), 2);
    EXPECT_EQ(list.Values(3).ToInteger(), 9);
}

}  // namespace quarv
