#include "base/StringList.h"

#include "base/ListControl.h"
#include "support/Raised.h"

namespace quarv {

namespace {

StringList ListOf(std::initializer_list<const char*> items) {
    StringList list;
    for (const char* item : items) list.Add(item);
    return list;
}

// The items 1 to Count.
std::vector<QString> ItemsOf(const StringList& list) {
    std::vector<QString> items;
    for (int i = 1; i <= list.Count(); ++i) items.push_back(list.Items(static_cast<qint16>(i)));
    return items;
}

using Texts = std::vector<QString>;

// The highest slot that does not raise a subscript error.
int UpperBound(const StringList& list) {
    int bound = 0;
    while (bound < 32767 && Raised([&] { list.Items(static_cast<qint16>(bound + 1)); }) == 0)
        ++bound;
    return bound;
}

}  // namespace

TEST(StringList, NewListIsEmpty) {
    const StringList list;
    EXPECT_EQ(list.Count(), 0);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(list.AsCommaList(), "");
}

TEST(StringList, StorageGrowsByElevenSlots) {
    StringList list;
    EXPECT_EQ(UpperBound(list), 10);
    for (int i = 0; i < 10; ++i) list.Add("x");
    EXPECT_EQ(UpperBound(list), 10);
    list.Add("x");
    EXPECT_EQ(UpperBound(list), 21);
    for (int i = 0; i < 10; ++i) list.Add("x");
    EXPECT_EQ(UpperBound(list), 21);
    list.Add("x");
    EXPECT_EQ(UpperBound(list), 32);
    list.Clear();
    EXPECT_EQ(UpperBound(list), 32);
    list.EnsureCanHold(32);
    EXPECT_EQ(UpperBound(list), 32);
    list.EnsureCanHold(40);
    EXPECT_EQ(UpperBound(list), 50);
}

TEST(StringList, PositionsOutsideTheStorageRaise) {
    StringList list = ListOf({"a"});
    EXPECT_EQ(list.Items(0), "");
    EXPECT_EQ(Raised([&] { list.Items(-1); }), 9);
    EXPECT_EQ(Raised([&] { list.Items(11); }), 9);
    EXPECT_EQ(Raised([&] { list.SetItems(11, "x"); }), 9);
    list.SetItems(10, "beyond the count");
    EXPECT_EQ(list.Items(10), "beyond the count");
    EXPECT_EQ(list.Count(), 1);
}

TEST(StringList, ItemPastTheSixteenBitsOverflows) {
    StringList list;
    for (int i = 1; i <= 32757; ++i) list.Add(QString::number(i));
    EXPECT_EQ(Raised([&] { list.Add("one too many"); }), 6);
    EXPECT_EQ(Raised([&] { list.Insert("one too many", 1); }), 6);
    EXPECT_EQ(list.Count(), 32757);
    EXPECT_EQ(list.Items(1), "1");
    EXPECT_EQ(list.Items(32757), "32757");
    EXPECT_EQ(list.Find("32757"), 32757);
}

TEST(StringList, FullStorageHoldsThirtyTwoThousandSevenHundredSixtySeven) {
    StringList list;
    list.EnsureCanHold(32757);
    for (int i = 1; i <= 32767; ++i) list.Add("x");
    EXPECT_EQ(Raised([&] { list.Add("x"); }), 6);
    EXPECT_EQ(list.Count(), 32767);
    EXPECT_EQ(list.Find("y"), -1);
    EXPECT_EQ(list.Text().size(), 3 * 32767);
    list.Remove(1);
    EXPECT_EQ(list.Count(), 32766);
    EXPECT_EQ(Raised([&] { list.EnsureCanHold(32767); }), 0);
}

TEST(StringList, CapacityThatDoesNotFitOverflows) {
    StringList list;
    EXPECT_EQ(Raised([&] { list.EnsureCanHold(32758); }), 6);
    EXPECT_EQ(UpperBound(list), 10);
}

TEST(StringList, FindIgnoresCaseAndGivesTheFirst) {
    const StringList list = ListOf({"one", "Two", "TWO", "\u00c4pfel"});
    EXPECT_EQ(list.Find("two"), 2);
    EXPECT_EQ(list.Find("\u00e4PFEL"), 4);
    EXPECT_EQ(list.Find("three"), -1);
    EXPECT_EQ(list.Find("tw"), -1);
    EXPECT_TRUE(list.IsPresent("ONE"));
    EXPECT_FALSE(list.IsPresent(""));
}

TEST(StringList, AddIfUniqueRefusesWhatDiffersInCaseOnly) {
    StringList list = ListOf({"abc"});
    EXPECT_FALSE(list.AddIfUnique("ABC"));
    EXPECT_EQ(list.Count(), 1);
    EXPECT_TRUE(list.AddIfUnique("abcd"));
    EXPECT_EQ(ItemsOf(list), (Texts{"abc", "abcd"}));
}

struct SplitCase {
    const char* text;
    Texts items;
};

TEST(StringList, AddFromStringSplitsAtLineEndPairs) {
    const SplitCase cases[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\r\n", {"a"}},
        {"x\r\ny\r\n", {"x", "y"}},
        {"a\r\n\r\nb", {"a", "", "b"}},
        {"\r\n", {""}},
        {"a\rb\nc", {"a\rb\nc"}},
        {"a\r\r\nb", {"a\r", "b"}},
    };
    for (const SplitCase& each : cases) {
        StringList list;
        list.AddFromString(each.text);
        EXPECT_EQ(ItemsOf(list), each.items) << each.text;
    }
}

TEST(StringList, ClearLeavesTheTextsInTheirSlots) {
    StringList list = ListOf({"a", "b"});
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.Items(1), "a");
    EXPECT_EQ(list.Find("a"), -1);
    list.Add("c");
    EXPECT_EQ(list.Items(1), "c");
    EXPECT_EQ(list.Items(2), "b");
}

