#include "grid/KelEditGridRowList.h"

#include <gtest/gtest.h>

#include "GridFakes.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using test::FakeRow;
using test::PlainRows;
using test::RowAt;
using test::RowsOf;

constexpr int Subscript = 9;
constexpr int Overflow = 6;
constexpr int NotSet = 91;

TEST(KelEditGridRowList, StartsEmptyWithRoomForTen) {
    const KelEditGridRowList list;
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Items(10), nullptr);
    EXPECT_EQ(Raised([&] { list.Items(11); }), Subscript);
    EXPECT_EQ(Raised([&] { list.Items(0); }), Subscript);
}

TEST(KelEditGridRowList, TheEleventhRowMakesRoomForTenMore) {
    const RowListRef list = PlainRows(11);
    EXPECT_EQ(list->Items(21), nullptr);
    EXPECT_EQ(Raised([&] { list->Items(22); }), Subscript);
}

TEST(KelEditGridRowList, AddNumbersTheVisibleRows) {
    const RowListRef list = RowsOf({0, 1, 0});
    EXPECT_EQ(RowAt(list, 1).visible, 1);
    EXPECT_EQ(RowAt(list, 2).visible, 0);
    EXPECT_EQ(RowAt(list, 3).visible, 2);
    RowAt(list, 2).SetPersistStatus(0);
    list->Add(std::make_shared<FakeRow>());
    EXPECT_EQ(RowAt(list, 2).visible, 2);
    EXPECT_EQ(RowAt(list, 4).visible, 4);
}

TEST(KelEditGridRowList, AddUnnumberedLeavesTheNumbersToTheHost) {
    KelEditGridRowList list;
    const auto first = std::make_shared<FakeRow>();
    const auto second = std::make_shared<FakeRow>();
    list.AddUnnumbered(first);
    list.AddUnnumbered(second);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Items(2), second);
    EXPECT_EQ(second->visible, 0);
    EXPECT_EQ(list.RenumberVisibleFields(), 2);
    EXPECT_EQ(second->visible, 2);
    EXPECT_EQ(Raised([&] { list.AddUnnumbered(nullptr); }), NotSet);
}

TEST(KelEditGridRowList, ADeletedRowKeepsItsNumber) {
    const RowListRef list = PlainRows(3);
    RowAt(list, 2).SetPersistStatus(1);
    EXPECT_EQ(list->RenumberVisibleFields(), 2);
    EXPECT_EQ(RowAt(list, 1).visible, 1);
    EXPECT_EQ(RowAt(list, 2).visible, 2);
    EXPECT_EQ(RowAt(list, 3).visible, 2);
}

TEST(KelEditGridRowList, OnlyStatusOneIsDeleted) {
    EXPECT_EQ(RowsOf({-1, 0, 1, 2, 3})->RenumberVisibleFields(), 4);
    EXPECT_EQ(KelEditGridRowList().RenumberVisibleFields(), 0);
}

TEST(KelEditGridRowList, FirstVisiblePassesDeletedRows) {
    const RowListRef list = RowsOf({0, 0});
    EXPECT_EQ(list->FirstVisible(), list->Items(1));
    RowAt(list, 1).SetPersistStatus(1);
    EXPECT_EQ(list->FirstVisible(), list->Items(2));
    RowAt(list, 2).SetPersistStatus(1);
    EXPECT_EQ(list->FirstVisible(), nullptr);
    EXPECT_EQ(KelEditGridRowList().FirstVisible(), nullptr);
}

TEST(KelEditGridRowList, RemoveClosesTheGapAndNumbersNothing) {
    const RowListRef list = PlainRows(3);
    const RowRef second = list->Items(2);
    const RowRef third = list->Items(3);
    list->Remove(1);
    EXPECT_EQ(list->Count(), 2);
    EXPECT_EQ(list->Items(1), second);
    EXPECT_EQ(list->Items(2), third);
    EXPECT_EQ(list->Items(3), nullptr);
    EXPECT_EQ(RowAt(list, 1).visible, 2);
    EXPECT_EQ(RowAt(list, 2).visible, 3);
}

TEST(KelEditGridRowList, RemoveFromAnEmptyListRaises) {
    KelEditGridRowList list;
    EXPECT_EQ(Raised([&] { list.Remove(1); }), Subscript);
    EXPECT_EQ(list.Count(), 0);
}

TEST(KelEditGridRowList, ClearReleasesTheRowsAndKeepsTheRoom) {
    const RowListRef list = PlainRows(11);
    const std::weak_ptr<KelEditGridRow> last = list->Items(11);
    list->Clear();
    EXPECT_EQ(list->Count(), 0);
    EXPECT_TRUE(last.expired());
    EXPECT_EQ(list->Items(21), nullptr);
    list->Add(std::make_shared<FakeRow>());
    EXPECT_EQ(RowAt(list, 1).visible, 1);
}

TEST(KelEditGridRowList, CopySharesTheRows) {
    const RowListRef from = PlainRows(2);
    const RowListRef to = PlainRows(1);
    to->Copy(*from);
    EXPECT_EQ(to->Count(), 3);
    EXPECT_EQ(to->Items(3), from->Items(2));
    EXPECT_EQ(RowAt(from, 2).visible, 3);
}

TEST(KelEditGridRowList, IndexOfKnowsTheVeryRow) {
    const RowListRef list = PlainRows(2);
    EXPECT_EQ(list->IndexOf(list->Items(2)), 2);
    EXPECT_EQ(list->IndexOf(std::make_shared<FakeRow>()), -1);
    EXPECT_EQ(KelEditGridRowList().IndexOf(list->Items(1)), -1);
}

TEST(KelEditGridRowList, ARowMayStandInItTwice) {
    const auto row = std::make_shared<FakeRow>();
    KelEditGridRowList list;
    list.Add(row);
    list.Add(row);
    EXPECT_EQ(list.Count(), 2);
    EXPECT_EQ(row->visible, 2);
}

TEST(KelEditGridRowList, NoRowIsRefused) {
    KelEditGridRowList list;
    EXPECT_EQ(Raised([&] { list.Add(nullptr); }), NotSet);
    EXPECT_EQ(list.Count(), 0);
}

// Without rows of its own, so that the quadratic numbering costs nothing here.
TEST(KelEditGridRowList, RoomFor32758IsRefused) {
    KelEditGridRowList list;
    list.EnsureCanHold(32757);
    EXPECT_EQ(list.Items(32767), nullptr);
    KelEditGridRowList other;
    EXPECT_EQ(Raised([&] { other.EnsureCanHold(32758); }), Overflow);
}

TEST(KelEditGridRowList, RemoveBeyondTheCountTakesTheLastRow) {
    const RowListRef list = PlainRows(3);
    const RowRef second = list->Items(2);
    list->Remove(100);
    EXPECT_EQ(list->Count(), 2);
    EXPECT_EQ(list->Items(2), second);
    EXPECT_EQ(Raised([&] { list->Remove(0); }), Subscript);
    EXPECT_EQ(list->Count(), 2);
}

}  // namespace
}  // namespace quarv
