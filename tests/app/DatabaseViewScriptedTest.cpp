// The main window over the real driver and a server that answers what no good server would.
#include <gtest/gtest.h>

#include "app/ServedWindow.h"
#include "platform/ado/odbc/FakeServer.h"
#include "support/TextPrinter.h"

namespace quarv::test {
namespace {

using C = FakeColumn;

FakeTds Texts(const QStringList& columns, const std::vector<QStringList>& rows) {
    std::vector<FakeColumn> all;
    for (const QString& name : columns) all.push_back(C::NVarChar(name, 200));
    FakeTds answer;
    answer.Columns(all);
    for (const QStringList& row : rows) {
        QByteArray bytes("\xD1");
        for (const QString& text : row)
            bytes += text.isNull() ? Le(0xFFFF, 2)
                                   : Le(static_cast<quint64>(text.size()) * 2, 2) + Utf16(text);
        answer.Raw(bytes);
    }
    return answer.Done(static_cast<qint64>(rows.size()));
}

// A database of one table, which is keyed on its column "n", and one procedure. A test may have
// other answers to statements that begin with certain words.
class ScriptedDatabase {
  public:
    ScriptedDatabase(const QString& table, const QString& procedure)
        : answers_{
              {"exec sp_server_info", Texts({"attribute_value"}, {{"Scripted 1.0"}})},
              {"sp_tables", Texts({"q", "o", "n", "t", "r"}, {{"db", "dbo", table, "TABLE", {}}})},
              {"..sp_stored_procedures",
               Texts({"q", "o", "n", "i", "u", "s", "r", "t"},
                     {{"db", "dbo", procedure + ";1", "0", "0", "0", {}, "2"}})},
              {"select * from information_schema.columns",
               Texts({"column_name", "column_default", "is_nullable", "data_type",
                      "character_maximum_length", "domain_name"},
                     {{"n", {}, "NO", "nvarchar", "200", {}}})},
              {"sp_pkeys",
               Texts({"q", "o", "t", "c", "s", "k"}, {{"db", "dbo", table, "n", "1", "PK"}})},
              {"sp_statistics",
               Texts({"q", "o", "t", "u", "i", "n", "y", "s", "c", "l", "r", "p", "f"}, {})},
              {"select top 100", Texts({"n"}, {{"first"}, {"second"}})},
          } {}

    void Answer(const QString& words, const QByteArray& bytes) { answers_.insert(words, bytes); }

    QByteArray operator()(const QString& sql) const {
        // Words that begin with others stand behind them.
        for (auto each = answers_.end(); each-- != answers_.begin();)
            if (sql.startsWith(each.key())) return each.value();
        return FakeTds().Done();
    }

  private:
    QMap<QString, QByteArray> answers_;
};

// The window over the server, for as long as both live.
struct Scripted {
    explicit Scripted(ScriptedDatabase database)
        : server([answers = std::move(database)](const QString& sql) { return answers(sql); }) {}

