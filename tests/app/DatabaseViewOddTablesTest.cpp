// Tables that are odd, or gone, as the main window shows them over a real server.
#include "app/ServedDatabase.h"
#include "support/TextPrinter.h"

namespace quarv::test {
namespace {

QStringList CaptionsOf(const QString& name) {
    return {"Fields: " + name, "Indexes: " + name, "Records:" + name};
}

class DatabaseViewOddTables : public ServedDatabase {
  protected:
    // The table is shown whole, without a box and with nothing in the log.
    void ExpectShown(const QString& name, const QString& heading, const QStringList& rows) {
        EXPECT_EQ(served->ClickTable(name), "") << name.toStdString();
        EXPECT_EQ(served->TakeBoxes(), QStringList());
        EXPECT_EQ(served->Captions(), CaptionsOf(name));
        EXPECT_EQ(served->Fields().join(u'|'), heading);
        EXPECT_EQ(served->editor.Heading(), heading);
        EXPECT_EQ(served->editor.Cells(), rows);
    }
};

TEST_F(DatabaseViewOddTables, NamesOfAllKindsAreShown) {
    Show({"create table [it's] (id int)", "insert [it's] values (1)",
          "create table [two words] ([a b] int)", "insert [two words] values (2)",
          "create table [ lead] (id int)", "insert [ lead] values (3)",
          "create table [trail ] (id int)", "insert [trail ] values (4)",
          "create table [a%_[b] (id int)", "insert [a%_[b] values (5)",
          "create table [tab\tand\nline] (id int)", "insert [tab\tand\nline] values (6)",
          "create table [<b>&amp;] (id int)", "insert [<b>&amp;] values (7)"});
    ExpectShown("it's", "id", {"1"});
    ExpectShown("two words", "a b", {"2"});
    ExpectShown(" lead", "id", {"3"});
    ExpectShown("trail ", "id", {"4"});
    ExpectShown("a%_[b", "id", {"5"});
    ExpectShown("tab\tand\nline", "id", {"6"});
    ExpectShown("<b>&amp;", "id", {"7"});
}

// The name is not doubled, so the server does not find its end.
TEST_F(DatabaseViewOddTables, ABracketInTheNameIsToldInABoxWhereTheTableHasAKey) {
    ServedWindow& window =
        Show({"create table Plain (id int primary key)", "insert Plain values (1)",
              "create table [a]]b] (n int primary key)", "insert [a]]b] values (2)"});
    ExpectShown("Plain", "id", {"1"});
    EXPECT_EQ(window.ClickTable("a]b"), "");
    EXPECT_EQ(window.TakeBoxes(), QStringList{"Error: Incorrect syntax near ']'."});
    EXPECT_EQ(window.Captions(), CaptionsOf("a]b"));
    EXPECT_EQ(window.Fields(), QStringList{"n"});
    EXPECT_EQ(window.editor.Cells(), QStringList{"1"});
    ExpectShown("Plain", "id", {"1"});
}

TEST_F(DatabaseViewOddTables, ABracketInTheNameIsLoggedWhereTheTableHasNoKey) {
    ServedWindow& window = Show({"create table [a]]b] (n int)"});
    EXPECT_EQ(window.ClickTable("a]b"), "-2147217900: Incorrect syntax near ']'.\n");
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    EXPECT_EQ(window.Captions(), CaptionsOf("a]b"));
    EXPECT_EQ(window.editor.Heading(), "");
}

// A literal without a prefix is in the database's code page, which has no such letters; a name in
// brackets has.
TEST_F(DatabaseViewOddTables, ANameOutsideTheServersCodePageIsLoggedAndItsRowsCanBeAskedFor) {
    const QString name = QString::fromUtf8("جدول");
    ServedWindow& window =
        Show({"create table Plain (id int)", "create table [" + name + "] (n int)",
              "insert [" + name + "] values (7)"});
    ExpectShown("Plain", "id", {});
    EXPECT_EQ(window.ClickTable(name),
              "-2147217900: The object '\?\?\?\?' does not exist in database 'shown' or is invalid "
              "for this operation.\n");
    EXPECT_EQ(window.Captions(),
              (QStringList{"Fields: " + name, "Indexes: Plain", "Records:Plain"}));
    EXPECT_EQ(window.editor.Heading(), "id");
    EXPECT_EQ(window.RunCondition("n = 7"), "");
    EXPECT_EQ(window.editor.Heading(), "n");
    EXPECT_EQ(window.editor.Cells(), QStringList{"7"});
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    ExpectShown("Plain", "id", {});
}

TEST_F(DatabaseViewOddTables, ATableOfAnotherSchemaIsLogged) {
    ServedWindow& window = Show({"create table Near (id int)", "create schema far",
                                 "create table far.Away (n int)", "insert far.Away values (1)"});
    ExpectShown("Near", "id", {});
    EXPECT_EQ(window.ClickTable("Away"),
              "-2147217900: The object 'Away' does not exist in database 'shown' or is invalid for "
              "this operation.\n");
    EXPECT_EQ(window.Fields(), QStringList{"n"});
    EXPECT_EQ(window.Captions(), (QStringList{"Fields: Away", "Indexes: Near", "Records:Near"}));
    // Known to the catalogue, in whatever schema, and without a key there.
    EXPECT_EQ(window.RunCondition(""), "-2147217865: Invalid object name 'Away'.\n");
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    ExpectShown("Near", "id", {});
}

TEST_F(DatabaseViewOddTables, AViewIsShownWithoutIndexesAndKeyedOnItsFirstColumn) {
    ServedWindow& window =
        Show({"create table Base (id int primary key, note nvarchar(9))",
              "insert Base values (1, N'a')", "create view Seen as select note, id from Base"});
    ExpectShown("Seen", "note|id", {"a|1"});
    EXPECT_EQ(window.Indexes(), QStringList());
    EXPECT_EQ(window.editor.Row(1).PKValue(1).ToText(), "a");
    Run("drop table Base");
    EXPECT_EQ(window.ClickTable("Seen"), "-2147217865: Invalid object name 'Base'.\n");
    EXPECT_EQ(window.editor.Cells(), QStringList{"a|1"});
}

TEST_F(DatabaseViewOddTables, ATableThatIsGoneIsLoggedAndItsRecordsToo) {
    ServedWindow& window =
        Show({"create table Here (id int primary key)", "insert Here values (1)",
              "create table Gone (n int primary key)", "insert Gone values (2)"});
    ExpectShown("Gone", "n", {"2"});
    Run("drop table Gone");
    EXPECT_EQ(window.RunCondition("n = 2"),
              "-2146825023: Item cannot be found in the collection that corresponds to the "
              "requested name or ordinal.\n");
    EXPECT_EQ(window.editor.Cells(), QStringList{"2"});
    EXPECT_EQ(window.ClickTable("Gone"),
              "-2147217900: The object 'Gone' does not exist in database 'shown' or is invalid for "
              "this operation.\n");
    EXPECT_EQ(window.Captions(), CaptionsOf("Gone"));
    EXPECT_EQ(window.Fields(), QStringList());
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    ExpectShown("Here", "id", {"1"});
}

TEST_F(DatabaseViewOddTables, ATableWithoutRowsHasColumnsAndTakesClicks) {
    ServedWindow& window = Show({"create table Empty (id int primary key, note nvarchar(9))"});
    ExpectShown("Empty", "id|note", {});
    KelEditGrid& grid = window.editor.Grid();
    EXPECT_EQ(LogOf([&] {
                  QTest::mouseClick(&grid, Qt::LeftButton, {}, QPoint(40, 30));
                  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
                  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
              }),
              "");
    EXPECT_EQ(window.editor.Cells(), QStringList());
    EXPECT_EQ(window.TakeBoxes(), QStringList());
}

TEST_F(DatabaseViewOddTables, AsManyColumnsAsATableMayHaveAreShownAndEdited) {
    QStringList columns{"c1 int primary key"};
    QStringList names{"c1"};
    QStringList values{"1"};
    for (int i = 2; i <= 1024; ++i) {
        names += QStringLiteral("c%1").arg(i);
        columns += names.last() + " int";
        values += QString::number(i);
    }
    ServedWindow& window = Show({"create table Wide (" + columns.join(u',') + ")",
                                 "insert Wide values (" + values.join(u',') + ")"});
    ExpectShown("Wide", names.join(u'|'), {values.join(u'|')});
    window.editor.Grid().EnterCell(1, 1024);
    window.editor.Type("x");
    window.editor.Press(Qt::Key_Tab);
    EXPECT_EQ(window.editor.Row(1).OriginalValue(1024).ToText(), "x");
    EXPECT_EQ(window.TakeBoxes(), QStringList());
}

TEST_F(DatabaseViewOddTables, CellsOfTenMegabytesAreShownOpenedAndLeftAsTheyAre) {
    ServedWindow& window =
        Show({"create table Long (id int primary key, words nvarchar(max), bytes varbinary(max))",
              "insert Long values (1, replicate(cast(N'\u00E4b' as nvarchar(max)), 2500000), null)",
              "update Long set bytes = cast(words as varbinary(max))"});
    EXPECT_EQ(window.ClickTable("Long"), "");
    const QString words = window.editor.Row(1).ColumnValue(2).Text();
    EXPECT_EQ(words.size(), 5000000);
    EXPECT_EQ(window.editor.Row(1).ColumnValue(3).Bytes().size(), 10000000);
    EXPECT_FALSE(window.window.grab().isNull());
    for (const qint16 column : {2, 3}) {
        window.editor.Open(1, column);
        EXPECT_FALSE(window.window.grab().isNull());
        window.editor.Press(Qt::Key_Tab);
    }
    EXPECT_TRUE(window.editor.Row(1).ColumnValue(2).Text() == words);
    // A composed change would count as agreed: the bytes would be text.
    EXPECT_EQ(window.editor.Row(1).OriginalValue(3).kind(), Value::Kind::Bytes);
    EXPECT_EQ(window.RunCondition("id = 1"), "");
    EXPECT_EQ(window.TakeBoxes(), QStringList());
}

}  // namespace
}  // namespace quarv::test
