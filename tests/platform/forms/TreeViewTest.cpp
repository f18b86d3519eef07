#include "platform/forms/TreeView.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/ImageList.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

class Tree : public testing::Test {
  protected:
    Form form{u"F"_qs};
    TreeView tree{&form, u"DBObjectList"_qs};
    QAbstractItemModelTester tester{tree.model(),
                                    QAbstractItemModelTester::FailureReportingMode::Warning};
    QStringList clicked;

    void SetUp() override {
        form.Move(0, 0, 6000, 6000);
        tree.Move(0, 0, 5000, 5000);
        QObject::connect(&tree, &TreeView::NodeClick, &form,
                         [this](Node* node) { clicked.append(node->Key()); });
    }
    void Fill() {
        tree.Nodes().Add({}, u"_db_"_qs, u"server.mirel 9.00"_qs, 2);
        tree.Nodes().Add(u"_db_"_qs, u"Tables"_qs, u"Tables"_qs, 4);
        tree.Nodes().Add(u"_db_"_qs, u"Routines"_qs, u"Routines"_qs, 6);
        tree.Nodes().Item(1).SetExpanded(true);
        tree.Nodes().Add(u"Tables"_qs, u"_tbl_Orders"_qs, u"Orders"_qs, 1);
        tree.Nodes().Add(u"Routines"_qs, u"_sp_Report"_qs, u"Report"_qs, 5);
    }
    void Show() {
        form.Show();
        QApplication::setActiveWindow(&form);
        QCoreApplication::processEvents();
    }
    QModelIndex IndexOf(const QStringList& path) {
        QModelIndex index;
        for (const QString& text : path) {
            QModelIndex found;
            for (int row = 0; row < tree.model()->rowCount(index); ++row)
                if (tree.model()->index(row, 0, index).data().toString() == text)
                    found = tree.model()->index(row, 0, index);
            index = found;
        }
        return index;
    }
    void Click(const QModelIndex& index) {
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(index).center());
    }
};

TEST_F(Tree, ShowsNodesUnderTheirParents) {
    Fill();
    Show();
    const QModelIndex orders = IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs, u"Orders"_qs});
    EXPECT_TRUE(orders.isValid());
    EXPECT_EQ(tree.model()->rowCount(), 1);
    const Node& tables = tree.Nodes().Item(u"tables"_qs);
    EXPECT_EQ(tables.Parent(), &tree.Nodes().Item(1));
    EXPECT_EQ(tree.Nodes().Item(1).Parent(), nullptr);
    ASSERT_EQ(tables.Children().size(), 1U);
    EXPECT_EQ(tables.Children()[0]->Text(), u"Orders"_qs);
    EXPECT_EQ(tables.Image(), 4);
    EXPECT_EQ(tables.Index(), 2);
}

TEST_F(Tree, AnExpandedNodeShowsItsChildren) {
    Fill();
    Show();
    EXPECT_TRUE(tree.isExpanded(IndexOf({u"server.mirel 9.00"_qs})));
    EXPECT_FALSE(tree.isExpanded(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs})));
    tree.Nodes().Item(u"Tables"_qs).SetExpanded(true);
    EXPECT_TRUE(tree.isExpanded(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs})));
    tree.Nodes().Item(u"Tables"_qs).SetExpanded(false);
    EXPECT_FALSE(tree.isExpanded(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs})));
}

TEST_F(Tree, ANodeMayBeExpandedBeforeItHasChildren) {
    Show();
    Node& root = tree.Nodes().Add({}, u"r"_qs, u"r"_qs);
    root.SetExpanded(true);
    QCoreApplication::processEvents();
    tree.Nodes().Add(u"r"_qs, u"c"_qs, u"c"_qs);
    QCoreApplication::processEvents();
    EXPECT_TRUE(tree.isExpanded(IndexOf({u"r"_qs})));
    EXPECT_TRUE(root.Expanded());
}

TEST_F(Tree, ExpandedFollowsTheUser) {
    Fill();
    Show();
    tree.collapse(IndexOf({u"server.mirel 9.00"_qs}));
    EXPECT_FALSE(tree.Nodes().Item(1).Expanded());
    tree.expand(IndexOf({u"server.mirel 9.00"_qs}));
    EXPECT_TRUE(tree.Nodes().Item(1).Expanded());
}

