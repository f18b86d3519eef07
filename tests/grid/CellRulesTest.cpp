#include "grid/CellRules.h"

#include <gtest/gtest.h>

#include "GridFakes.h"
#include "support/Raised.h"

namespace quarv::test {
namespace {

using Kind = FakeEditors::Kind;

class CellRulesTest : public ::testing::Test {
  protected:
    CellRulesTest() { column.Init(QStringLiteral("A"), 1400, 0); }

    void SetChoices(const std::vector<QString>& choices) {
        column.Choices = std::make_shared<StringList>();
        for (const QString& choice : choices) column.Choices->Add(choice);
    }
    void Show(qint32 type, const Value& value) {
        column.ColType = type;
        FindCellRule(column)->show(editors, column, value, QRectF(1, 2, 3, 4));
    }
    Value Read(qint32 type) {
        column.ColType = type;
        return FindCellRule(column)->read(editors, column);
    }

    KelEditGridColumn column;
    FakeEditors editors;
};

TEST_F(CellRulesTest, OnlyFiveKindsHaveAnEditor) {
    for (const qint32 type : {-1, 2, 6, 99}) {
        column.ColType = type;
        EXPECT_EQ(FindCellRule(column), nullptr) << type;
    }
    for (const qint32 type : {0, 1, 3, 4, 5}) {
        column.ColType = type;
        EXPECT_NE(FindCellRule(column), nullptr) << type;
    }
}

TEST_F(CellRulesTest, TextGoesIntoTheTextBox) {
    column.MaxLength = 3;
    Show(0, Value(u"abcdef"));
    EXPECT_EQ(editors.shown, Kind::Text);
    EXPECT_EQ(editors.text, u"abcdef");
    EXPECT_EQ(editors.maxLength, 3);
    EXPECT_EQ(editors.place, QRectF(1, 2, 3, 4));
    editors.text = QStringLiteral("x");
    EXPECT_EQ(Read(0).Text(), u"x");
}

TEST_F(CellRulesTest, AnEmptyListOfChoicesIsNone) {
    SetChoices({});
    Show(0, Value(u"abc"));
    EXPECT_EQ(editors.shown, Kind::Text);
}

TEST_F(CellRulesTest, TextWithChoicesGoesIntoAListThatTakesFreeText) {
    SetChoices({QStringLiteral("red"), QStringLiteral("green")});
    Show(0, Value(u"green"));
    EXPECT_EQ(editors.shown, Kind::List);
    EXPECT_EQ(editors.chosen, 1);
    EXPECT_TRUE(editors.takesFreeText);
    EXPECT_EQ(Read(0).Text(), u"green");
}

TEST_F(CellRulesTest, TextThatIsNoChoiceStaysLetterForLetter) {
    SetChoices({QStringLiteral("red"), QStringLiteral("green")});
    Show(0, Value(u"Green"));
    EXPECT_EQ(editors.chosen, -1);
    EXPECT_EQ(Read(0).Text(), u"Green");
}

TEST_F(CellRulesTest, AListCellHoldsTheNumberOfItsEntry) {
    SetChoices({QStringLiteral("red"), QStringLiteral("green")});
    Show(1, Value(2));
    EXPECT_EQ(editors.shown, Kind::List);
    EXPECT_EQ(editors.chosen, 1);
    EXPECT_FALSE(editors.takesFreeText);
    EXPECT_EQ(Read(1).ToInteger(), 2);
    editors.chosen = -1;
    EXPECT_EQ(Read(1).ToInteger(), 0);
    EXPECT_EQ(Read(1).kind(), Value::Kind::Integer);
}

TEST_F(CellRulesTest, NothingChosenIsZeroOrNoValue) {
    SetChoices({QStringLiteral("red")});
    for (const Value& value : {Value(0), Value(), Value::Null()}) {
        editors.chosen = 7;
        Show(1, value);
        EXPECT_EQ(editors.chosen, -1);
    }
}

TEST_F(CellRulesTest, AnEntryThatTheListLacksIsRefused) {
    SetChoices({QStringLiteral("red")});
    EXPECT_EQ(Raised([&] { Show(1, Value(2)); }), 380);
    EXPECT_EQ(Raised([&] { Show(1, Value(-1)); }), 380);
    EXPECT_EQ(Raised([&] { Show(1, Value(u"red")); }), 13);
    column.Choices = nullptr;
    EXPECT_EQ(Raised([&] { Show(1, Value(1)); }), 380);
    EXPECT_EQ(editors.shown, Kind::None);
}

TEST_F(CellRulesTest, ACheckCellHoldsABoolean) {
    Show(3, Value(true));
    EXPECT_EQ(editors.shown, Kind::Check);
    EXPECT_TRUE(editors.checked);
    EXPECT_TRUE(Read(3).ToBoolean());
    EXPECT_EQ(Read(3).kind(), Value::Kind::Boolean);
    Show(3, Value::Null());
    EXPECT_FALSE(editors.checked);
    EXPECT_EQ(Raised([&] { Show(3, Value(u"maybe")); }), 13);
}

TEST_F(CellRulesTest, ABrowseCellKeepsTheFileName) {
    column.MaxLength = 9;
    Show(4, Value(u"old"));
    EXPECT_EQ(editors.shown, Kind::TextWithButton);
    EXPECT_EQ(editors.maxLength, 9);
    editors.text = QStringLiteral("c:\\a\\b.txt");
    EXPECT_EQ(Read(4).Text(), u"b.txt");
    editors.text = QStringLiteral("d:x");
    EXPECT_EQ(Read(4).Text(), u"x");
    editors.text = QStringLiteral("plain");
    EXPECT_EQ(Read(4).Text(), u"plain");
    column.FileNameOnly = false;
    editors.text = QStringLiteral("c:\\a\\b.txt");
    EXPECT_EQ(Read(4).Text(), u"c:\\a\\b.txt");
}

TEST_F(CellRulesTest, ACustomCellKeepsTheText) {
    Show(5, Value(12));
    EXPECT_EQ(editors.shown, Kind::TextWithButton);
    EXPECT_EQ(editors.text, u"12");
    editors.text = QStringLiteral("c:\\a\\b.txt");
    EXPECT_EQ(Read(5).Text(), u"c:\\a\\b.txt");
}

TEST_F(CellRulesTest, NullIsEditedAsNoText) {
    editors.text = QStringLiteral("before");
    Show(0, Value::Null());
    EXPECT_EQ(editors.text, u"");
}

TEST_F(CellRulesTest, ShowsValuesAsText) {
    EXPECT_EQ(ShownText(column, Value(12)), u"12");
    EXPECT_EQ(ShownText(column, Value::Null()), u"");
    EXPECT_EQ(ShownText(column, Value(ObjectRef())), u"");
    EXPECT_EQ(ShownText(column, Value(QByteArray("\x01\xAB", 2))), u"0x01AB");
    column.ColType = 2;
    EXPECT_EQ(ShownText(column, Value(u"odd")), u"odd");
}

TEST_F(CellRulesTest, ShowsTheEntryOfANumber) {
    SetChoices({QStringLiteral("red"), QStringLiteral("green")});
    column.ColType = 1;
    EXPECT_EQ(ShownText(column, Value(2)), u"green");
    EXPECT_EQ(ShownText(column, Value(0)), u"");
    EXPECT_EQ(ShownText(column, Value(3)), u"");
    EXPECT_EQ(ShownText(column, Value(u"free")), u"free");
}

TEST_F(CellRulesTest, OfLongBytesOnlyTheirStartIsShown) {
    EXPECT_EQ(ShownText(column, Value(QByteArray(10'000'000, 'a'))).size(), 2 + 2 * 4096);
}

}  // namespace
}  // namespace quarv::test
