#include "localdb/engine/Conversion.h"

#include <gtest/gtest.h>

#include <limits>

#include "localdb/engine/TypeTable.h"
#include "support/Raised.h"

namespace quarv::localdb::engine {

namespace {

const SqlType Text = MakeType(TypeKind::VarChar, 100);

SqlValue To(const SqlValue& value, const SqlType& from, const SqlType& to) {
    static TextArena arena;
    return Conversion::Convert(value, from, to, Conversion::NoStyle, arena);
}

int64_t TextTo(const char* text, TypeKind kind) {
    return To(SqlValue::Text(text), Text, MakeType(kind)).integer;
}

}  // namespace

TEST(Conversion, NullStaysNull) {
    EXPECT_TRUE(To(SqlValue(), Text, MakeType(TypeKind::Int)).IsNull());
}

TEST(Conversion, IntegersKeepTheirRanges) {
    EXPECT_EQ(TextTo("-9223372036854775808", TypeKind::BigInt),
              std::numeric_limits<int64_t>::min());
    EXPECT_EQ(TextTo("255", TypeKind::TinyInt), 255);
    EXPECT_EQ(Raised([] { TextTo("256", TypeKind::TinyInt); }), 244);
    EXPECT_EQ(Raised([] { TextTo("9223372036854775808", TypeKind::BigInt); }), 8115);
    EXPECT_EQ(Raised([] { TextTo("99999999999999999999999999999999999999999999", TypeKind::Int); }),
              248);
    EXPECT_EQ(Raised([] { TextTo("--1", TypeKind::Int); }), 245);
}

TEST(Conversion, FloatsBeyondAnIntegerRaise) {
    const SqlType real = MakeType(TypeKind::Float);
    for (const double value : {1e19, -1e19, 2147483648.0, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(Raised([&] { To(SqlValue::Real(value), real, MakeType(TypeKind::Int)); }), 232);
    }
    EXPECT_EQ(To(SqlValue::Real(-2.9), real, MakeType(TypeKind::Int)).integer, -2);
    EXPECT_EQ(Raised([&] { To(SqlValue::Real(1e39), real, MakeType(TypeKind::Real)); }), 232);
}

TEST(Conversion, MoneyReadsCurrencySignsAndCommas) {
    EXPECT_EQ(TextTo("$1,234.56789", TypeKind::Money), 12345679);
    EXPECT_EQ(TextTo("-922337203685477.5808", TypeKind::Money),
              std::numeric_limits<int64_t>::min());
    EXPECT_EQ(Raised([] { TextTo("922337203685477.5808", TypeKind::Money); }), 8115);
    EXPECT_EQ(Raised([] { TextTo("1x", TypeKind::Money); }), 235);
    EXPECT_EQ(Raised([] { TextTo("214748.3648", TypeKind::SmallMoney); }), 8115);
}

TEST(Conversion, FixedLengthsCountUnicodeUnits) {
    EXPECT_EQ(To(SqlValue::Text("ж"), Text, MakeType(TypeKind::NChar, 3)).text, "ж  ");
    EXPECT_EQ(To(SqlValue::Text("😀"), Text, MakeType(TypeKind::NChar, 3)).text, "😀 ");
}

TEST(Conversion, LettersBeyondTheCodePageBecomeQuestionMarks) {
    const SqlType wide = MakeType(TypeKind::NVarChar, SqlType::Max);
    EXPECT_EQ(To(SqlValue::Text("ж"), wide, MakeType(TypeKind::Char, 3)).text, "?  ");
    EXPECT_EQ(To(SqlValue::Text("aж😀"), wide, MakeType(TypeKind::VarChar, 9)).text, "a???");
    EXPECT_EQ(To(SqlValue::Text("€ä?"), wide, MakeType(TypeKind::VarChar, 2)).text, "€ä");
}

TEST(Conversion, MoneyHasStyles) {
    TextArena arena;
    const auto text = [&arena](int style) {
        return std::string(Conversion::Convert(SqlValue::Integer(-12345678950),
                                               MakeType(TypeKind::Money), Text, style, arena)
                               .text);
    };
    EXPECT_EQ(text(0), "-1234567.90");
    EXPECT_EQ(text(1), "-1,234,567.90");
    EXPECT_EQ(text(2), "-1234567.8950");
}

}  // namespace quarv::localdb::engine
