#include "grid/KelEditGridColumn.h"

#include <gtest/gtest.h>

#include "support/TextPrinter.h"

namespace quarv {
namespace {

TEST(KelEditGridColumn, StartsWithDefaults) {
    const KelEditGridColumn column;
    EXPECT_EQ(column.Name, u"");
    EXPECT_EQ(column.Width, 0);
    EXPECT_EQ(column.Left, 0);
    EXPECT_EQ(column.ColType, 0);
    EXPECT_EQ(column.Choices, nullptr);
    EXPECT_EQ(column.MaxLength, 0);
    EXPECT_EQ(column.BrowseText, u"");
    EXPECT_EQ(column.Index, 0);
    EXPECT_FALSE(column.FileNameOnly);
}

TEST(KelEditGridColumn, InitSetsFourFieldsAndKeepsTheOthers) {
    KelEditGridColumn column;
    column.Left = 77;
    column.MaxLength = 5;
    column.BrowseText = QStringLiteral("All");
    column.Init(QStringLiteral("Path"), 1400, 4);
    EXPECT_EQ(column.Name, u"Path");
    EXPECT_EQ(column.Width, 1400);
    EXPECT_EQ(column.ColType, 4);
    EXPECT_TRUE(column.FileNameOnly);
    EXPECT_EQ(column.Left, 77);
    EXPECT_EQ(column.MaxLength, 5);
    EXPECT_EQ(column.BrowseText, u"All");
}

}  // namespace
}  // namespace quarv
