#include "grid/KelEditGridColumnList.h"

#include <gtest/gtest.h>

#include <limits>

#include "GridFakes.h"
#include "support/Raised.h"

namespace quarv {
namespace {

using test::ColumnsOf;

constexpr int Subscript = 9;
constexpr int Overflow = 6;
constexpr int NotSet = 91;

// The last position that can be read.
qint16 Room(const KelEditGridColumnList& list) {
    qint16 room = 0;
    while (Raised([&] { list.Items(static_cast<qint16>(room + 1)); }) == 0) ++room;
    return room;
}

TEST(KelEditGridColumnList, StartsEmptyWithRoomForTen) {
    const KelEditGridColumnList list;
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(Room(list), 10);
    EXPECT_EQ(list.Items(10), nullptr);
    EXPECT_EQ(Raised([&] { list.Items(0); }), Subscript);
    EXPECT_EQ(Raised([&] { list.Items(-1); }), Subscript);
    EXPECT_EQ(Raised([&] { list.Items(11); }), Subscript);
}

TEST(KelEditGridColumnList, GrowsByElevenPlaces) {
    EXPECT_EQ(Room(*ColumnsOf(std::vector<qint32>(10, 1))), 10);
    EXPECT_EQ(Room(*ColumnsOf(std::vector<qint32>(11, 1))), 21);
    EXPECT_EQ(Room(*ColumnsOf(std::vector<qint32>(21, 1))), 21);
    EXPECT_EQ(Room(*ColumnsOf(std::vector<qint32>(22, 1))), 32);
}

TEST(KelEditGridColumnList, EnsureCanHoldMakesRoomForTenMore) {
    KelEditGridColumnList list;
    list.EnsureCanHold(10);
    EXPECT_EQ(Room(list), 10);
    list.EnsureCanHold(15);
    EXPECT_EQ(Room(list), 25);
    EXPECT_EQ(Raised([&] { list.EnsureCanHold(32758); }), Overflow);
}

TEST(KelEditGridColumnList, PlacesColumnsBesideEachOther) {
    const ColumnListRef list = ColumnsOf({1400, 1400, 900});
    EXPECT_EQ(list->Items(1)->Left, 0);
    EXPECT_EQ(list->Items(2)->Left, 1400);
    EXPECT_EQ(list->Items(3)->Left, 2800);
    EXPECT_EQ(list->Items(1)->Index, 1);
    EXPECT_EQ(list->Items(2)->Index, 2);
    EXPECT_EQ(list->Items(3)->Index, 3);
}

TEST(KelEditGridColumnList, TheFirstColumnKeepsItsLeft) {
    KelEditGridColumnList list;
    auto column = std::make_shared<KelEditGridColumn>();
    column->Left = 55;
    list.Add(column);
    EXPECT_EQ(column->Left, 55);
}

TEST(KelEditGridColumnList, AWidthChangedLaterMovesNobody) {
    const ColumnListRef list = ColumnsOf({1400, 1400});
    list->Items(1)->Width = 3000;
    EXPECT_EQ(list->Items(2)->Left, 1400);
    list->AddColumn(QStringLiteral("C"), 100, 0);
    EXPECT_EQ(list->Items(3)->Left, 2800);
}

TEST(KelEditGridColumnList, APlaceBeyond32BitsIsRefused) {
    const ColumnListRef list = ColumnsOf({std::numeric_limits<qint32>::max(), 1});
    EXPECT_EQ(list->Items(2)->Left, 2147483647);
    EXPECT_EQ(Raised([&] { list->AddColumn(QStringLiteral("C"), 1, 0); }), Overflow);
    EXPECT_EQ(list->Count(), 2);
}

TEST(KelEditGridColumnList, NoColumnIsRefused) {
    KelEditGridColumnList list;
    EXPECT_EQ(Raised([&] { list.Add(nullptr); }), NotSet);
    EXPECT_EQ(list.Count(), 0);
}

TEST(KelEditGridColumnList, AddColumnGivesTheNewColumn) {
    KelEditGridColumnList list;
    const ColumnRef column = list.AddColumn(QStringLiteral("Size"), 900, 3);
    EXPECT_EQ(column, list.Items(1));
    EXPECT_EQ(column->Name, u"Size");
    EXPECT_EQ(column->Width, 900);
    EXPECT_EQ(column->ColType, 3);
    EXPECT_TRUE(column->FileNameOnly);
}

TEST(KelEditGridColumnList, ClearKeepsTheRoom) {
    const ColumnListRef list = ColumnsOf(std::vector<qint32>(11, 100));
    const std::weak_ptr<KelEditGridColumn> first = list->Items(1);
    list->Clear();
    EXPECT_EQ(list->Count(), 0);
    EXPECT_TRUE(first.expired());
    EXPECT_EQ(Room(*list), 21);
    list->AddColumn(QStringLiteral("A"), 100, 0);
    EXPECT_EQ(list->Items(1)->Left, 0);
    EXPECT_EQ(Room(*list), 21);
}

TEST(KelEditGridColumnList, CopySharesAndPlacesAnew) {
    const ColumnListRef from = ColumnsOf({500, 600});
    const ColumnListRef to = ColumnsOf({1000});
    to->Copy(*from);
    EXPECT_EQ(to->Count(), 3);
    EXPECT_EQ(to->Items(2), from->Items(1));
    EXPECT_EQ(from->Items(1)->Left, 1000);
    EXPECT_EQ(from->Items(2)->Left, 1500);
    EXPECT_EQ(from->Items(2)->Index, 3);
    EXPECT_EQ(from->Count(), 2);
}

TEST(KelEditGridColumnList, ACopyOfItselfEnds) {
    const ColumnListRef list = ColumnsOf({500, 600});
    list->Copy(*list);
    EXPECT_EQ(list->Count(), 4);
}

TEST(KelEditGridColumnList, FindIgnoresLetterCase) {
    KelEditGridColumnList list;
    const ColumnRef first = list.AddColumn(QStringLiteral("Name"), 1, 0);
    list.AddColumn(QStringLiteral("NAME"), 1, 0);
    EXPECT_EQ(list.Find(QStringLiteral("NAME")), first);
    EXPECT_EQ(list.Find(QStringLiteral("Nam")), nullptr);
    EXPECT_EQ(KelEditGridColumnList().Find(QStringLiteral("Name")), nullptr);
}

TEST(KelEditGridColumnList, IndexOfKnowsTheVeryColumn) {
    const ColumnListRef list = ColumnsOf({1, 1});
    EXPECT_EQ(list->IndexOf(list->Items(2)), 2);
    EXPECT_EQ(list->IndexOf(std::make_shared<KelEditGridColumn>(*list->Items(1))), -1);
    EXPECT_EQ(KelEditGridColumnList().IndexOf(list->Items(1)), -1);
}

TEST(KelEditGridColumnList, ALeftEdgeBelongsToTheColumnBefore) {
    const ColumnListRef list = ColumnsOf({1400, 1400, 900});
    EXPECT_EQ(list->FindFromX(0), -1);
    EXPECT_EQ(list->FindFromX(1), 1);
    EXPECT_EQ(list->FindFromX(1400), 1);
    EXPECT_EQ(list->FindFromX(1401), 2);
    EXPECT_EQ(list->FindFromX(3700), 3);
    EXPECT_EQ(list->FindFromX(3701), -1);
    EXPECT_EQ(list->FindFromX(-1), -1);
    EXPECT_EQ(KelEditGridColumnList().FindFromX(1), -1);
}

TEST(KelEditGridColumnList, AColumnOfTheListItselfIsStoredAgainThoughTheListGrows) {
    const ColumnListRef list = ColumnsOf(std::vector<qint32>(10, 100));
    list->Add(list->Items(1));
    EXPECT_EQ(list->Items(11), list->Items(1));
    EXPECT_EQ(list->Items(11)->Index, 11);
}

}  // namespace
}  // namespace quarv
