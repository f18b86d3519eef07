#include "localdb/tsql/ExpressionText.h"

#include <gtest/gtest.h>

#include "localdb/tsql/BatchParser.h"
#include "support/Raised.h"

namespace quarv::localdb::tsql {

namespace {

struct Row {
    const char* written;
    const char* kept;
};

QString TextOf(const QString& written) {
    return DefaultText(*ParseExpressionText(written));
}

}  // namespace

class DefaultTextOf : public testing::TestWithParam<Row> {};

TEST_P(DefaultTextOf, IsNormalised) {
    const QString kept = QString::fromUtf8(GetParam().kept);
    EXPECT_EQ(TextOf(QString::fromUtf8(GetParam().written)), kept);
    // Reading it back changes nothing more.
    EXPECT_EQ(TextOf(kept), kept);
}

INSTANTIATE_TEST_SUITE_P(
    Defaults, DefaultTextOf,
    testing::Values(Row{"0", "((0))"}, Row{"-1", "((-1))"}, Row{"(5)", "((5))"},
                    Row{"1.50", "((1.50))"}, Row{"'x'", "('x')"}, Row{"N'it''s'", "(N'it''s')"},
                    Row{"GETDATE()", "(getdate())"}, Row{"NULL", "(NULL)"},
                    Row{"1+2*3", "((1)+((2)*(3)))"}, Row{"$1.5", "(($1.5))"},
                    Row{"convert(int,'5')", "(CONVERT([int],'5'))"},
                    Row{"cast(1 as decimal(10,2))", "(CONVERT([decimal](10,2),(1)))"}));

TEST(DefaultTextOf, RefusesWhatCannotStandInADefault) {
    EXPECT_EQ(Raised([] { TextOf(QStringLiteral("(select 1)")); }), 40517);
}

}  // namespace quarv::localdb::tsql
