#include <gtest/gtest.h>

#include "platform/ado/odbc/Open.h"

namespace quarv::test {

namespace {

using C = FakeColumn;

const QString Sql = QStringLiteral("select v");

// Characters of one, two, three and four UTF-8 bytes, so that pieces end inside them.
QString MixedText(int units) {
    const QString pattern = QStringLiteral("aé€😀b😀😀");
    QString text;
    while (text.size() < units) text += pattern;
    return text;
}

QByteArray CountedBytes(int count) {
    QByteArray bytes(count, 0);
    for (int i = 0; i < count; ++i) bytes[i] = static_cast<char>(i * 31 + (i >> 8));
    return bytes;
}

Value First(const FakeTds& answer) {
    const FakeServer server(answer);
    return Open(server)->Execute(Sql)->Fields()[0].Value();
}

}  // namespace

class LongTextTest : public testing::TestWithParam<int> {};

TEST_P(LongTextTest, UnicodeIsReadWhole) {
    const QString text = MixedText(GetParam());
    const Value value = First(FakeTds().Columns({C::NVarCharMax("v")}).Row({Utf16(text)}).Done(1));
    EXPECT_TRUE(value.Text() == text);
}

TEST_P(LongTextTest, CodePageTextIsReadWhole) {
    const QByteArray sent(GetParam(), static_cast<char>(0xE9));
    const Value value = First(FakeTds().Columns({C::VarCharMax("v")}).Row({sent}).Done(1));
    EXPECT_TRUE(value.Text() == QString(GetParam(), QChar(0xE9)));
}

TEST_P(LongTextTest, MixedCodePageTextIsReadWhole) {
    QByteArray sent;
    QString text;
    while (sent.size() < GetParam()) {
        sent += QByteArray::fromHex("61e980");
        text += QStringLiteral("aé€");
    }
    const Value value = First(FakeTds().Columns({C::VarCharMax("v")}).Row({sent}).Done(1));
    EXPECT_TRUE(value.Text() == text);
}

TEST_P(LongTextTest, XmlIsReadWhole) {
    const QString text = MixedText(GetParam());
    const Value value =
        First(FakeTds().Columns({C::Xml("v")}).Row({Utf16(QChar(0xFEFF) + text)}).Done(1));
    EXPECT_TRUE(value.Text() == text);
}

TEST_P(LongTextTest, BytesAreReadWhole) {
    const QByteArray bytes = CountedBytes(GetParam());
    const Value value = First(FakeTds().Columns({C::VarBinaryMax("v")}).Row({bytes}).Done(1));
    EXPECT_TRUE(value.Bytes() == bytes);
}

// Around the piece's size (16 KiB with a text's end mark), and far beyond.
INSTANTIATE_TEST_SUITE_P(Sizes, LongTextTest,
                         testing::Values(0, 1, 4000, 8190, 8191, 8192, 8193, 16382, 16383, 16384,
                                         16385, 24573, 100000, 1000003));

TEST(LiveResult, ShortAndLongOnesAlternateRowByRow) {
    const QString longText = MixedText(50000);
    FakeTds answer;
    answer.Columns({C::NVarCharMax("v"), C::Int("n")});
    for (int i = 0; i < 3; ++i) {
        answer.Row({Utf16(longText), Le(1, 4)});
        answer.Row({QByteArray(""), Le(2, 4)});
        answer.Row({FakeValue(), Le(3, 4)});
        answer.Row({Utf16("short"), FakeValue()});
    }
    const FakeServer server(answer.Done(12));
    const auto connection = Open(server);
    const auto rows = connection->Execute(Sql);
    for (int i = 0; i < 3; ++i) {
        for (int again = 0; again < 2; ++again) EXPECT_TRUE((*rows)["v"].Text() == longText);
        EXPECT_EQ((*rows)["n"].ToInteger(), 1);
        rows->MoveNext();
        EXPECT_EQ((*rows)["v"].Text(), QString());
        EXPECT_EQ((*rows)["n"].ToInteger(), 2);
        rows->MoveNext();
        EXPECT_TRUE((*rows)["v"].IsNull());
        EXPECT_TRUE((*rows)["v"].IsNull());
        rows->MoveNext();
        EXPECT_TRUE((*rows)["n"].IsNull());
        EXPECT_EQ((*rows)["v"].Text(), QStringLiteral("short"));
        rows->MoveNext();
    }
    EXPECT_TRUE(rows->EOF());
}

}  // namespace quarv::test
