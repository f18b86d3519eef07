#include "localdb/engine/SqlError.h"

#include <gtest/gtest.h>

#include "localdb/engine/MessageTable.h"
#include "support/TextPrinter.h"

namespace quarv::localdb::engine {

namespace {

struct Row {
    int number, severity, state;
    const char16_t* text;  // with "a", "b", ... in its gaps
};

}  // namespace

class MessageOf : public testing::TestWithParam<Row> {};

TEST_P(MessageOf, HasSeverityStateAndText) {
    const Row& row = GetParam();
    const SqlError error(row.number,
                         {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                          QStringLiteral("d"), QStringLiteral("e"), QStringLiteral("f")});
    EXPECT_EQ(error.What().severity, row.severity);
    EXPECT_EQ(error.What().state, row.state);
    EXPECT_EQ(error.What().text, QString::fromUtf16(row.text));
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, MessageOf,
    testing::Values(
        Row{102, 15, 1, u"Incorrect syntax near 'a'."},
        Row{207, 16, 1, u"Invalid column name 'a'."}, Row{208, 16, 1, u"Invalid object name 'a'."},
        Row{515, 16, 2,
            u"Cannot insert the value NULL into column 'a', table 'b'; column does not allow "
            u"nulls. "
            u"c fails."},
        Row{547, 16, 0,
            u"The a statement conflicted with the b constraint \"c\". The conflict occurred in "
            u"database \"d\", table \"e\"f."},
        Row{911, 16, 1,
            u"Database 'a' does not exist. Make sure that the name is entered correctly."},
        Row{1801, 16, 3, u"Database 'a' already exists. Choose a different database name."},
        Row{2627, 14, 1,
            u"Violation of a constraint 'b'. Cannot insert duplicate key in object 'c'. The "
            u"duplicate key value is (d)."},
        Row{2812, 16, 62, u"Could not find stored procedure 'a'."},
        Row{4060, 11, 1, u"Cannot open database \"a\" requested by the login. The login failed."},
        Row{8134, 16, 1, u"Divide by zero error encountered."},
        Row{15009, 16, 1,
            u"The object 'a' does not exist in database 'b' or is invalid for this operation."},
        Row{15472, 10, 1,
            u"The object 'a' does not have any indexes, or you do not have permissions."},
        Row{18456, 14, 1, u"Login failed for user 'a'."}));

// The ends of the table, a number before it, one between its numbers and one behind it.
TEST(MessageTable, FindsByNumberAlone) {
    ASSERT_NE(LookUpMessage(102), nullptr);
    EXPECT_EQ(LookUpMessage(102)->number, 102);
    ASSERT_NE(LookUpMessage(50000), nullptr);
    EXPECT_EQ(LookUpMessage(50000)->number, 50000);
    ASSERT_NE(LookUpMessage(17809), nullptr);
    EXPECT_EQ(LookUpMessage(17809)->severity, 20);
    EXPECT_EQ(LookUpMessage(1), nullptr);
    EXPECT_EQ(LookUpMessage(8135), nullptr);
    EXPECT_EQ(LookUpMessage(50001), nullptr);
    EXPECT_EQ(FindMessage(8135).number, 50000);
}

TEST(SqlError, AnInsertMayHoldTheMarkOfAGap) {
    EXPECT_EQ(SqlError(8117, {QStringLiteral("%"), QStringLiteral("x")}).What().text,
              u"Operand data type % is invalid for x operator.");
}

TEST(SqlError, MissingInsertsLeaveTheGapEmpty) {
    EXPECT_EQ(SqlError(208).What().text, u"Invalid object name ''.");
}

}  // namespace quarv::localdb::engine
