#include "platform/forms/DataCellText.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <limits>

#include "base/RuntimeError.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

Decimal DecimalOf(const char16_t* text) {
    return *Decimal::Parse(QStringView(text));
}

DateTime DateOf(const char16_t* iso) {
    return *DateTime::ParseIso(QStringView(iso));
}

struct Case {
    Value value;
    QString shown;
    CellLook look;
};

class CellTexts : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    , CellTexts,
    testing::Values(
        Case{Value(), u""_qs, CellLook::Text}, Case{Value::Null(), u"NULL"_qs, CellLook::Null},
        Case{Value(true), u"1"_qs, CellLook::Text}, Case{Value(false), u"0"_qs, CellLook::Text},
        Case{Value(0), u"0"_qs, CellLook::Number},
        Case{Value(std::numeric_limits<qint64>::min()), u"-9223372036854775808"_qs,
             CellLook::Number},
        Case{Value(1234567), u"1234567"_qs, CellLook::Number},
        Case{Value(0.1F), u"0.1"_qs, CellLook::Number},
        Case{Value(0.1), u"0.1"_qs, CellLook::Number},
        Case{Value(2.0 / 3), u"0.6666666666666666"_qs, CellLook::Number},
        Case{Value(-1.5e300), u"-1.5E+300"_qs, CellLook::Number},
        Case{Value(DecimalOf(u"-0.0500")), u"-0.0500"_qs, CellLook::Number},
        Case{Value(DecimalOf(u"99999999999999999999999999999999999999")),
             u"99999999999999999999999999999999999999"_qs, CellLook::Number},
        Case{Value(DateOf(u"2024-02-29")), u"2024-02-29"_qs, CellLook::Text},
        Case{Value(DateOf(u"13:05:09.1234567")), u"13:05:09.1234567"_qs, CellLook::Text},
        Case{Value(DateOf(u"2024-02-29 13:05:09.120")), u"2024-02-29 13:05:09.120"_qs,
             CellLook::Text},
        Case{Value(DateOf(u"2024-02-29 13:05:09.12 -03:30")), u"2024-02-29 13:05:09.12 -03:30"_qs,
             CellLook::Text},
        Case{Value(QByteArray()), u"0x"_qs, CellLook::Text},
        Case{Value(QByteArray("\x01\xAB\x00", 3)), u"0x01AB00"_qs, CellLook::Text}));

TEST_P(CellTexts, AreTheSameInEveryLocale) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German));
    const CellStart cell{GetParam().value, GetParam().value.kind() == Value::Kind::Bytes
                                               ? GetParam().value.Bytes().size()
                                               : 0};
    EXPECT_EQ(ShownCell(cell), GetParam().shown);
    EXPECT_EQ(LookOf(GetParam().value), GetParam().look);
    QString whole = u"> "_qs;
    AppendCell(whole, GetParam().value);
    EXPECT_EQ(whole, u"> "_qs + GetParam().shown);
    QLocale::setDefault(before);
}

CellStart TextCell(const QString& text) {
    return {Value(text), text.size()};
}

TEST(CellText, ControlCharactersAreBlanksOfTheirOwn) {
    EXPECT_EQ(ShownCell(TextCell(u"a\r\nb\tc\u2028d\u0085"_qs + QChar(0))), u"a  b c d  "_qs);
    EXPECT_EQ(ShownCell(TextCell(u"<b>\U0001F600 \u05D0"_qs)), u"<b>\U0001F600 \u05D0"_qs);
}

TEST(CellText, LoneSurrogatesStay) {
    const QString lone = u"a"_qs + QChar(0xD800) + u"b"_qs + QChar(0xDC00);
    EXPECT_EQ(ShownCell(TextCell(lone)), lone);
}

TEST(CellText, ALongTextIsCutWithAnEllipsis) {
    EXPECT_EQ(ShownCell(TextCell(QString(512, u'x'))), QString(512, u'x'));
    EXPECT_EQ(ShownCell(TextCell(QString(513, u'x'))), QString(512, u'x') + QChar(0x2026));
    // Only the start of it came from the source.
    EXPECT_EQ(ShownCell({Value(QString(512, u'x')), 10'000'000}),
              QString(512, u'x') + QChar(0x2026));
}

TEST(CellText, APairIsNotCutInTwo) {
    const QString text = u"abc\U0001F600def"_qs;
    EXPECT_EQ(ShownCell(TextCell(text), {4, 32}), u"abc\u2026"_qs);
    EXPECT_EQ(ShownCell(TextCell(text), {5, 32}), u"abc\U0001F600\u2026"_qs);
    EXPECT_EQ(ShownCell({Value(text.left(4)), 8}, {4, 32}), u"abc\u2026"_qs);
}

TEST(CellText, LongBytesAreCutAndCounted) {
    EXPECT_EQ(ShownCell({Value(QByteArray(32, '\xFF')), 32}), u"0x"_qs + QString(64, u'F'));
    EXPECT_EQ(ShownCell({Value(QByteArray("\x01\x02\x03")), 1234}, {8, 2}),
              u"0x0102\u2026 (1,234 bytes)"_qs);
    EXPECT_EQ(ShownCell({Value(QByteArray(100, '\0')), 12'345'678}),
              u"0x"_qs + QString(64, u'0') + u"\u2026 (12,345,678 bytes)"_qs);
}

TEST(CellText, WholeValuesAreNotCut) {
    QString text;
    AppendCell(text, Value(QByteArray(1000, '\x1F')));
    EXPECT_EQ(text.size(), 2002);
    EXPECT_TRUE(text.startsWith(u"0x1F1F"));
    text.clear();
    AppendCell(text, Value(QString(100'000, u'\n')));
    EXPECT_EQ(text, QString(100'000, u'\n'));
}

TEST(CellText, AnObjectIsNoCell) {
    QString text;
    EXPECT_EQ(Raised([&] { AppendCell(text, Value(ObjectRef())); }), RuntimeError::TypeMismatch);
}

TEST(CellText, AToolTipKeepsLinesAndIsCut) {
    EXPECT_EQ(ToolTipOfCell(TextCell(u"a\r\nb\rc\nd\te"_qs)), u"a\nb\nc\nd\te"_qs);
    EXPECT_EQ(ToolTipOfCell({Value::Null(), 0}), u"NULL"_qs);
    EXPECT_EQ(ToolTipOfCell(TextCell(QString(1001, u'x'))), QString(1000, u'x') + QChar(0x2026));
    EXPECT_EQ(ToolTipOfCell(TextCell(QString(900, u'\n'))), QString(40, u'\n') + QChar(0x2026));
    EXPECT_EQ(ToolTipOfCell({Value(QByteArray(600, '\x11')), 600}),
              u"0x"_qs + QString(992, u'1') + u"\u2026 (600 bytes)"_qs);
}

}  // namespace
}  // namespace quarv::forms
