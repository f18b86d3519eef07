// The main window never writes: all that it sends is recorded on its way to a real server.
#include <gmock/gmock.h>

#include <QRegularExpression>

#include "app/ServedDatabase.h"
#include "support/TextPrinter.h"

namespace quarv::test {
namespace {

const QStringList Tables = {
    "create table Orders (id int not null primary key, note nvarchar(60), amount decimal(9,2))",
    "insert Orders values (1, N'one', 1.50), (2, null, 2.50), (3, N'O''Hara', 3.50)",
    "create table Lines (line int not null, [order] int not null, what nvarchar(60),"
    " constraint PK_Lines primary key ([order], line))",
    "insert Lines values (1, 7, N'tea'), (2, 7, N'cup')",
    "create table Heap (word nvarchar(60), n int)",
    "insert Heap values (N'same', 1), (N'same', 2)",
    "create procedure Sum2 @a int, @b int as select @a + @b",
};

QString ColumnsOf(const char* table) {
    return QStringLiteral(
               "select * from information_schema.columns where table_name='%1' order by "
               "ordinal_position")
        .arg(QLatin1String(table));
}

// The words of statements that write, as they stand in the bytes, which hold UTF-16 at even or at
// odd places.
QStringList WritesIn(const QByteArray& bytes) {
    static const QRegularExpression write(
        QStringLiteral("update\\s*\\[|\\b(update|insert|delete|merge|truncate|create|alter|drop|"
                       "into|grant|bulk|writetext|updatetext)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    QStringList found;
    for (const qsizetype start : {0, 1}) {
        const QByteArray part = bytes.mid(start);
        const QString text = QString::fromUtf16(reinterpret_cast<const char16_t*>(part.constData()),
                                                part.size() / 2);
        for (auto each = write.globalMatch(text); each.hasNext();) found += each.next().captured();
    }
    return found;
}

class DatabaseViewWrites : public ServedDatabase {
  protected:
    QStringList AllRows() {
        return Ask("select * from Orders order by id") +
               Ask("select * from Lines order by [order], line") +
               Ask("select * from Heap order by n");
    }
    // What the row now counts as agreed with the database.
    QString Agreed(qint16 row, qint16 column) {
        return served->editor.Row(row).OriginalValue(column).ToText();
    }
    // Recorded since the window began to open, its own login included.
    void ExpectNothingWritten() {
        const QByteArray sent = openedWith + proxy.Bytes();
        EXPECT_GT(sent.size(), 1000);
        EXPECT_EQ(WritesIn(sent), QStringList());
    }

    DatabaseViewWrites() {
        Show(Tables);
        before = AllRows();
    }
    void TearDown() override {
        served.reset();
        EXPECT_EQ(AllRows(), before);
    }

    QStringList before;
};

TEST_F(DatabaseViewWrites, CellsLeftByTabAndEnterAreComposedAndNotSent) {
    ServedWindow& window = *served;
    EXPECT_EQ(window.ClickTable("Orders"), "");
    const QStringList shown = proxy.Statements();
    window.editor.Edit(1, 2, "it's new");
    EXPECT_EQ(Agreed(1, 2), "it's new");
    window.editor.Open(3, 3);
    window.editor.Type("9");
    window.editor.Press(Qt::Key_Return);
    window.editor.Press(Qt::Key_Down);
    window.editor.Edit(2, 2, "no longer null");
    window.editor.Edit(1, 1, "11");
    EXPECT_EQ(Agreed(1, 1), "11");
    EXPECT_EQ(window.editor.Cells(),
              (QStringList{"11|it's new|1.50", "2|no longer null|2.50", "3|O'Hara|9"}));
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    EXPECT_EQ(proxy.Statements(), shown);
    ExpectNothingWritten();
}

TEST_F(DatabaseViewWrites, ACellLeftByAClickOnAnotherRowIsComposedAndNotSent) {
    ServedWindow& window = *served;
    window.ClickTable("Lines");
    window.editor.Open(1, 3);
    window.editor.Type("coffee");
    window.editor.Open(2, 1);
    EXPECT_EQ(Agreed(1, 3), "coffee");
    window.editor.Type("5");
    window.editor.Open(1, 1);
    EXPECT_EQ(Agreed(2, 1), "5");
    EXPECT_EQ(window.editor.Cells(), (QStringList{"1|7|coffee", "5|7|cup"}));
    ExpectNothingWritten();
}

// The pane takes the new table's name and key before the grid gives up the cell.
TEST_F(DatabaseViewWrites, ACellLeftByAClickOnAnotherTableIsNotSent) {
    ServedWindow& window = *served;
    window.ClickTable("Lines");
    window.editor.Open(1, 3);
    window.editor.Type("coffee");
    EXPECT_EQ(window.ClickTable("Heap"), "");
    EXPECT_EQ(window.editor.Cells(), (QStringList{"same|1", "same|2"}));
    window.editor.Open(2, 1);
    window.editor.Type("other");
    EXPECT_EQ(window.TakeBoxes(), QStringList());
    // A row of a key of one column has no second one.
    EXPECT_EQ(window.ClickTable("Lines"), "");
    EXPECT_EQ(window.TakeBoxes(), QStringList{"Error: Subscript out of range doing "});
    EXPECT_EQ(window.editor.Cells(), (QStringList{"1|7|tea", "2|7|cup"}));
    ExpectNothingWritten();
}

TEST_F(DatabaseViewWrites, ConditionsProceduresAndTheEndOfTheWindowSendNoWrite) {
    ServedWindow& window = *served;
    window.ClickTable("Heap");
    window.editor.Edit(1, 1, "changed");
    EXPECT_EQ(window.RunCondition("n = 2"), "");
    EXPECT_EQ(window.editor.Cells(), QStringList{"same|2"});
    window.editor.Open(1, 2);
    window.editor.Type("44");
    EXPECT_EQ(window.RunCondition(" "), "");
    EXPECT_EQ(window.editor.Cells(), (QStringList{"same|1", "same|2"}));
    window.editor.Open(2, 1);
    window.editor.Type("left open");
    EXPECT_EQ(window.ClickProcedure("Sum2"), "");
    window.window.Close();
    served.reset();
    ExpectNothingWritten();
}

TEST_F(DatabaseViewWrites, AClickAsksForEachPartOnce) {
    EXPECT_EQ(served->ClickTable("Orders"), "");
    EXPECT_EQ(proxy.Statements(),
              (QStringList{ColumnsOf("Orders"), "sp_helpindex 'Orders'", "sp_tables", "sp_pkeys",
                           "sp_statistics", "select top 100 * from [Orders]"}));
    proxy.Forget();
    EXPECT_EQ(served->ClickTable("Heap"), "");
    EXPECT_EQ(proxy.Statements(),
              (QStringList{ColumnsOf("Heap"), "sp_helpindex 'Heap'", "sp_tables", "sp_pkeys",
                           "sp_statistics", "select top 0 * from [Heap]",
                           "select top 100 * from [Heap]"}));
    proxy.Forget();
    EXPECT_EQ(served->ClickProcedure("Sum2"), "");
    EXPECT_EQ(proxy.Statements(),
              (QStringList{"select * from information_schema.routines where routine_name= 'Sum2'",
                           "sp_help 'Sum2'"}));
    proxy.Forget();
    EXPECT_EQ(served->RunCondition("n > 1"), "");
    EXPECT_EQ(proxy.Statements(),
              (QStringList{"sp_tables", "sp_pkeys", "sp_statistics", "select top 0 * from [Heap]",
                           "select top 100 * from [Heap] where n > 1"}));
    EXPECT_EQ(proxy.Connections(), 1);
}

// What the tests above look for is found where it is sent.
TEST_F(DatabaseViewWrites, AWriteThatTheUserTypesIsSeen) {
    served->ClickTable("Heap");
    EXPECT_EQ(WritesIn(proxy.Bytes()), QStringList());
    EXPECT_EQ(served->RunCondition("1=0; Update [Heap] set n=8 where n=9"), "");
    EXPECT_THAT(WritesIn(proxy.Bytes()), testing::ElementsAre(QStringLiteral("Update [")));
    EXPECT_EQ(proxy.Statements().last(),
              "select top 100 * from [Heap] where 1=0; Update [Heap] set n=8 where n=9");
    proxy.Forget();
    served->RunCondition("1=0; delete Heap where n=9");
    EXPECT_EQ(WritesIn(proxy.Bytes()), QStringList{"delete"});
    const QString odd = QStringLiteral("Insert t");
    const QByteArray utf16(reinterpret_cast<const char*>(odd.utf16()), odd.size() * 2);
    EXPECT_EQ(WritesIn('\1' + utf16), QStringList{"Insert"});
}

}  // namespace
}  // namespace quarv::test
