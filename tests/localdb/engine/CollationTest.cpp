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

TEST(Collation, SurvivesBytesThatAreNoUtf8) {
    EXPECT_EQ(Collation::Compare("\xFF\xC3", "\xFF\xC3"), 0);
    EXPECT_NE(Collation::Compare("\xF0\x9F", "a"), 0);
}

}  // namespace quarv::localdb::engine