TEST(StringList, InsertMovesLaterItemsUp) {
    StringList list = ListOf({"a", "b"});
    list.Insert("z", 1);
    EXPECT_EQ(ItemsOf(list), (Texts{"z", "a", "b"}));
    list = ListOf({"a", "b"});
    list.Insert("z", 3);
    EXPECT_EQ(ItemsOf(list), (Texts{"a", "b", "z"}));
    list = ListOf({"a", "b"});
    list.Insert("z", 2);
    EXPECT_EQ(ItemsOf(list), (Texts{"a", "z", "b"}));
}

TEST(StringList, InsertTakesItsOwnItem) {
    StringList list = ListOf({"a", "b"});
    list.Insert(list.Items(2), 1);
    EXPECT_EQ(ItemsOf(list), (Texts{"b", "a", "b"}));
}

TEST(StringList, InsertGrowsAFullStorage) {
    StringList list;
    for (int i = 0; i < 10; ++i) list.Add(QString::number(i));
    list.Insert("z", 1);
    EXPECT_EQ(list.Count(), 11);
    EXPECT_EQ(list.Items(1), "z");
    EXPECT_EQ(list.Items(11), "9");
}

TEST(StringList, InsertFarOutsideRaises) {
    StringList list = ListOf({"a"});
    EXPECT_EQ(Raised([&] { list.Insert("z", 11); }), 9);
    EXPECT_EQ(Raised([&] { list.Insert("z", -1); }), 9);
    EXPECT_EQ(list.Count(), 1);
}

TEST(StringList, RemoveMovesLaterItemsDownAndBlanksTheOldLastSlot) {
    StringList list = ListOf({"a", "b", "c"});
    list.Remove(1);
    EXPECT_EQ(ItemsOf(list), (Texts{"b", "c"}));
    EXPECT_EQ(list.Items(3), "");
    list.Remove(2);
    EXPECT_EQ(ItemsOf(list), (Texts{"b"}));
    EXPECT_EQ(list.Items(2), "");
}

TEST(StringList, RemoveDoesNotCheckItsPosition) {
    StringList list = ListOf({"a", "b"});
    list.Remove(7);
    EXPECT_EQ(ItemsOf(list), (Texts{"a"}));
    list.Clear();
    list.Remove(1);
    EXPECT_EQ(list.Count(), -1);
    list.Add("slot 0");
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Items(0), "slot 0");
}

TEST(StringList, CopyAppendsOrReplaces) {
    StringList list = ListOf({"a"});
    list.Copy(ListOf({"b", "c"}));
    EXPECT_EQ(ItemsOf(list), (Texts{"a", "b", "c"}));
    list.Copy(ListOf({"d"}), true);
    EXPECT_EQ(ItemsOf(list), (Texts{"d"}));
    list.AddFromStringList(list);
    EXPECT_EQ(ItemsOf(list), (Texts{"d", "d"}));
}

TEST(StringList, TextEndsEachItemWithALineEnd) {
    EXPECT_EQ(ListOf({"a", "", "b"}).Text(), "a\r\n\r\nb\r\n");
}

TEST(StringList, CommaListDropsEmptyItemsAtTheStart) {
    EXPECT_EQ(ListOf({"a", "b"}).AsCommaList(), "a, b");
    EXPECT_EQ(ListOf({"", "a"}).AsCommaList(), "a");
    EXPECT_EQ(ListOf({"a", ""}).AsCommaList(), "a, ");
    EXPECT_EQ(ListOf({"", "", "a", "b"}).AsCommaList(), "a, b");
}

TEST(StringList, FillsAListControlByName) {
    ListControl control;
    control.AddItem("already there");
    ListOf({"a", "b"}).AddToListControl(control);
    EXPECT_EQ(control.entries, (QStringList{"already there", "a", "b"}));
    QObject other;
    EXPECT_EQ(Raised([&] { ListOf({"a"}).AddToListControl(other); }), 438);
}

}  // namespace quarv