    FakeServer server;
    ServedWindow window{server.ConnectionString(), 1};
};

TEST(DatabaseViewScripted, ARightToLeftNameIsShownInEveryPane) {
    const QString name = QString::fromUtf8("جدول العملاء");
    Scripted scripted(ScriptedDatabase(name, "p"));
    EXPECT_EQ(scripted.window.ClickTable(name), "");
    EXPECT_EQ(scripted.window.Captions(),
              (QStringList{"Fields: " + name, "Indexes: " + name, "Records:" + name}));
    EXPECT_EQ(scripted.window.Fields(), QStringList{"n"});
    EXPECT_EQ(scripted.window.editor.Cells(), (QStringList{"first", "second"}));
    EXPECT_EQ(scripted.server.Statements().last(), "select top 100 * from [" + name + "]");
    EXPECT_FALSE(scripted.window.window.grab().isNull());
}

TEST(DatabaseViewScripted, AQueryThatIsNeverAnsweredIsGivenUpAndTheNextClickWorks) {
    ScriptedDatabase database("t", "p");
    database.Answer("select top 100 * from [t] where", FakeServer::ThenSilence);
    Scripted scripted(database);
    scripted.window.ClickTable("t");
    EXPECT_EQ(scripted.window.RunCondition("n = 1"), "");
    EXPECT_EQ(scripted.window.TakeBoxes(), QStringList{"Error: Timeout expired"});
    EXPECT_EQ(scripted.window.editor.Cells(), (QStringList{"first", "second"}));
    EXPECT_EQ(scripted.window.ClickTable("t"), "");
    EXPECT_EQ(scripted.window.TakeBoxes(), QStringList());
}

// As it is for one that was made with encryption.
TEST(DatabaseViewScripted, AProcedureWithoutASourceIsLoggedBehindItsCaption) {
    ScriptedDatabase database("t", "Hidden");
    database.Answer("select * from information_schema.routines",
                    Texts({"routine_schema", "routine_name", "created", "routine_definition"},
                          {{"dbo", "Hidden", "2024", {}}}));
    Scripted scripted(database);
    EXPECT_EQ(scripted.window.ClickProcedure("Hidden"), "94: Null used as text\n");
    EXPECT_EQ(scripted.window.Procedure(), (QStringList{"dbo.Hidden, created 2024", "", ""}));
    EXPECT_EQ(scripted.window.ClickTable("t"), "");
    EXPECT_EQ(scripted.window.TakeBoxes(), QStringList());
}

TEST(DatabaseViewScripted, AnErrorInTheMiddleOfTheRowsIsTold) {
    ScriptedDatabase database("t", "p");
    const QByteArray broken = FakeTds()
                                  .Columns({C::NVarChar("n", 200)})
                                  .Row({Utf16("first")})
                                  .Error(824, "The page is damaged.|Restore it.")
                                  .DoneError();
    database.Answer("select top 100 * from [t] where", broken);
    Scripted scripted(database);
    scripted.window.ClickTable("t");
    EXPECT_EQ(scripted.window.RunCondition("1=1"), "");
    EXPECT_EQ(scripted.window.TakeBoxes(),
              QStringList{"Error: The page is damaged.\r\nRestore it."});
    EXPECT_EQ(scripted.window.editor.Cells(), QStringList());
    EXPECT_EQ(scripted.window.RunCondition(""), "");
    EXPECT_EQ(scripted.window.editor.Cells(), (QStringList{"first", "second"}));
}

// The lists of columns and of indexes are incomplete or not what they should be.
TEST(DatabaseViewScripted, APaneThatCannotReadItsRowsIsLogged) {
    ScriptedDatabase database("t", "p");
    database.Answer("sp_helpindex",
                    Texts({"index_name", "index_keys", "index_description"}, {{"PK", {}, "d"}}));
    Scripted scripted(database);
    EXPECT_EQ(scripted.window.ClickTable("t"), "94: Null used as text\n");
    EXPECT_EQ(scripted.window.Captions(), (QStringList{"Fields: t", "Indexes: t", "Records:"}));
    EXPECT_EQ(scripted.window.Indexes(), QStringList{"PK"});
    EXPECT_EQ(scripted.window.TakeBoxes(), QStringList());
    EXPECT_EQ(scripted.window.RunCondition(""), "");
    EXPECT_EQ(scripted.window.editor.Cells(), (QStringList{"first", "second"}));
}

TEST(DatabaseViewScripted, TheServersEndInTheMiddleOfAClickIsToldOrLogged) {
    ScriptedDatabase database("t", "p");
    database.Answer("select top 100 * from [t] where",
                    FakeTds().Error(6002, "The server is shut down.", 1, 21).DoneError() +
                        FakeServer::ThenClose);
    Scripted scripted(database);
    scripted.window.ClickTable("t");
    EXPECT_EQ(scripted.window.RunCondition("1=1"), "");
    EXPECT_EQ(scripted.window.TakeBoxes(), QStringList{"Error: The server is shut down."});
    const QString lost = scripted.window.ClickTable("t");
    EXPECT_TRUE(lost.startsWith("-2147467259: The connection to the server was lost."))
        << lost.toStdString();
    EXPECT_EQ(scripted.window.ClickTable("t"), lost);
    EXPECT_EQ(scripted.window.editor.Cells(), (QStringList{"first", "second"}));
}

}  // namespace
}  // namespace quarv::test
