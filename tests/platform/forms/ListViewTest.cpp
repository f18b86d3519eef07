#include "platform/forms/ListView.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include "base/RuntimeError.h"
#include "platform/forms/Form.h"
#include "support/Raised.h"

namespace quarv::forms {
namespace {

class List : public testing::Test {
  protected:
    Form form{u"F"_qs};
    ListView list{&form, u"Detail"_qs};
    QAbstractItemModelTester tester{list.model(),
                                    QAbstractItemModelTester::FailureReportingMode::Warning};

    void SetUp() override {
        form.Move(0, 0, 9000, 6000);
        list.Move(0, 0, 8000, 5000);
        list.ColumnHeaders().Add({}, u"Name"_qs, 1440);
        list.ColumnHeaders().Add({}, u"Type"_qs, 2440);
        list.ColumnHeaders().Add({}, u"Nullable"_qs, 1000, ColumnAlignment::Centre);
    }
    void Show() {
        form.Show();
        QApplication::setActiveWindow(&form);
        QCoreApplication::processEvents();
    }
    QPoint CellCentre(int row, int column) {
        return list.visualRect(list.model()->index(row, column)).center();
    }
};

TEST_F(List, HasItsColumnsAsDesigned) {
    EXPECT_EQ(list.header()->sectionSize(0), 96);
    EXPECT_EQ(list.header()->sectionSize(1), 163);
    EXPECT_EQ(list.ColumnHeaders().Count(), 3);
    EXPECT_EQ(list.ColumnHeaders().Item(2).width, 2440);
    EXPECT_EQ(list.ColumnHeaders().Item(2).text, u"Type"_qs);
    EXPECT_EQ(list.model()->headerData(2, Qt::Horizontal).toString(), u"Nullable"_qs);
    EXPECT_EQ(list.header()->sectionResizeMode(0), QHeaderView::Interactive);
    EXPECT_THROW(list.ColumnHeaders().Item(0), RuntimeError);
    EXPECT_THROW(list.ColumnHeaders().Item(4), RuntimeError);
}

TEST_F(List, ShowsItemsAndSubItems) {
    ListItem& item = list.ListItems().Add(u"id"_qs, u"id"_qs);
    item.SetSubItem(1, u"int"_qs);
    Show();
    item.SetSubItem(2, u"Yes"_qs);
    const QAbstractItemModel* model = list.model();
    ASSERT_EQ(model->rowCount(), 1);
    EXPECT_EQ(model->index(0, 0).data().toString(), u"id"_qs);
    EXPECT_EQ(model->index(0, 1).data().toString(), u"int"_qs);
    EXPECT_EQ(model->index(0, 2).data().toString(), u"Yes"_qs);
    EXPECT_EQ(item.SubItem(1), u"int"_qs);
    EXPECT_EQ(model->index(0, 2).data(Qt::TextAlignmentRole).toInt() & Qt::AlignHorizontal_Mask,
              static_cast<int>(Qt::AlignHCenter));
}

TEST_F(List, UnknownColumnsAreRefused) {
    ListItem& item = list.ListItems().Add({}, u"a"_qs);
    EXPECT_EQ(item.SubItem(2), u""_qs);
    EXPECT_THROW(item.SetSubItem(0, u"x"_qs), RuntimeError);
    EXPECT_THROW(item.SetSubItem(3, u"x"_qs), RuntimeError);
    EXPECT_THROW(item.SubItem(3), RuntimeError);
}

TEST_F(List, ADuplicateKeyIsRefusedInAnyLetterCase) {
    list.ListItems().Add(u"Id"_qs, u"Id"_qs);
    EXPECT_EQ(Raised([&] { list.ListItems().Add(u"ID"_qs, u"ID"_qs); }), 35602);
    EXPECT_EQ(list.ListItems().Count(), 1);
    list.ListItems().Add({}, u"x"_qs);
    list.ListItems().Add({}, u"x"_qs);
    EXPECT_EQ(list.ListItems().Count(), 3);
}

TEST_F(List, ItemsAreFoundByPositionAndKey) {
    list.ListItems().Add(u"a"_qs, u"first"_qs);
    list.ListItems().Add(u"b"_qs, u"second"_qs);
    EXPECT_EQ(list.ListItems().Item(2).Text(), u"second"_qs);
    EXPECT_EQ(list.ListItems().Item(u"B"_qs).Index(), 2);
    EXPECT_THROW(list.ListItems().Item(3), RuntimeError);
    EXPECT_EQ(Raised([&] { list.ListItems().Item(u"c"_qs); }), 35601);
}

TEST_F(List, ClearingAndFillingAgainReplacesTheRows) {
    Show();
    list.ListItems().Add(u"a"_qs, u"a"_qs);
    list.ListItems().Add(u"b"_qs, u"b"_qs);
    QCoreApplication::processEvents();
    list.ListItems().Add(u"c"_qs, u"c"_qs);
    list.ListItems().Clear();
    list.ListItems().Add(u"a"_qs, u"again"_qs);
    QCoreApplication::processEvents();
    EXPECT_EQ(list.model()->rowCount(), 1);
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), u"again"_qs);
}

