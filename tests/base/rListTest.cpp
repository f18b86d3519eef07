#include "base/rList.h"

#include <memory>

#include "base/ListControl.h"
#include "support/Raised.h"

namespace quarv {

namespace {

struct Thing : Object {};

ObjectRef NewThing() {
    return std::make_shared<Thing>();
}

}  // namespace

TEST(rList, FindsNumbersByValueAndObjectsByIdentity) {
    const ObjectRef one = NewThing();
    rList list;
    list.Add(Value(u"5"));
    list.Add(5);
    list.Add(one);
    list.Add(5.0);
    EXPECT_EQ(list.Find(5), 2);
    EXPECT_EQ(list.Find(Value(u"5")), 1);
    EXPECT_EQ(list.Find(one), 3);
    EXPECT_EQ(list.Find(NewThing()), -1);
    EXPECT_EQ(list.Find(6), -1);
    EXPECT_TRUE(list.IsPresent(one));
    EXPECT_FALSE(list.IsPresent(Value::Null()));
}

TEST(rList, ClearReleasesObjectsAndLeavesZeros) {
    const ObjectRef one = NewThing();
    rList list;
    list.Add(one);
    list.Add(Value(u"x"));
    EXPECT_EQ(one.use_count(), 2);
    list.Clear();
    EXPECT_EQ(one.use_count(), 1);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Items(1).kind(), Value::Kind::Integer);
    EXPECT_EQ(list.Items(1).ToInteger(), 0);
    EXPECT_EQ(list.Items(2).ToInteger(), 0);
    EXPECT_TRUE(list.Items(3).IsEmpty());
}

TEST(rList, ReferencesAreObjectsOnly) {
    const ObjectRef one = NewThing();
    rList list;
    list.AddReference(one);
    EXPECT_EQ(list.ItemsReference(1), one);
    EXPECT_EQ(Raised([&] { list.AddReference(5); }), 13);
    EXPECT_EQ(list.Count(), 1);
    list.SetItems(1, 5);
    EXPECT_EQ(Raised([&] { list.ItemsReference(1); }), 13);
    EXPECT_EQ(Raised([&] { list.SetItemsReference(1, Value(u"x")); }), 13);
    list.SetItemsReference(1, ObjectRef());
    EXPECT_EQ(list.ItemsReference(1), nullptr);
}

TEST(rList, RemoveKeepsTheOldLastSlot) {
    rList list;
    for (int i = 1; i <= 3; ++i) list.Add(i);
    list.Remove(1);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Items(1).ToInteger(), 2);
    EXPECT_EQ(list.Items(2).ToInteger(), 3);
    EXPECT_EQ(list.Items(3).ToInteger(), 3);
}

TEST(rList, RemoveReferenceBlanksTheOldLastSlot) {
    const ObjectRef one = NewThing();
    const ObjectRef other = NewThing();
    rList list;
    list.Add(7);  // what goes may be anything
    list.Add(one);
    list.Add(other);
    list.RemoveReference(1);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.ItemsReference(1), one);
    EXPECT_EQ(list.ItemsReference(2), other);
    EXPECT_EQ(list.ItemsReference(3), nullptr);
}

TEST(rList, RemoveReferenceOverValuesMovesNothing) {
    rList list;
    list.Add(NewThing());
    list.Add(NewThing());
    list.Add(5);
    const ObjectRef first = list.ItemsReference(1);
    EXPECT_EQ(Raised([&] { list.RemoveReference(1); }), 13);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.ItemsReference(1), first);
}

TEST(rList, CopyAppends) {
    rList source;
    source.Add(1);
    source.Add(Value(u"x"));
    rList list;
    list.Add(0);
    list.Copy(source);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.Items(3).Text(), "x");
    list.Copy(list);
    EXPECT_EQ(list.Count(), 6);
    EXPECT_EQ(list.Items(6).Text(), "x");
}

TEST(rList, FillsAListControlByName) {
    rList list;
    list.Add(5);
    list.Add(Value(u"x"));
    ListControl control;
    list.AddToListControl(control);
    EXPECT_EQ(control.entries, (QStringList{"5", "x"}));
    list.Add(Value::Null());
    EXPECT_EQ(Raised([&] { list.AddToListControl(control); }), 94);
}

TEST(rList, GrowsByElevenSlotsUpToSixteenBits) {
    rList list;
    for (int i = 0; i < 11; ++i) list.Add(i);
    EXPECT_EQ(Raised([&] { list.Items(21); }), 0);
    EXPECT_EQ(Raised([&] { list.Items(22); }), 9);
    for (int i = 11; i < 32757; ++i) list.Add(i);
    EXPECT_EQ(Raised([&] { list.Add(0); }), 6);
    EXPECT_EQ(list.Count(), 32757);
    EXPECT_EQ(list.Find(32756), 32757);
}

}  // namespace quarv
