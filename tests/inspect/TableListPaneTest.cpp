#include "inspect/TableListPane.h"

#include "inspect/PaneTest.h"
#include "inspect/TableFieldView.h"
#include "inspect/TableIndexView.h"
#include "support/TextPrinter.h"

namespace quarv {
namespace {

template <typename Pane>
class TableListPaneTest : public PaneTest<Pane, forms::ListView> {};

using Panes = testing::Types<TableFieldView, TableIndexView>;
TYPED_TEST_SUITE(TableListPaneTest, Panes);

TYPED_TEST(TableListPaneTest, ResizingFillsThePane) {
    EXPECT_EQ(this->BorderFrame().Width(), 9000);
    EXPECT_EQ(this->BorderFrame().Height(), 6000);
    EXPECT_EQ(this->Detail().Left(), 120);
    EXPECT_EQ(this->Detail().Top(), 360);
    EXPECT_EQ(this->Detail().Width(), 8760);
    EXPECT_EQ(this->Detail().Height(), 5520);
}

TYPED_TEST(TableListPaneTest, TinyPaneLeavesSizesAsTheyWere) {
    this->view_.Move(0, 0, 30, 30);
    EXPECT_EQ(this->BorderFrame().Width(), 9000);
    EXPECT_EQ(this->BorderFrame().Height(), 6000);
    EXPECT_EQ(this->Detail().Width(), 8760);
    EXPECT_EQ(this->Detail().Height(), 5520);
}

TYPED_TEST(TableListPaneTest, WidthAndHeightAreHeldToTheSmallestSizeEachByItself) {
    this->view_.Move(0, 0, 270, 511);
    EXPECT_EQ(this->BorderFrame().Width(), 270);
    EXPECT_EQ(this->BorderFrame().Height(), 511);
    EXPECT_EQ(this->Detail().Width(), 8760);
    EXPECT_EQ(this->Detail().Height(), 31);
    this->view_.Move(0, 0, 271, 510);
    EXPECT_EQ(this->Detail().Width(), 31);
    EXPECT_EQ(this->Detail().Height(), 31);
}

TYPED_TEST(TableListPaneTest, ResizingKeepsWhereTheListBegins) {
    this->Detail().Move(200, 500, 100, 100);
    this->view_.Move(0, 0, 4000, 3000);
    EXPECT_EQ(this->Detail().Left(), 200);
    EXPECT_EQ(this->Detail().Top(), 500);
    EXPECT_EQ(this->Detail().Width(), 3600);
    EXPECT_EQ(this->Detail().Height(), 2380);
}

}  // namespace
}  // namespace quarv
