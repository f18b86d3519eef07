#include "platform/forms/DataGridCopy.h"

#include <gtest/gtest.h>

#include <QStandardItemModel>

#include "ScriptedRowSource.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

class BlockText : public testing::Test {
  protected:
    ScriptedRowSource source{{u"a"_qs, u"b"_qs, u"c"_qs}, 10};

    void SetUp() override { source.ReadTo(9); }
    // As the value stands in a block, beside another cell.
    QString InBlock(const Value& value) {
        source.cell = [&value](qint64, int column) { return column == 0 ? value : Value(1); };
        return TextOfBlock(source, {0, 0, 0, 1});
    }
};

TEST_F(BlockText, HasTabsAndLines) {
    EXPECT_EQ(TextOfBlock(source, {1, 1, 2, 2}), u"r1c1\tr1c2\nr2c1\tr2c2\n"_qs);
    EXPECT_EQ(TextOfBlock(source, {3, 0, 3, 2}), u"r3c0\tr3c1\tr3c2\n"_qs);
    EXPECT_EQ(TextOfBlock(source, {0, 1, 1, 1}), u"r0c1\nr1c1\n"_qs);
}

TEST_F(BlockText, HasTheNamesOfItsColumns) {
    EXPECT_EQ(TextOfBlock(source, {1, 1, 1, 2}, {u"a"_qs, u"x\ty"_qs, u"c"_qs}),
              u"\"x\ty\"\tc\nr1c1\tr1c2\n"_qs);
    EXPECT_EQ(TextOfBlock(source, {1, 1, 1, 1}, {u"a"_qs, u"b"_qs, u"c"_qs}), u"b\nr1c1\n"_qs);
}

TEST_F(BlockText, OfOneCellIsItsValue) {
    source.cell = [](qint64, int) { return Value(u"\"a\tb\"\n"); };
    EXPECT_EQ(TextOfBlock(source, {1, 1, 1, 1}), u"\"a\tb\"\n"_qs);
}

TEST_F(BlockText, GoesAroundAllThatIsSelected) {
    QStandardItemModel cells(10, 3);
    QItemSelection selected(cells.index(4, 1), cells.index(5, 1));
    selected.append(QItemSelectionRange(cells.index(2, 2)));
    const CellBlock block = BlockAround(selected);
    EXPECT_EQ(TextOfBlock(source, block), u"r2c1\tr2c2\nr3c1\tr3c2\nr4c1\tr4c2\nr5c1\tr5c2\n"_qs);
}

TEST_F(BlockText, OfNothingIsEmpty) {
    EXPECT_EQ(TextOfBlock(source, {}), u""_qs);
}

TEST_F(BlockText, QuotesWhatWouldBeReadAsMore) {
    EXPECT_EQ(InBlock(Value(u"a\tb")), u"\"a\tb\"\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(u"a\rb")), u"\"a\rb\"\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(u"a\n\"b\"")), u"\"a\n\"\"b\"\"\"\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(u"\"a")), u"\"\"\"a\"\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(u"a\"b\"")), u"a\"b\"\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(u"")), u"\t1\n"_qs);
}

TEST_F(BlockText, IsWholeAndTheSameInEveryLocale) {
    EXPECT_EQ(InBlock(Value::Null()), u"NULL\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(true)), u"1\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(QByteArray(100, '\xAA'))), u"0x"_qs + QString(200, u'A') + u"\t1\n"_qs);
    EXPECT_EQ(InBlock(Value(QString(5000, u'x'))), QString(5000, u'x') + u"\t1\n"_qs);
}

TEST_F(BlockText, IsRefusedBeyondItsLimit) {
    const CellBlock block{0, 0, 1, 1};  // 20 units
    EXPECT_EQ(TextOfBlock(source, block, {}, 20).size(), 20);
    EXPECT_EQ(Raised([&] { TextOfBlock(source, block, {}, 19); }), RuntimeError::Overflow);
    const CellBlock cell{0, 0, 0, 0};
    EXPECT_EQ(TextOfBlock(source, cell, {}, 4).size(), 4);
    EXPECT_EQ(Raised([&] { TextOfBlock(source, cell, {}, 3); }), RuntimeError::Overflow);
    source.cell = [](qint64, int) { return Value(u"\"\""); };
    EXPECT_EQ(Raised([&] { TextOfBlock(source, {0, 0, 0, 1}, {}, 5); }), RuntimeError::Overflow);
}

TEST_F(BlockText, OfACellThatIsNotThereRaises) {
    EXPECT_EQ(Raised([&] {
                  TextOfBlock(source, {8, 0, 12, 0});
              }),
              RuntimeError::SubscriptOutOfRange);
}

}  // namespace
}  // namespace quarv::forms
