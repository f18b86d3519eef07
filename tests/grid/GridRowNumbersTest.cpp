#include "grid/GridRowNumbers.h"

#include <gtest/gtest.h>

#include "GridFakes.h"

namespace quarv::test {
namespace {

TEST(GridRowNumbers, WithoutDeletedRowsNumbersArePositionsLessOne) {
    const RowListRef rows = PlainRows(3);
    GridRowNumbers numbers;
    EXPECT_EQ(numbers.PositionOf(*rows, 0), 1);
    EXPECT_EQ(numbers.PositionOf(*rows, 2), 3);
    EXPECT_EQ(numbers.NumberAt(*rows, 3), 2);
}

TEST(GridRowNumbers, DeletedRowsHaveNoNumber) {
    const RowListRef rows = RowsOf({1, 0, 0, 1, 0});
    GridRowNumbers numbers;
    EXPECT_EQ(numbers.PositionOf(*rows, 0), 2);
    EXPECT_EQ(numbers.PositionOf(*rows, 2), 5);
    EXPECT_EQ(numbers.NumberAt(*rows, 1), -1);
    EXPECT_EQ(numbers.NumberAt(*rows, 5), 2);
}

TEST(GridRowNumbers, OutsideTheRowsThereIsNothing) {
    const RowListRef rows = RowsOf({1, 0});
    GridRowNumbers numbers;
    EXPECT_EQ(numbers.PositionOf(*rows, -1), 0);
    EXPECT_EQ(numbers.PositionOf(*rows, 1), 0);
    EXPECT_EQ(numbers.PositionOf(*rows, 2), 0);
    EXPECT_EQ(numbers.NumberAt(*rows, 0), -1);
    EXPECT_EQ(numbers.NumberAt(*rows, 3), -1);
}

TEST(GridRowNumbers, ADeletedRowThatKeptItsNumberIsPassedOver) {
    const RowListRef rows = PlainRows(4);
    GridRowNumbers numbers;
    EXPECT_EQ(numbers.PositionOf(*rows, 1), 2);
    rows->Items(2)->SetPersistStatus(KelEditGridRow::Deleted);
    rows->RenumberVisibleFields();
    EXPECT_EQ(numbers.PositionOf(*rows, 1), 3);
    EXPECT_EQ(numbers.PositionOf(*rows, 2), 4);
}

TEST(GridRowNumbers, ARowInAnothersPlaceIsFoundWithTheSameCounts) {
    const RowListRef rows = RowsOf({0, 1, 0});
    GridRowNumbers numbers;
    EXPECT_EQ(numbers.PositionOf(*rows, 1), 3);
    rows->Remove(1);
    rows->Add(std::make_shared<FakeRow>());
    EXPECT_EQ(numbers.PositionOf(*rows, 0), 2);
    EXPECT_EQ(numbers.PositionOf(*rows, 1), 3);
}

// The defaults of a row keep no number.
class NumberlessRow : public KelEditGridRow {};

TEST(GridRowNumbers, RowsThatKeepNoNumberAreFoundByWalking) {
    auto rows = std::make_shared<KelEditGridRowList>();
    for (int i = 0; i < 3; ++i) rows->Add(std::make_shared<NumberlessRow>());
    GridRowNumbers numbers;
    EXPECT_EQ(numbers.PositionOf(*rows, 2), 3);
    EXPECT_EQ(numbers.NumberAt(*rows, 2), 1);
}

class CountedRow : public FakeRow {
  public:
    using FakeRow::FakeRow;
    qint32 PersistStatus() const override {
        ++asked;
        return FakeRow::PersistStatus();
    }
    static inline int asked = 0;
};

TEST(GridRowNumbers, AWalkOverAllRowsAsksEachOnlyAFewTimes) {
    auto rows = std::make_shared<KelEditGridRowList>();
    rows->Add(std::make_shared<CountedRow>(KelEditGridRow::Deleted));
    for (int i = 0; i < 1000; ++i) rows->Add(std::make_shared<CountedRow>());
    GridRowNumbers numbers;
    CountedRow::asked = 0;
    for (int i = 0; i < 1000; ++i) {
        const auto position = static_cast<qint16>(i + 2);
        EXPECT_EQ(numbers.PositionOf(*rows, i), position);
        EXPECT_EQ(numbers.NumberAt(*rows, position), i);
    }
    EXPECT_LT(CountedRow::asked, 10'000);
}

}  // namespace
}  // namespace quarv::test