TEST_F(Tree, AUserCollapsedNodeStaysSoWhenChildrenComeLater) {
    Fill();
    Show();
    tree.collapse(IndexOf({u"server.mirel 9.00"_qs}));
    tree.Nodes().Add(u"_db_"_qs, u"Views"_qs, u"Views"_qs);
    QCoreApplication::processEvents();
    EXPECT_FALSE(tree.isExpanded(IndexOf({u"server.mirel 9.00"_qs})));
}

TEST_F(Tree, ADuplicateKeyIsRefusedAndAddsNothing) {
    Fill();
    EXPECT_EQ(Raised([&] { tree.Nodes().Add(u"Tables"_qs, u"_TBL_orders"_qs, u"orders"_qs, 1); }),
              35602);
    EXPECT_EQ(tree.Nodes().Count(), 5);
    EXPECT_EQ(tree.Nodes().Item(u"Tables"_qs).Children().size(), 1U);
}

TEST_F(Tree, AnUnknownParentIsRefused) {
    Fill();
    EXPECT_EQ(Raised([&] { tree.Nodes().Add(u"Views"_qs, u"v"_qs, u"v"_qs); }), 35601);
    EXPECT_EQ(tree.Nodes().Count(), 5);
    EXPECT_THROW(tree.Nodes().Item(6), RuntimeError);
    EXPECT_THROW(tree.Nodes().Item(0), RuntimeError);
    EXPECT_THROW(tree.Nodes().Item(u"nope"_qs), RuntimeError);
}

TEST_F(Tree, LettersThatOnlyFoldToSeveralAreNotTheSameKey) {
    tree.Nodes().Add({}, u"stra\u00dfe"_qs, u"a"_qs);
    tree.Nodes().Add({}, u"strasse"_qs, u"b"_qs);
    EXPECT_EQ(tree.Nodes().Count(), 2);
}

TEST_F(Tree, AClickOnANodeIsRaisedOnce) {
    Fill();
    Show();
    Click(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs}));
    EXPECT_EQ(clicked, (QStringList{u"Tables"_qs}));
    EXPECT_EQ(tree.SelectedItem(), &tree.Nodes().Item(u"Tables"_qs));
}

TEST_F(Tree, ClicksBesideNodesRaiseNothing) {
    Fill();
    Show();
    const QRect tables = tree.visualRect(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs}));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(50, 300));
    // The sign that expands the node stands left of it.
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {},
                      QPoint(tables.left() - tree.indentation() / 2, tables.center().y()));
    QTest::mouseClick(tree.viewport(), Qt::RightButton, {}, tables.center());
    EXPECT_TRUE(clicked.isEmpty());
    EXPECT_TRUE(tree.Nodes().Item(u"Tables"_qs).Expanded());
}

TEST_F(Tree, ADoubleClickRaisesOneClick) {
    Fill();
    Show();
    const QPoint at = tree.visualRect(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs})).center();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(clicked.size(), 1);
}

TEST_F(Tree, KeysMoveAndEnterOrSpaceClick) {
    Fill();
    Show();
    tree.SetSelectedItem(tree.Nodes().Item(1));
    tree.SetFocus();
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_TRUE(clicked.isEmpty());
    EXPECT_EQ(tree.SelectedItem(), &tree.Nodes().Item(u"Tables"_qs));
    QTest::keyClick(&tree, Qt::Key_Return);
    QTest::keyClick(&tree, Qt::Key_Down);
    QTest::keyClick(&tree, Qt::Key_Space);
    EXPECT_EQ(clicked, (QStringList{u"Tables"_qs, u"Routines"_qs}));
}

TEST_F(Tree, TheUserDoesNotEditNodes) {
    Fill();
    Show();
    tree.SetSelectedItem(tree.Nodes().Item(1));
    QTest::keyClick(&tree, Qt::Key_F2);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"DBObjectList"_qs);
}

TEST_F(Tree, ShowsThePicturesOfItsImageList) {
    ImageList icons(&form, u"Icons"_qs);
    QPixmap green(16, 16);
    green.fill(Qt::green);
    icons.Add(QIcon());
    icons.Add(QIcon(green));
    tree.SetImageList(icons);
    tree.Nodes().Add({}, u"a"_qs, u"a"_qs, 2);
    tree.Nodes().Add({}, u"b"_qs, u"b"_qs, 99);
    EXPECT_THROW(tree.Nodes().Add({}, u"c"_qs, u"c"_qs, -1), RuntimeError);
    Show();
    const QRect row = tree.visualRect(IndexOf({u"a"_qs}));
    const QImage image = tree.viewport()->grab().toImage();
    EXPECT_EQ(image.pixelColor(row.left() + 10, row.center().y()), QColor(Qt::green));
    EXPECT_FALSE(IndexOf({u"b"_qs}).data(Qt::DecorationRole).isValid());
}

