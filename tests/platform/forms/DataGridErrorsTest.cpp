#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>
#include <new>

#include "DataGridFixture.h"
#include "support/ScrollBarMouse.h"

namespace quarv::forms {
namespace {

class DataGridErrors : public DataGridFixture {
  protected:
    const Error overflow{8115, u"Arithmetic overflow."_qs};
    const Error division{8134, u"Divide by zero."_qs};
    const Error lost{10054, u"The connection is lost."_qs};
};

TEST_F(DataGridErrors, AreToldOnceEachAndTheRowsBehindThemShown) {
    source.Refresh({u"a"_qs}, 20);
    source.RaiseBefore(3, overflow);
    source.RaiseBefore(3, division);
    source.RaiseBefore(20, lost);
    grid.SetDataSource(&source);
    EXPECT_EQ(told, (std::vector<Told>{{8115, u"Arithmetic overflow."_qs},
                                       {8134, u"Divide by zero."_qs},
                                       {10054, u"The connection is lost."_qs}}));
    EXPECT_EQ(grid.model()->rowCount(), 20);
    Settle();
    grid.SetDataSource(&source);
    Press(Qt::Key_End, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(told.size(), 3U);
}

TEST_F(DataGridErrors, OfRowsFarBelowAreToldWhenTheyAreRead) {
    source.RaiseBefore(9'000, overflow);
    source.RaiseBefore(9'500, division);
    grid.SetDataSource(&source);
    Settle();
    EXPECT_TRUE(told.empty());
    Press(Qt::Key_End, Qt::ControlModifier);
    Settle();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told[1].number, 8134);
    EXPECT_EQ(grid.model()->rowCount(), 10'000);
}

TEST_F(DataGridErrors, AreToldWhenAllRowsAreShown) {
    source.Refresh({u"a"_qs}, 20);
    source.RaiseBefore(3, overflow);
    QObject::connect(&grid, &DataGrid::Error, &form, [this] {
        EXPECT_EQ(grid.model()->rowCount(), 20);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    });
    grid.SetDataSource(&source);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(DataGridErrors, AHandlerMayRunAnEventLoopInWhichTheGridIsUsed) {
    source.RaiseBefore(5, overflow);
    source.RaiseBefore(6, division);
    source.RaiseBefore(9'000, lost);
    QEventLoop box;
    int depth = 0;
    QObject::connect(&grid, &DataGrid::Error, &form, [&] {
        ++depth;
        EXPECT_EQ(depth, 1) << "one box at a time";
        QTimer::singleShot(0, &box, [&] {
            Press(Qt::Key_End, Qt::ControlModifier);
            form.grab();
            box.quit();
        });
        box.exec();
        --depth;
    });
    grid.SetDataSource(&source);
    EXPECT_EQ(told, (std::vector<Told>{{8115, u"Arithmetic overflow."_qs},
                                       {8134, u"Divide by zero."_qs},
                                       {10054, u"The connection is lost."_qs}}));
    EXPECT_EQ(grid.model()->rowCount(), 10'000);
}

TEST_F(DataGridErrors, AHandlerMaySetAnotherSource) {
    ScriptedRowSource other({u"b"_qs}, 2);
    source.RaiseBefore(5, overflow);
    source.RaiseBefore(6, division);
    QObject::connect(&grid, &DataGrid::Error, &form, [&](int number) {
        if (number == 8115) grid.SetDataSource(&other);
    });
    grid.SetDataSource(&source);
    EXPECT_EQ(told.size(), 2U);
    EXPECT_EQ(grid.DataSource(), &other);
    EXPECT_EQ(grid.model()->rowCount(), 2);
    form.grab();
}

TEST_F(DataGridErrors, AHandlerThatRaisesEndsThereAlone) {
    source.RaiseBefore(5, overflow);
    source.RaiseBefore(6, division);
    QObject::connect(&grid, &DataGrid::Error, &form,
                     [](int number) { throw quarv::Error(number, u"in the handler"_qs); });
    testing::internal::CaptureStderr();
    grid.SetDataSource(&source);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "8115: in the handler\n8134: in the handler\n");
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(DataGridErrors, AHandlerMayDeleteTheGrid) {
    auto* doomed = new DataGrid(&form, u"Doomed"_qs);
    source.RaiseBefore(1, overflow);
    source.RaiseBefore(2, division);
    source.onRead = [] {};
    int heard = 0;
    QObject::connect(doomed, &DataGrid::Error, &form, [&] {
        ++heard;
        delete doomed;
    });
    doomed->SetDataSource(&source);
    EXPECT_EQ(heard, 1);
}

TEST_F(DataGridErrors, MetWhileTheThumbIsHeldLetItGo) {
    source.RaiseBefore(9'000, overflow);
    grid.SetDataSource(&source);
    Settle();
    test::HeldThumb thumb(Bar());
    thumb.MoveBy(1000);
    EXPECT_TRUE(told.empty()) << "not within the mouse's event";
    Settle();
    EXPECT_EQ(told.size(), 1U);
    EXPECT_FALSE(Bar().isSliderDown());
    EXPECT_TRUE(ShowsLastRow());
}

TEST_F(DataGridErrors, ThatNeverEndAreGivenUp) {
    source.RaiseBefore(0, overflow, 5'000);
    grid.SetDataSource(&source);
    EXPECT_EQ(source.calls, 1000);
    ASSERT_EQ(told.size(), 5U) << "the rest in the last";
    EXPECT_EQ(told[3].description, u"Arithmetic overflow."_qs);
    EXPECT_EQ(told[4].description, u"Arithmetic overflow.\r\n(and 995 more)"_qs);
}

TEST_F(DataGridErrors, NotYetToldAreForgottenWithoutASource) {
    source.RaiseBefore(9'000, overflow);
    grid.SetDataSource(&source);
    Press(Qt::Key_End, Qt::ControlModifier);
    grid.SetDataSource(nullptr);
    Settle();
    EXPECT_TRUE(told.empty());
}

TEST_F(DataGridErrors, OutOfMemoryEndsTheReading) {
    source.onRead = [] { throw std::bad_alloc(); };
    grid.SetDataSource(&source);
    EXPECT_EQ(source.calls, 1);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].number, 0);
    EXPECT_FALSE(told[0].description.isEmpty());
    source.onRead = [] {};
    grid.SetDataSource(nullptr);
}

}  // namespace
}  // namespace quarv::forms
