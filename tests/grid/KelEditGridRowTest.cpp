#include "grid/KelEditGridRow.h"

#include <gtest/gtest.h>

#include "grid/KelEditGridColumnList.h"

namespace quarv {
namespace {

class BareRow : public KelEditGridRow {};

TEST(KelEditGridRow, ItsOwnMembersDoNothing) {
    BareRow row;
    row.SetVisibleIndex(3);
    row.SetPersistStatus(1);
    row.SetColumnValue(1, Value(7));
    EXPECT_EQ(row.VisibleIndex(), 0);
    EXPECT_EQ(row.PersistStatus(), 0);
    EXPECT_TRUE(row.ColumnValue(1).IsEmpty());
    EXPECT_FALSE(row.IsEmpty());
    Value canvas;
    EXPECT_EQ(row.CreateColumnList(canvas), nullptr);
}

}  // namespace
}  // namespace quarv