std::vector<QString> Names(char16_t letter, int count) {
    std::vector<QString> names;
    for (int i = 0; i < count; ++i) names.push_back(letter + QString::number(i));
    return names;
}

TEST_F(Tree, NodesAddedTogetherAreNodesLikeOthers) {
    Fill();
    tree.Nodes().AddAll(u"Tables"_qs, u"_tbl_"_qs, {u"New"_qs, u"Newer"_qs}, 2);
    const Node& newer = tree.Nodes().Item(u"_TBL_newer"_qs);
    EXPECT_EQ(newer.Key(), "_tbl_Newer");
    EXPECT_EQ(newer.Text(), "Newer");
    EXPECT_EQ(newer.Image(), 2);
    EXPECT_EQ(newer.Parent(), &tree.Nodes().Item(u"Tables"_qs));
    EXPECT_EQ(newer.Index(), tree.Nodes().Count());
    EXPECT_EQ(newer.Parent()->Children().back(), &newer);
}

TEST_F(Tree, OfNodesAddedTogetherThoseBeforeARefusedOneStay) {
    Fill();
    const int before = tree.Nodes().Count();
    EXPECT_EQ(Raised([&] {
                  tree.Nodes().AddAll(u"Tables"_qs, u"_tbl_"_qs, {u"New"_qs, u"NEW"_qs, u"x"_qs});
              }),
              35602);
    EXPECT_EQ(tree.Nodes().Count(), before + 1);
    EXPECT_EQ(Raised([&] { tree.Nodes().AddAll(u"nowhere"_qs, u"k"_qs, {u"a"_qs}); }), 35601);
    EXPECT_EQ(Raised([&] { tree.Nodes().AddAll({}, u"k"_qs, {u"a"_qs}, -1); }), 380);
    EXPECT_EQ(tree.Nodes().Count(), before + 1);
}

TEST_F(Tree, FifteenThousandNodesAreToldOncePerParentAndPaintOnlyWhatIsSeen) {
    Fill();
    tree.Nodes().Item(u"Tables"_qs).SetExpanded(true);
    Show();
    QSignalSpy told(tree.model(), &QAbstractItemModel::rowsInserted);
    tree.Nodes().AddAll(u"Tables"_qs, u"_tbl_"_qs, Names(u't', 10'000), 1);
    tree.Nodes().AddAll(u"Routines"_qs, u"_sp_"_qs, Names(u'p', 5'000), 5);
    EXPECT_EQ(told.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(told.count(), 2);
    EXPECT_EQ(tree.Nodes().Count(), 15'005);
    EXPECT_EQ(tree.model()->rowCount(IndexOf({u"server.mirel 9.00"_qs, u"Tables"_qs})), 10'001);
    EXPECT_TRUE(tree.viewport()->findChildren<QWidget*>().isEmpty());
}

TEST_F(Tree, ClearingAndFillingAgainStartsAfresh) {
    Fill();
    Show();
    tree.Nodes().Add(u"Tables"_qs, u"x"_qs, u"x"_qs);
    tree.Nodes().Clear();
    EXPECT_EQ(tree.Nodes().Count(), 0);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    QCoreApplication::processEvents();
    Fill();
    QCoreApplication::processEvents();
    EXPECT_TRUE(IndexOf({u"server.mirel 9.00"_qs, u"Routines"_qs, u"Report"_qs}).isValid());
    EXPECT_TRUE(tree.isExpanded(IndexOf({u"server.mirel 9.00"_qs})));
}

TEST_F(Tree, TextsOfAnyCharactersAreKept) {
    const QString text = u"<b>a\r\n"_qs + QChar(0) + u"\U0001F600"_qs;
    Node& node = tree.Nodes().Add({}, text, text);
    Show();
    EXPECT_EQ(node.Text(), text);
    EXPECT_EQ(tree.Nodes().Item(text).Key(), text);
    node.SetText(u"new"_qs);
    EXPECT_TRUE(IndexOf({u"new"_qs}).isValid());
}

}  // namespace
}  // namespace quarv::forms