TEST_F(List, TextsOfAnyCharactersAreKeptAndShownOnOneLine) {
    const QString text = u"a\r\nb\u2028<b>"_qs + QChar(0) + u"\U0001F600"_qs;
    ListItem& item = list.ListItems().Add(text, text);
    Show();
    EXPECT_EQ(item.Text(), text);
    EXPECT_EQ(item.Key(), text);
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), u"a  b <b> \U0001F600"_qs);
    form.grab();
}

TEST_F(List, AHugeTextIsKeptWholeAndShownCut) {
    const QString text(1'000'000, u'x');
    ListItem& item = list.ListItems().Add({}, text);
    Show();
    EXPECT_EQ(item.Text().size(), 1'000'000);
    EXPECT_EQ(list.model()->index(0, 0).data().toString().size(), 2001);
}

TEST_F(List, FillingTellsTheViewOnce) {
    Show();
    QSignalSpy told(list.model(), &QAbstractItemModel::rowsInserted);
    for (int i = 0; i < 1000; ++i) list.ListItems().Add({}, QString::number(i));
    EXPECT_EQ(told.count(), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(told.count(), 1);
    EXPECT_EQ(list.model()->rowCount(), 1000);
}

TEST_F(List, ClicksAndEnterReachTheItem) {
    list.ListItems().Add(u"a"_qs, u"a"_qs);
    list.ListItems().Add(u"b"_qs, u"b"_qs);
    Show();
    QStringList seen;
    QObject::connect(&list, &ListView::ItemClick, &form,
                     [&seen](ListItem* item) { seen.append(item->Key()); });
    EXPECT_EQ(list.SelectedItem(), nullptr);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, CellCentre(1, 1));
    EXPECT_EQ(list.SelectedItem(), &list.ListItems().Item(2));
    list.SetFocus();
    QTest::keyClick(&list, Qt::Key_Up);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(seen, (QStringList{u"b"_qs, u"a"_qs}));
}

TEST_F(List, CutOffTextHasAPlainToolTip) {
    list.ListItems().Add({}, u"<i>a name that is wider than its column</i>"_qs);
    list.ListItems().Add({}, u"short"_qs);
    Show();
    const auto hover = [this](int row) {
        const QPoint at = CellCentre(row, 0);
        QHelpEvent help(QEvent::ToolTip, at, list.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(list.viewport(), &help);
    };
    hover(0);
    EXPECT_TRUE(QToolTip::text().contains(u"&lt;i&gt;a name that is wider"_qs));
    QToolTip::hideText();
    hover(1);
    EXPECT_FALSE(QToolTip::text().contains(u"short"_qs));
}

}  // namespace
}  // namespace quarv::forms
