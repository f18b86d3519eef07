#include "platform/ado/RowStore.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>

#include "base/RuntimeError.h"
#include "support/TextPrinter.h"

namespace quarv::test {

using ado::RowStore;

namespace {

// `value` after it was stored and made again.
Value Stored(const Value& value) {
    RowStore rows(1);
    rows.Append(value);
    const Value again = rows.ValueAt(0, 0);
    EXPECT_EQ(again.kind(), value.kind());
    return again;
}

template <class Action>
int CodeOf(Action action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace

TEST(RowStore, KeepsEmptyNullAndBooleans) {
    EXPECT_TRUE(Stored(Value()).IsEmpty());
    EXPECT_TRUE(Stored(Value::Null()).IsNull());
    EXPECT_TRUE(Stored(true).ToBoolean());
    EXPECT_FALSE(Stored(false).ToBoolean());
}

TEST(RowStore, KeepsIntegersToTheirLimits) {
    for (const qint64 number :
         {qint64{0}, qint64{1}, qint64{-1}, qint64{255}, qint64{-256}, qint64{1} << 40,
          std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()})
        EXPECT_EQ(Stored(number).ToInteger(), number);
}

TEST(RowStore, KeepsFloatingNumbersBitForBit) {
    for (const double number :
         {0.0, -0.0, 1.5, 0.1, -1e308, 5e-324, std::numeric_limits<double>::infinity(), 12345.678,
          -99.99, 0.1 + 0.2})
        EXPECT_EQ(std::bit_cast<quint64>(Stored(number).ToDouble()), std::bit_cast<quint64>(number))
            << number;
    for (const float number : {0.0F, -0.0F, 0.1F, 3.4e38F, 1e-45F})
        EXPECT_EQ(Stored(number).ToDouble(), static_cast<double>(number));
    EXPECT_EQ(Stored(0.1F).ToText(QLocale::c()), QStringLiteral("0.1"));
}

TEST(RowStore, KeepsDecimalsWithTheirScale) {
    for (const char16_t* text : {u"0", u"0.00", u"1.50", u"-0.05", u"18446744073709551616",
                                 u"99999999999999999999999999999999999999",
                                 u"-0.99999999999999999999999999999999999999"}) {
        const auto decimal = Decimal::Parse(QString::fromUtf16(text));
        ASSERT_TRUE(decimal);
        EXPECT_EQ(Stored(*decimal).AsDecimal().ToText(), QString::fromUtf16(text));
    }
}

TEST(RowStore, KeepsTextsUnitByUnit) {
    const QString half = QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b");
    const QString zeros = QString(3, QChar(0)) + QStringLiteral("x") + QChar(0);
    for (const QString& text :
         {QString(QStringLiteral("")), QStringLiteral("abc"), QString(14, u'x'), QString(15, u'y'),
          QString(127, u'z'), QString(128, u'z'), QStringLiteral(u"\u00FF\u00E9"),
          QStringLiteral(u"\u0100"), QStringLiteral(u"\u65E5\u672C\U0001F600"),
          QString(5000, QChar(0x416)), half, zeros})
        EXPECT_EQ(Stored(text).Text(), text);
}

TEST(RowStore, KeepsDatesAndTimesWithFractionAndOffset) {
    for (const char16_t* text :
         {u"2024-02-29", u"0001-01-01", u"23:59:59.9999999", u"00:00:00",
          u"9999-12-31 23:59:59.9999999", u"1900-01-01 00:00:00.000",
          u"2024-01-02 03:04:05.0000001 -14:00", u"2024-01-02 03:04:05.1234567 +05:30",
          u"2024-01-02 03:04:05 +00:00"}) {
        const auto date = DateTime::ParseIso(QString::fromUtf16(text));
        ASSERT_TRUE(date) << QString::fromUtf16(text).toStdString();
        const Value again = Stored(*date);
        EXPECT_EQ(again.AsDateTime(), *date);
        EXPECT_EQ(again.AsDateTime().ToIsoText(), QString::fromUtf16(text));
    }
}

TEST(RowStore, KeepsBytes) {
    for (const QByteArray& bytes : {QByteArray(""), QByteArray("\0\0", 2),
                                    QByteArray("\xFF\x00\x7F\x00", 4), QByteArray(300000, '\0')})
        EXPECT_EQ(Stored(bytes).Bytes(), bytes);
}

TEST(RowStore, GivesTheStartOfALongCell) {
    RowStore rows(5);
    rows.Append(QString(40, u'x'));
    rows.Append(QStringLiteral(u"\u65E5\u672C\u8A9E"));
    rows.Append(QByteArray("\x01\x02\x03\x04", 4));
    rows.Append(123456789);
    rows.Append(Value::Null());
    const CellStart narrow = rows.StartOf(0, 0, 3);
    EXPECT_EQ(narrow.value.Text(), QStringLiteral("xxx"));
    EXPECT_EQ(narrow.length, 40);
    const CellStart wide = rows.StartOf(0, 1, 2);
    EXPECT_EQ(wide.value.Text(), QStringLiteral(u"\u65E5\u672C"));
    EXPECT_EQ(wide.length, 3);
    const CellStart bytes = rows.StartOf(0, 2, 1);
    EXPECT_EQ(bytes.value.Bytes(), QByteArray("\x01", 1));
    EXPECT_EQ(bytes.length, 4);
    const CellStart number = rows.StartOf(0, 3, 1);
    EXPECT_EQ(number.value.ToInteger(), 123456789);
    EXPECT_EQ(number.length, 0);
    EXPECT_TRUE(rows.StartOf(0, 4, 1).value.IsNull());
}

TEST(RowStore, GivesAShortCellWholeAsItsStart) {
    RowStore rows(1);
    rows.Append(QStringLiteral("abc"));
    EXPECT_EQ(rows.StartOf(0, 0, 3).value.Text(), QStringLiteral("abc"));
    EXPECT_EQ(rows.StartOf(0, 0, 100).value.Text(), QStringLiteral("abc"));
    EXPECT_EQ(CodeOf([&] { rows.StartOf(1, 0, 3); }), RuntimeError::SubscriptOutOfRange);
}

TEST(RowStore, RefusesObjectsAndRowsWithoutColumns) {
    RowStore rows(2);
    rows.Append(1);
    EXPECT_EQ(CodeOf([&] { rows.Append(ObjectRef()); }), 13);
    rows.Append(2);
    EXPECT_EQ(rows.RowCount(), 1);
    EXPECT_EQ(rows.ValueAt(0, 1).ToInteger(), 2);
    RowStore none;
    EXPECT_EQ(CodeOf([&] { none.Append(1); }), 5);
}

TEST(RowStore, RefusesPlacesOutsideTheWholeRows) {
    RowStore rows(2);
    for (const int number : {1, 2, 3}) rows.Append(number);
    EXPECT_EQ(rows.RowCount(), 1);
    EXPECT_EQ(rows.ValueAt(0, 1).ToInteger(), 2);
    EXPECT_EQ(CodeOf([&] { rows.ValueAt(1, 0); }), 9);
    EXPECT_EQ(CodeOf([&] { rows.ValueAt(-1, 0); }), 9);
    EXPECT_EQ(CodeOf([&] { rows.ValueAt(0, 2); }), 9);
    EXPECT_EQ(CodeOf([&] { rows.ValueAt(0, -1); }), 9);
}

TEST(RowStore, UnfinishedRowIsGivenUpWhole) {
    constexpr int Columns = 40;
    RowStore rows(Columns);
    for (int i = 0; i < Columns; ++i) rows.Append(i);
    const quint64 before = rows.MemoryUsed();
    for (int i = 0; i < Columns - 1; ++i) rows.Append(QString(9000, u'x'));
    rows.DropUnfinishedRow();
    EXPECT_EQ(rows.MemoryUsed(), before);
    for (int i = 0; i < Columns; ++i) rows.Append(1000 + i);
    EXPECT_EQ(rows.RowCount(), 2);
    for (int i = 0; i < Columns; ++i) {
        EXPECT_EQ(rows.ValueAt(0, i).ToInteger(), i);
        EXPECT_EQ(rows.ValueAt(1, i).ToInteger(), 1000 + i);
    }
}

TEST(RowStore, FindsEveryCellOfManyRowsOfMixedLengths) {
    RowStore rows(3);
    for (int row = 0; row < 20000; ++row) {
        rows.Append(row);
        rows.Append(QString(row % 40, QChar(row % 3 == 0 ? 0x416 : 0x61)));
        rows.Append(row % 7 == 0 ? Value::Null() : Value(row * 0.5));
    }
    ASSERT_EQ(rows.RowCount(), 20000);
    for (int row = 19999; row >= 0; --row) {
        ASSERT_EQ(rows.ValueAt(row, 0).ToInteger(), row);
        ASSERT_EQ(rows.ValueAt(row, 1).Text(),
                  QString(row % 40, QChar(row % 3 == 0 ? 0x416 : 0x61)));
        if (row % 7 == 0)
            ASSERT_TRUE(rows.ValueAt(row, 2).IsNull());
        else
            ASSERT_EQ(rows.ValueAt(row, 2).ToDouble(), row * 0.5);
    }
}

TEST(RowStore, HoldsTheWidestRow) {
    RowStore rows(4096);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4096; ++column) rows.Append(row * 10000 + column);
    EXPECT_EQ(rows.RowCount(), 3);
    EXPECT_EQ(rows.ValueAt(0, 4095).ToInteger(), 4095);
    EXPECT_EQ(rows.ValueAt(2, 0).ToInteger(), 20000);
    EXPECT_EQ(rows.ValueAt(2, 4095).ToInteger(), 24095);
}

TEST(RowStore, HoldsAValueOfAHundredMillionBytesBetweenOthers) {
    RowStore rows(3);
    rows.Append(1);
    {
        QByteArray big(100'000'000, 'b');
        big[0] = 'a';
        big[99'999'999] = 'z';
        rows.Append(big);
    }
    rows.Append(3);
    const QByteArray again = rows.ValueAt(0, 1).Bytes();
    EXPECT_EQ(again.size(), 100'000'000);
    EXPECT_EQ(again.front(), 'a');
    EXPECT_EQ(again.at(50'000'000), 'b');
    EXPECT_EQ(again.back(), 'z');
    EXPECT_EQ(rows.ValueAt(0, 2).ToInteger(), 3);
    EXPECT_LT(rows.MemoryUsed(), quint64{100'200'000});
}

// 100,000 rows of "123456", "Some customer name", "1234.56", "2024-03-05 10:20:30": 50 characters.
TEST(RowStore, TakesAtMostHalfMoreThanTheTextOfUsualRows) {
    RowStore rows(4);
    for (int row = 0; row < 100000; ++row) {
        rows.Append(123456);
        rows.Append(QStringLiteral("Some customer name"));
        rows.Append(*Decimal::Parse(u"1234.56"));
        rows.Append(*DateTime::ParseIso(u"2024-03-05 10:20:30"));
    }
    EXPECT_LE(rows.MemoryUsed(), quint64{7'500'000});
}

}  // namespace quarv::test
