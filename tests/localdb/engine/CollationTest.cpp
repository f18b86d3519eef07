#include "localdb/engine/Collation.h"

#include <gtest/gtest.h>

namespace quarv::localdb::engine {

namespace {

struct Row {
    const char* a;
    const char* b;
    int order;
};

int SignOf(int order) {
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace

class CollationOrder : public testing::TestWithParam<Row> {};

TEST_P(CollationOrder, IsKeptBothWays) {
    const Row& row = GetParam();
    EXPECT_EQ(SignOf(Collation::Compare(row.a, row.b)), row.order);
    EXPECT_EQ(SignOf(Collation::Compare(row.b, row.a)), -row.order);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CollationOrder,
    testing::Values(Row{"", "", 0}, Row{"a", "A", 0}, Row{"Ä", "ä", 0}, Row{"abc", "ABC  ", 0},
                    Row{"", "   ", 0}, Row{"a", "b", -1}, Row{"a", "B", -1}, Row{"a", "ab", -1},
                    Row{"résumé", "resume", 1}, Row{"resume", "résumé2", -1}, Row{"e", "é", -1},
                    Row{"é", "f", -1}, Row{"é", "é", 0},  // composed and decomposed
                    Row{"_", "1", -1}, Row{"1", "a", -1}, Row{"9", "a", -1}, Row{"-", "a", -1},
                    Row{"Σ", "σ", 0}, Row{"ж", "Ж", 0}, Row{"z", "ж", -1}, Row{"😀", "😁", -1},
                    Row{"a", "😀", -1}, Row{"a\tb", "a b", -1}));

struct OrderedRow {
    TextOrder order;
    const char* a;
    const char* b;
    int sign;
};

class CollationOrderOf : public testing::TestWithParam<OrderedRow> {};

TEST_P(CollationOrderOf, IsKeptBothWays) {
    const OrderedRow& row = GetParam();
    EXPECT_EQ(SignOf(Collation::Compare(row.a, row.b, row.order)), row.sign);
    EXPECT_EQ(SignOf(Collation::Compare(row.b, row.a, row.order)), -row.sign);
}

INSTANTIATE_TEST_SUITE_P(Texts, CollationOrderOf,
                         testing::Values(OrderedRow{TextOrder::LowerFirst, "a", "A", -1},
                                         OrderedRow{TextOrder::LowerFirst, "A", "b", -1},
                                         OrderedRow{TextOrder::LowerFirst, "Ab", "aB", 1},
                                         OrderedRow{TextOrder::UpperFirst, "a", "A", 1},
                                         OrderedRow{TextOrder::UpperFirst, "a", "a ", 0},
                                         OrderedRow{TextOrder::Letters, "É", "e", 0},
                                         OrderedRow{TextOrder::Letters, "e", "f", -1},
                                         OrderedRow{TextOrder::LettersAndCase, "é", "e", 0},
                                         OrderedRow{TextOrder::LettersAndCase, "e", "E", -1},
                                         OrderedRow{TextOrder::CodePage, "a", "B", 1},
                                         OrderedRow{TextOrder::CodePage, "€", "¡", -1},
                                         OrderedRow{TextOrder::CodePage, "a", "a  ", 0},
                                         OrderedRow{TextOrder::CodePoints, "€", "¡", 1},
                                         OrderedRow{TextOrder::CodePoints, "a", "a\t", 1},
                                         OrderedRow{TextOrder::CodePoints, "\uFFFD", "😀", -1},
                                         OrderedRow{TextOrder::UnitBytes, "Ā", "b", 1},
                                         OrderedRow{TextOrder::UnitBytes, "aĀ", "ab", -1}));

TEST(Collation, SurvivesBytesThatAreNoUtf8) {
    EXPECT_EQ(Collation::Compare("\xFF\xC3", "\xFF\xC3"), 0);
    EXPECT_NE(Collation::Compare("\xF0\x9F", "a"), 0);
    for (int order = 0; order < TextOrderCount; ++order) {
        EXPECT_EQ(Collation::Compare("\xFF\xC3", "\xFF\xC3", static_cast<TextOrder>(order)), 0);
    }
}

}  // namespace quarv::localdb::engine
