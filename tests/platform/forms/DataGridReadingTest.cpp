#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QWheelEvent>

#include "DataGridFixture.h"
#include "support/ScrollBarMouse.h"

namespace quarv::forms {
namespace {

using test::HeldThumb;

class DataGridReading : public DataGridFixture {
  protected:
    void Wheel(int notches) {
        const QPointF at = grid.viewport()->rect().center();
        QWheelEvent event(at, grid.viewport()->mapToGlobal(at), {}, QPoint(0, -120 * notches),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(grid.viewport(), &event);
    }
    bool WaitsFor() const {
        const QCursor* cursor = QApplication::overrideCursor();
        return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    }
    void ExpectAllReadAndLastShown() {
        EXPECT_TRUE(source.AtEnd());
        EXPECT_EQ(source.greatest, 50'000'000) << "more cannot be shown";
        EXPECT_EQ(grid.model()->rowCount(), 10'000);
        EXPECT_TRUE(ShowsLastRow());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
};

TEST_F(DataGridReading, ShowingReadsAScreenAndOneMoreAtOnce) {
    grid.SetDataSource(&source);
    EXPECT_GE(grid.model()->rowCount(), Screen() + 1);
    EXPECT_GT(AskedAhead(), 0);
    EXPECT_LE(AskedAhead(), Screen() + 1);
    EXPECT_FALSE(source.AtEnd());
    Settle();
    EXPECT_LE(AskedAhead(), Screen() + 1);
}

TEST_F(DataGridReading, AShortResultIsReadToItsEnd) {
    source.Refresh({u"a"_qs}, 3);
    grid.SetDataSource(&source);
    EXPECT_TRUE(source.AtEnd());
    EXPECT_EQ(grid.model()->rowCount(), 3);
}

TEST_F(DataGridReading, ABlockIsOneInsertion) {
    grid.SetDataSource(&source);
    const int calls = source.calls;
    QSignalSpy inserted(grid.model(), &QAbstractItemModel::rowsInserted);
    Bar().setValue(static_cast<int>(Screen()));
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(source.calls, calls + 1);
    EXPECT_EQ(grid.model()->rowCount(), source.RowCount());
}

TEST_F(DataGridReading, ScrollingWithinWhatWasReadReadsNothing) {
    grid.SetDataSource(&source);
    Bar().setValue(static_cast<int>(Screen()));
    const int calls = source.calls;
    Bar().setValue(0);
    Bar().setValue(3);
    Settle();
    EXPECT_EQ(source.calls, calls);
}

TEST_F(DataGridReading, TheWheelReadsNoMoreThanTwoScreensAhead) {
    grid.SetDataSource(&source);
    for (int i = 0; i < 100; ++i) {
        Wheel(1);
        Settle();
        ASSERT_LE(AskedAhead(), 2 * Screen());
        ASSERT_GE(source.RowCount() - 1 - LastVisible(), Screen());
        ASSERT_LT(Bar().value(), Bar().maximum()) << "more to come must show";
    }
    EXPECT_GT(Bar().value(), 200);
}

TEST_F(DataGridReading, PageDownReadsNoMoreThanTwoScreensAhead) {
    grid.SetDataSource(&source);
    int before = 0;
    for (int i = 0; i < 30; ++i) {
        Press(Qt::Key_PageDown);
        ASSERT_LE(AskedAhead(), 2 * Screen());
        ASSERT_GE(grid.currentIndex().row(), before + Screen() - 2) << "a whole page each";
        before = grid.currentIndex().row();
    }
    EXPECT_LT(source.RowCount(), 10'000);
}

TEST_F(DataGridReading, AHeldThumbStaysUnderTheMouseAndReadsTwoScreensAhead) {
    grid.SetDataSource(&source);
    Settle();
    const int maximum = Bar().maximum();
    {
        HeldThumb thumb(Bar());
        thumb.MoveBy(40);
        EXPECT_GT(Bar().value(), 0);
        EXPECT_EQ(Bar().maximum(), maximum);
        EXPECT_LE(AskedAhead(), 2 * Screen());
        EXPECT_FALSE(source.AtEnd());
        Settle();
        EXPECT_EQ(Bar().maximum(), maximum);
    }
    EXPECT_GT(Bar().maximum(), maximum);
    EXPECT_FALSE(source.AtEnd());
}

TEST_F(DataGridReading, DraggingTheThumbToItsEndReadsToTheEnd) {
    grid.SetDataSource(&source);
    Settle();
    bool waited = true;
    source.onRead = [&] { waited = waited && WaitsFor(); };
    {
        HeldThumb thumb(Bar());
        thumb.MoveBy(1000);
    }
    EXPECT_TRUE(waited);
    ExpectAllReadAndLastShown();
}

TEST_F(DataGridReading, TheBarsOwnWayToItsEndReadsToTheEnd) {
    grid.SetDataSource(&source);
    Bar().triggerAction(QAbstractSlider::SliderToMaximum);
    ExpectAllReadAndLastShown();
}

TEST_F(DataGridReading, CtrlEndReadsToTheEnd) {
    grid.SetDataSource(&source);
    bool waited = true;
    source.onRead = [&] { waited = waited && WaitsFor(); };
    Press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_TRUE(waited);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(9'999, 2));
    ExpectAllReadAndLastShown();
}

TEST_F(DataGridReading, CtrlShiftEndSelectsToTheEnd) {
    grid.SetDataSource(&source);
    Press(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier);
    ExpectAllReadAndLastShown();
    ASSERT_EQ(grid.selectionModel()->selection().size(), 1);
    EXPECT_EQ(grid.selectionModel()->selection().first().height(), 10'000);
}

TEST_F(DataGridReading, ASelectionThatGrewWhileReadingShrinksAgain) {
    grid.SetDataSource(&source);
    for (int i = 0; i < 6; ++i) Press(Qt::Key_PageDown, Qt::ShiftModifier);
    const int grown = grid.currentIndex().row();
    EXPECT_GT(grown, 4 * Screen());
    for (int i = 0; i < 4; ++i) Press(Qt::Key_PageUp, Qt::ShiftModifier);
    ASSERT_EQ(grid.selectionModel()->selection().size(), 1);
    const QItemSelectionRange block = grid.selectionModel()->selection().first();
    EXPECT_EQ(block.top(), 0);
    EXPECT_EQ(block.bottom(), grid.currentIndex().row());
    EXPECT_LT(block.bottom(), grown);
}

TEST_F(DataGridReading, EndStaysInItsRow) {
    grid.SetDataSource(&source);
    const int calls = source.calls;
    Press(Qt::Key_End);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(0, 2));
    EXPECT_EQ(source.calls, calls);
}

TEST_F(DataGridReading, SelectAllReadsToTheEnd) {
    grid.SetDataSource(&source);
    Press(Qt::Key_A, Qt::ControlModifier);
    ExpectAllReadAndLastShown();
    ASSERT_EQ(grid.selectionModel()->selection().size(), 1);
    const QItemSelectionRange all = grid.selectionModel()->selection().first();
    EXPECT_EQ(all.height(), 10'000);
    EXPECT_EQ(all.width(), 3);
}

TEST_F(DataGridReading, ATallerGridReadsOn) {
    grid.SetHeight(1500);
    grid.SetDataSource(&source);
    const qint64 before = source.RowCount();
    grid.SetHeight(6000);
    Settle();
    EXPECT_GT(source.RowCount(), before);
    EXPECT_GE(source.RowCount() - 1 - LastVisible(), Screen() - 1);
    EXPECT_LE(AskedAhead(), 2 * Screen());
}

TEST_F(DataGridReading, ASmallerFontReadsOn) {
    QFont font = grid.font();
    font.setPointSize(40);
    grid.setFont(font);
    grid.SetDataSource(&source);
    const int tall = grid.rowHeight(0);
    font.setPointSize(8);
    grid.setFont(font);
    Settle();
    EXPECT_LT(grid.rowHeight(0), tall);
    EXPECT_GE(source.RowCount() - 1 - LastVisible(), Screen() - 1);
}

TEST_F(DataGridReading, AHiddenGridReadsForTheScreenItWillHave) {
    grid.SetVisible(false);
    grid.SetDataSource(&source);
    EXPECT_GE(source.RowCount(), 20);
    EXPECT_LT(source.RowCount(), 100);
}

TEST_F(DataGridReading, AMillionRowsTakeTheWidthOfTheirNumbers) {
    tester.reset();
    grid.SetDataSource(&source);
    const int before = grid.verticalHeader()->width();
    source.Refresh({u"a"_qs}, 1'000'000);
    grid.SetDataSource(&source);
    Press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid.model()->rowCount(), 1'000'000);
    EXPECT_TRUE(ShowsLastRow());
    EXPECT_GE(grid.verticalHeader()->width() - before,
              4 * grid.verticalHeader()->fontMetrics().horizontalAdvance(u'0'));
}

}  // namespace
}  // namespace quarv::forms
