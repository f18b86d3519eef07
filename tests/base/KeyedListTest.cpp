#include "base/KeyedList.h"

#include "base/RNamedList.h"
#include "base/RPairList.h"
#include "support/Raised.h"

namespace quarv {

namespace {

bool IsNoObject(const Value& value) {
    return value.IsObject() && value.ToObject() == nullptr;
}

// What both lists have in common, for keys that are texts.
template <typename List>
class KeyedLists : public testing::Test {
  protected:
    static auto Key(const char* text) { return QString(text); }
    List list_;
};

using BothLists = testing::Types<RNamedList, RPairList>;
TYPED_TEST_SUITE(KeyedLists, BothLists);

}  // namespace

TYPED_TEST(KeyedLists, KeepsOrderAndDuplicates) {
    auto& list = this->list_;
    list.Add(this->Key("b"), 1);
    list.Add(this->Key("a"), 2);
    list.Add(this->Key("b"), 3);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.Keys(2).Text(), "a");
    EXPECT_EQ(list.Values(3).ToInteger(), 3);
    EXPECT_EQ(list.FindKey(this->Key("b")).ToInteger(), 1);
    EXPECT_EQ(list.ValueByKey(this->Key("b")).ToInteger(), 1);
    list.SetValues(3, Value(u"x"));
    EXPECT_EQ(list.Values(3).Text(), "x");
}

TYPED_TEST(KeyedLists, AbsentKeyGivesNoObject) {
    EXPECT_TRUE(IsNoObject(this->list_.FindKey(this->Key("a"))));
    EXPECT_TRUE(IsNoObject(this->list_.ValueByKey(this->Key("a"))));
    EXPECT_FALSE(this->list_.IsPresent(this->Key("a")));
}

TYPED_TEST(KeyedLists, WritingAnAbsentKeyAddsNothing) {
    this->list_.Add(this->Key("a"), 1);
    this->list_.SetValueByKey(this->Key("b"), 2);
    EXPECT_EQ(this->list_.Count(), 1);
    EXPECT_EQ(this->list_.Values(1).ToInteger(), 1);
}

TYPED_TEST(KeyedLists, ClearLeavesTheSlots) {
    auto& list = this->list_;
    list.Add(this->Key("a"), 1);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Keys(1).Text(), "a");
    EXPECT_EQ(list.Values(1).ToInteger(), 1);
    EXPECT_FALSE(list.IsPresent(this->Key("a")));
}

TYPED_TEST(KeyedLists, RemoveMovesKeyAndValueTogetherAndKeepsTheLastSlot) {
    auto& list = this->list_;
    list.Add(this->Key("a"), 1);
    list.Add(this->Key("b"), 2);
    list.Add(this->Key("c"), 3);
    list.Remove(1);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Keys(1).Text(), "b");
    EXPECT_EQ(list.Values(1).ToInteger(), 2);
    EXPECT_EQ(list.Keys(3).Text(), "c");
    EXPECT_EQ(list.Values(3).ToInteger(), 3);
}

TYPED_TEST(KeyedLists, RemoveChecksNothing) {
    this->list_.Remove(1);
    EXPECT_EQ(this->list_.Count(), -1);
}

TYPED_TEST(KeyedLists, BothStoragesGrowByElevenSlots) {
    auto& list = this->list_;
    for (int i = 0; i < 10; ++i) list.Add(this->Key("k"), i);
    EXPECT_EQ(Raised([&] { list.Keys(11); }), 9);
    EXPECT_EQ(Raised([&] { list.Values(11); }), 9);
    list.Add(this->Key("k"), 10);
    EXPECT_EQ(Raised([&] { list.Keys(21); }), 0);
    EXPECT_EQ(Raised([&] { list.Values(21); }), 0);
    EXPECT_EQ(Raised([&] { list.Keys(22); }), 9);
    EXPECT_EQ(Raised([&] { list.SetValues(22, 1); }), 9);
    EXPECT_EQ(Raised([&] { list.Keys(-1); }), 9);
}

TYPED_TEST(KeyedLists, ItemPastTheSixteenBitsOverflows) {
    auto& list = this->list_;
    for (int i = 1; i <= 32757; ++i) list.Add(this->Key("k"), i);
    EXPECT_EQ(Raised([&] { list.Add(this->Key("k"), 0); }), 6);
    EXPECT_EQ(list.Count(), 32757);
    EXPECT_EQ(list.Values(32757).ToInteger(), 32757);
    EXPECT_FALSE(list.IsPresent(this->Key("other")));
}

TYPED_TEST(KeyedLists, AddTakesItsOwnValue) {
    auto& list = this->list_;
    for (int i = 0; i < 10; ++i) list.Add(this->Key("k"), Value(QString("value")));
    list.Add(this->Key("k"), list.Values(1));
    EXPECT_EQ(list.Values(11).Text(), "value");
}

}  // namespace quarv
