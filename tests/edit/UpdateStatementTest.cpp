#include "edit/UpdateStatement.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv {
namespace {

TEST(UpdateStatement, SetsTheOneColumn) {
    EXPECT_EQ(UpdateStatement("Orders", "note", u"it's", "[id]='7'"),
              "update [Orders] set [note]='it''s' where [id]='7'");
}

TEST(UpdateStatement, NamesStandAsTheyAre) {
    EXPECT_EQ(UpdateStatement("a]b", "c'd e", 5, "[k]='1' and [l]=NULL"),
              "update [a]b] set [c'd e]='5' where [k]='1' and [l]=NULL");
}

TEST(UpdateStatement, CutsTheValueTo999Units) {
    EXPECT_EQ(UpdateStatement("t", "c", QString(1000, u'x'), "k"),
              "update [t] set [c]='" + QString(999, u'x') + "' where k");
}

TEST(UpdateStatement, WithoutAKeyNothingFollowsTheWhere) {
    EXPECT_EQ(UpdateStatement("t", "c", u"v", QString()), "update [t] set [c]='v' where ");
}

}  // namespace
}  // namespace quarv
