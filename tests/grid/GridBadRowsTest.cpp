// Rows whose members raise, one after another, while the grid is worked: it stays consistent, and
// goes on once they have ceased to.
#include "GridFixture.h"

namespace quarv::test {
namespace {

enum class Member { VisibleIndex, SetVisibleIndex, Status, Value, SetValue, IsEmpty };

class BadRow : public FakeRow {
  public:
    std::optional<Member> bad;

    qint16 VisibleIndex() const override { return At(Member::VisibleIndex), visible; }
    void SetVisibleIndex(qint16 position) override {
        At(Member::SetVisibleIndex);
        visible = position;
    }
    qint32 PersistStatus() const override { return At(Member::Status), 0; }
    quarv::Value ColumnValue(qint16 column) const override {
        At(Member::Value);
        return FakeRow::ColumnValue(column);
    }
    void SetColumnValue(qint16 column, const quarv::Value& value) override {
        At(Member::SetValue);
        FakeRow::SetColumnValue(column, value);
    }
    bool IsEmpty() const override { return At(Member::IsEmpty), true; }

  private:
    void At(Member member) const {
        if (bad == member) throw RuntimeError(RuntimeError::DivisionByZero);
    }
};

class GridBadRowsTest : public GridFixture, public testing::WithParamInterface<Member> {
  protected:
    // The state agrees with itself.
    void ExpectConsistent() const {
        if (state.currentColumn == 0) {
            EXPECT_EQ(editors.shown, Kind::None);
        } else {
            EXPECT_NE(editors.shown, Kind::None);
            EXPECT_NE(state.currentRow, nullptr);
        }
        if (state.mode != GridMode::NoRow) {
            EXPECT_NE(state.currentRow, nullptr);
        }
        if (state.currentPosition > 0) {
            ASSERT_LE(state.currentPosition, state.rows->Count());
            EXPECT_EQ(state.rows->Items(state.currentPosition), state.currentRow);
        }
        for (const RowRef& line : state.lines) EXPECT_NE(line, nullptr);
    }
    // What it raises is the event's; only what is left counts.
    template <typename Action>
    void Try(Action action) {
        static_cast<void>(Raised(action));
        ExpectConsistent();
    }
};

INSTANTIATE_TEST_SUITE_P(Members, GridBadRowsTest,
                         testing::Values(Member::VisibleIndex, Member::SetVisibleIndex,
                                         Member::Status, Member::Value, Member::SetValue,
                                         Member::IsEmpty));

TEST_P(GridBadRowsTest, LeaveTheGridConsistentAndUsable) {
    auto rows = std::make_shared<KelEditGridRowList>();
    const auto bad = std::make_shared<BadRow>();
    rows->Add(std::make_shared<FakeRow>());
    rows->Add(bad);
    for (int i = 0; i < 12; ++i) rows->Add(std::make_shared<FakeRow>());
    Fill(rows, ColumnsOf({6000, 4000}));
    host.onAddRow = [&bad](RowRef& row) {
        auto added = std::make_shared<BadRow>();
        added->bad = bad->bad;
        row = added;
    };
    bool helper = false;
    editing.Select(2, 1);
    bad->bad = GetParam();
    Try([&] { Click(0, 400); });
    Try([&] { Click(1, 2000); });
    Try([&] { editing.EnterKey(); });
    Try([&] { editing.Escape(); });
    Try([&] { editing.ScrollVertically(2); });
    screen.horizontalValue = 100;
    Try([&] { editing.ScrollHorizontally(100); });
    Try([&] { editing.AddRowMode(helper); });
    Try([&] { Click(0, 400); });
    Try([&] { editing.DeleteCurrentRow(); });
    Try([&] { layout.DataHasChanged(); });
    Try([&] { editing.ChangeToSetup(); });
    Try([&] { editing.CommitAnyChanges(); });

    bad->bad.reset();
    layout.SetRowList(PlainRows(3));
    Click(1, 2000);
    ExpectConsistent();
    EXPECT_EQ(state.currentPosition, 2);
    EXPECT_EQ(editors.shown, Kind::Text);
    EXPECT_EQ(screen.verticalValue, state.topRow->VisibleIndex());
    EXPECT_EQ(screen.horizontalValue, state.horizontalOffset);
}

}  // namespace
}  // namespace quarv::test
