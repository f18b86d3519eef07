#include "platform/forms/DataGridModel.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include "ScriptedRowSource.h"
#include "support/TextPrinter.h"

namespace quarv::forms {
namespace {

TEST(DataGridModelTest, TellsOfRowsInOneGo) {
    ScriptedRowSource source({u"a"_qs}, 1000);
    DataGridModel model(nullptr);
    model.SetSource(&source);
    EXPECT_EQ(model.rowCount(), 0);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    source.ReadTo(499);
    EXPECT_EQ(model.rowCount(), 0);
    model.ShowRowsRead();
    model.ShowRowsRead();
    EXPECT_EQ(model.rowCount(), 500);
    EXPECT_EQ(inserted.count(), 1);
}

TEST(DataGridModelTest, ShowsWhatWasReadBefore) {
    ScriptedRowSource source({u"a"_qs}, 1000);
    source.ReadTo(9);
    DataGridModel model(nullptr);
    model.SetSource(&source);
    EXPECT_EQ(model.rowCount(), 10);
    EXPECT_EQ(model.index(9, 0).data().toString(), u"r9c0"_qs);
}

TEST(DataGridModelTest, ShowsAsManyRowsAsAViewCanHold) {
    ScriptedRowSource source({u"a"_qs}, 60'000'000);
    source.ReadTo(59'999'999);
    DataGridModel model(nullptr);
    model.SetSource(&source);
    EXPECT_EQ(model.rowCount(), 50'000'000);
}

TEST(DataGridModelTest, ALongCellIsNotAskedForWhole) {
    class Counting : public ScriptedRowSource {
      public:
        using ScriptedRowSource::ScriptedRowSource;
        CellStart StartOf(qint64, int, qint64 most) const override {
            mostAsked = std::max(mostAsked, most);
            return {Value(QString(most, u'x')), 10'000'000};
        }
        mutable qint64 mostAsked = 0;
    } source({u"a"_qs}, 1);
    source.ReadTo(0);
    DataGridModel model(nullptr);
    model.SetSource(&source);
    EXPECT_EQ(model.index(0, 0).data().toString(), QString(512, u'x') + QChar(0x2026));
    model.index(0, 0).data(Qt::ToolTipRole);
    EXPECT_EQ(source.mostAsked, 1000);
}

}  // namespace
}  // namespace quarv::forms
