#include "base/RObjectList.h"

#include <memory>

#include "support/Raised.h"

namespace quarv {

namespace {

struct Thing : Object {};

ObjectRef NewThing() {
    return std::make_shared<Thing>();
}

}  // namespace

TEST(RObjectList, AddGivesTheObject) {
    RObjectList list;
    const ObjectRef one = NewThing();
    EXPECT_EQ(list.Add(one), one);
    EXPECT_EQ(list.Add(nullptr), nullptr);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Items(1), one);
    EXPECT_EQ(list.Items(2), nullptr);
}

TEST(RObjectList, AddIfAssignedLeavesOutNoObject) {
    RObjectList list;
    EXPECT_EQ(list.AddIfAssigned(nullptr), nullptr);
    EXPECT_EQ(list.Count(), 0);
    const ObjectRef one = NewThing();
    EXPECT_EQ(list.AddIfAssigned(one), one);
    EXPECT_EQ(list.Count(), 1);
}

TEST(RObjectList, FindsTheSameObjectOnly) {
    RObjectList list;
    const ObjectRef one = NewThing();
    list.Add(NewThing());
    list.Add(one);
    list.Add(one);
    EXPECT_EQ(list.Find(one), 2);
    EXPECT_TRUE(list.IsPresent(Borrow(one.get())));
    EXPECT_EQ(list.Find(NewThing()), -1);
    EXPECT_FALSE(list.IsPresent(nullptr));
}

TEST(RObjectList, RemoveAboveTheCountDoesNothing) {
    RObjectList list;
    list.Add(NewThing());
    list.Remove(2);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_NE(list.Items(1), nullptr);
    list.Clear();
    list.Remove(1);
    EXPECT_EQ(list.Count(), 0);
}

TEST(RObjectList, RemoveBlanksTheOldLastSlot) {
    RObjectList list;
    const ObjectRef one = NewThing();
    list.Add(one);
    list.Remove(1);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Items(1), nullptr);
    EXPECT_EQ(one.use_count(), 1);

    const ObjectRef other = NewThing();
    list.Add(one);
    list.Add(other);
    list.Remove(1);
    EXPECT_EQ(list.Items(1), other);
    EXPECT_EQ(list.Items(2), nullptr);
}

TEST(RObjectList, ClearReleasesTheReferences) {
    RObjectList list;
    const ObjectRef one = NewThing();
    list.Add(one);
    list.Clear();
    EXPECT_EQ(one.use_count(), 1);
    EXPECT_EQ(list.Items(1), nullptr);
}

TEST(RObjectList, LastItemOfAnEmptyListIsNoObject) {
    RObjectList list;
    EXPECT_EQ(list.LastItem(), nullptr);
    const ObjectRef one = NewThing();
    list.Add(NewThing());
    list.Add(one);
    EXPECT_EQ(list.LastItem(), one);
}

TEST(RObjectList, CopyAppends) {
    RObjectList source;
    const ObjectRef one = NewThing();
    source.Add(one);
    source.Add(nullptr);
    RObjectList list;
    list.Add(NewThing());
    list.Copy(source);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.Items(2), one);
    EXPECT_EQ(list.Items(3), nullptr);
}

TEST(RObjectList, PositionsAndCountsHaveTheirLimits) {
    RObjectList list;
    EXPECT_EQ(Raised([&] { list.Items(11); }), 9);
    EXPECT_EQ(Raised([&] { list.SetItems(-1, nullptr); }), 9);
    for (int i = 0; i < 32757; ++i) list.Add(nullptr);
    EXPECT_EQ(Raised([&] { list.Add(nullptr); }), 6);
    EXPECT_EQ(list.Count(), 32757);
}

}  // namespace quarv
