#include "localdb/engine/TypeTable.h"

#include <gtest/gtest.h>

#include "localdb/engine/TypeRules.h"
#include "support/Raised.h"

namespace quarv::localdb::engine {

TEST(TypeTable, PackedTypesComeBack) {
    for (const SqlType& type :
         {MakeType(TypeKind::Int), MakeType(TypeKind::NVarChar, SqlType::Max),
          MakeType(TypeKind::NVarChar, 4000), MakeType(TypeKind::Decimal, 0, 38, 38),
          MakeType(TypeKind::Char, 1), MakeType(TypeKind::DateTime)}) {
        EXPECT_EQ(UnpackType(PackType(type)), type) << type.ToText().toStdString();
    }
}

TEST(TypeTable, PackedFormStaysWhatFilesHold) {
    EXPECT_EQ(PackType(MakeType(TypeKind::Int)), 0x1000038);
    EXPECT_EQ(PackType(MakeType(TypeKind::Decimal, 0, 10, 2)), 0x1020A6A);
    EXPECT_EQ(PackType(MakeType(TypeKind::NVarChar, SqlType::Max)), 0xE7);
}

TEST(TypeTable, UnknownPackedTypesRaise) {
    EXPECT_EQ(Raised([] { UnpackType(0); }), 945);
    EXPECT_EQ(Raised([] { UnpackType(-1); }), 945);
}

TEST(TypeTable, NamesAreFoundInAnyCase) {
    EXPECT_EQ(FindTypeKind(QStringLiteral("NVarChar")), TypeKind::NVarChar);
    EXPECT_EQ(FindTypeKind(QStringLiteral("integer")), TypeKind::Int);
    EXPECT_EQ(FindTypeKind(QStringLiteral("rowversion")), TypeKind::RowVersion);
    EXPECT_FALSE(FindTypeKind(QStringLiteral("strange")));
}

TEST(TypeTable, TextsAsInADeclaration) {
    EXPECT_EQ(MakeType(TypeKind::Decimal, 0, 10, 2).ToText(), u"decimal(10,2)");
    EXPECT_EQ(MakeType(TypeKind::NVarChar, SqlType::Max).ToText(), u"nvarchar(max)");
    EXPECT_EQ(MakeType(TypeKind::Char, 3).ToText(), u"char(3)");
    EXPECT_EQ(MakeType(TypeKind::DateTime).ToText(), u"datetime");
}

namespace {

struct Row {
    char16_t sign;
    SqlType a, b;
    const char16_t* result;
};

SqlType Dec(int precision, int scale) {
    return MakeType(TypeKind::Numeric, 0, precision, scale);
}

}  // namespace

// The examples and formulas of "Precision, scale, and length".
class ArithmeticType : public testing::TestWithParam<Row> {};

TEST_P(ArithmeticType, FollowsTheRules) {
    const Row& row = GetParam();
    EXPECT_EQ(TypeRules::OfArithmetic(row.sign, row.a, row.b).ToText(),
              QString::fromUtf16(row.result));
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ArithmeticType,
    testing::Values(Row{u'+', Dec(10, 2), Dec(5, 4), u"numeric(13,4)"},
                    Row{u'*', Dec(10, 2), Dec(5, 4), u"numeric(16,6)"},
                    Row{u'/', Dec(10, 2), Dec(5, 4), u"numeric(20,8)"},
                    Row{u'%', Dec(10, 2), Dec(5, 4), u"numeric(5,4)"},
                    Row{u'*', Dec(38, 20), Dec(38, 20), u"numeric(38,6)"},
                    Row{u'*', Dec(30, 10), Dec(30, 10), u"numeric(38,6)"},
                    Row{u'*', Dec(20, 18), Dec(20, 18), u"numeric(38,33)"},
                    Row{u'+', Dec(38, 10), Dec(38, 0), u"numeric(38,0)"},
                    Row{u'+', MakeType(TypeKind::Int), Dec(5, 2), u"numeric(13,2)"},
                    Row{u'+', MakeType(TypeKind::TinyInt), MakeType(TypeKind::BigInt), u"bigint"},
                    Row{u'*', MakeType(TypeKind::Int), MakeType(TypeKind::Money), u"money"},
                    Row{u'/', MakeType(TypeKind::Float), Dec(5, 2), u"float"},
                    Row{u'+', MakeType(TypeKind::VarChar, 3), MakeType(TypeKind::NVarChar, 4),
                        u"nvarchar(7)"},
                    Row{u'+', MakeType(TypeKind::VarChar, 8000), MakeType(TypeKind::VarChar, 8000),
                        u"varchar(8000)"}));

TEST(TypeRules, RefusesOperandsThatDoNotGoTogether) {
    const SqlType date = MakeType(TypeKind::Date), integer = MakeType(TypeKind::Int);
    EXPECT_EQ(Raised([&] { TypeRules::OfArithmetic(u'+', date, integer); }), 206);
    EXPECT_EQ(Raised([&] { TypeRules::OfArithmetic(u'*', MakeType(TypeKind::DateTime), integer); }),
              8117);
    EXPECT_EQ(Raised([&] { TypeRules::OfArithmetic(u'&', Dec(5, 2), integer); }), 8117);
    EXPECT_EQ(Raised([&] { TypeRules::CheckConversion(date, integer, true); }), 529);
    EXPECT_EQ(Raised([&] { TypeRules::CheckConversion(integer, date, false); }), 206);
}

}  // namespace quarv::localdb::engine
