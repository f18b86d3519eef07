#include "localdb/engine/LikeMatcher.h"

#include <gtest/gtest.h>

#include <string>

namespace quarv::localdb::engine {

namespace {

struct Row {
    const char* text;
    const char* pattern;
    bool matches;
    char32_t escape = 0;
};

}  // namespace

class Like : public testing::TestWithParam<Row> {};

TEST_P(Like, MatchesByItsPattern) {
    const Row& row = GetParam();
    EXPECT_EQ(MatchesLike(row.text, row.pattern, row.escape), row.matches);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, Like,
    testing::Values(Row{"abc", "abc", true}, Row{"abc", "ABC", true}, Row{"abc", "ab", false},
                    Row{"abc", "%", true}, Row{"", "%", true}, Row{"", "_", false},
                    Row{"", "", true}, Row{"abc", "a%c", true}, Row{"abcabc", "%bc", true},
                    Row{"abc", "_b_", true}, Row{"ab", "_b_", false}, Row{"😀x", "__x", true},
                    Row{"😀x", "_x", false}, Row{"a😀", "%😀", true}, Row{"b", "[a-c]", true},
                    Row{"d", "[a-c]", false}, Row{"d", "[^a-c]", true}, Row{"-", "[a-]", true},
                    Row{"]", "[]]", true}, Row{"5", "[0-9]", true}, Row{"a%c", "a[%]c", true},
                    Row{"abc", "a[%]c", false}, Row{"a_c", "a!_c", true, U'!'},
                    Row{"abc", "a!_c", false, U'!'}, Row{"50%", "50!%", true, U'!'},
                    Row{"a[", "a![", true, U'!'}, Row{"a", "[a", false}, Row{"[a", "[a", false},
                    Row{"abc", "%%%c", true}, Row{"é", "e", false}, Row{"É", "é", true},
                    Row{"a ", "a", false}));

TEST(Like, StaysQuickWithManyWildcards) {
    const std::string text(3000, 'a');
    std::string pattern;
    for (int i = 0; i < 50; ++i) pattern += "%a";
    EXPECT_FALSE(MatchesLike(text, pattern + "b"));
}

}  // namespace quarv::localdb::engine
