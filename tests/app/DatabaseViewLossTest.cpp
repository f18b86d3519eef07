// The main window's connection dies: between two clicks, and at every moment of one.
#include <algorithm>

#include <gmock/gmock.h>

#include "app/ServedDatabase.h"
#include "support/TextPrinter.h"

namespace quarv::test {
namespace {

const QString Lost = QStringLiteral(
    "The connection to the server was lost. Check that the server still runs, then open the "
    "database again.");
const QString Logged = "-2147467259: " + Lost + "\n";
const QString Told = "Error: " + Lost;

const QStringList Tables = {
    "create table Before (id int primary key, note nvarchar(9))",
    "insert Before values (1, N'one')",
    // Of more bytes than a packet holds.
    "create table After (n int primary key, filler nvarchar(50))",
    "declare @i int = 1; while @i <= 100 begin insert After values (@i, replicate(N'f', 50));"
    " set @i = @i + 1 end",
    "create procedure Early as select 1",
    "create procedure Late as select 2",
};

class DatabaseViewLoss : public ServedDatabase {
  protected:
    DatabaseViewLoss() { Show(Tables); }

    // Whatever is clicked fails in the same way, nothing is changed in the panes and nothing
    // connects again.
    void ExpectLost() {
        const QStringList captions = served->Captions();
        const QStringList procedure = served->Procedure();
        const QStringList cells = served->editor.Cells();
        for (int again = 0; again < 2; ++again) {
            EXPECT_EQ(served->ClickTable("Before"), Logged);
            EXPECT_EQ(served->ClickProcedure("Late"), Logged);
            EXPECT_EQ(served->ClickTable("After"), Logged);
            EXPECT_EQ(served->RunCondition("n = 1"), Logged);
        }
        EXPECT_EQ(served->TakeBoxes(), QStringList());
        EXPECT_EQ(served->Captions(), captions);
        EXPECT_EQ(served->Procedure(), procedure);
        EXPECT_EQ(served->editor.Cells(), cells);
        EXPECT_EQ(proxy.Connections(), 1);
    }
};

TEST_F(DatabaseViewLoss, BetweenTwoClicksEachClickIsLogged) {
    served->ClickProcedure("Early");
    served->ClickTable("Before");
    proxy.CutOff();
    ExpectLost();
    EXPECT_EQ(served->Captions(),
              (QStringList{"Fields: Before", "Indexes: Before", "Records:Before"}));
    EXPECT_EQ(served->editor.Cells(), QStringList{"1|one"});
}

TEST_F(DatabaseViewLoss, ACellIsStillChanged) {
    served->ClickTable("Before");
    proxy.CutOff();
    EXPECT_EQ(served->RunCondition(""), Logged);
    EXPECT_EQ(LogOf([&] { served->editor.Edit(1, 2, "new"); }), "");
    EXPECT_EQ(served->editor.Cells(), QStringList{"1|new"});
    EXPECT_EQ(served->editor.Row(1).OriginalValue(2).ToText(), "new");
    EXPECT_EQ(served->TakeBoxes(), QStringList());
}

TEST_F(DatabaseViewLoss, WhileRowsAreReadIsToldAndTheColumnsStayWithoutRows) {
    served->ClickTable("Before");
    served->ClickTable("After");
    proxy.CutAfter(9000);
    EXPECT_EQ(served->RunCondition(""), "");
    EXPECT_EQ(served->TakeBoxes(), QStringList{Told});
    EXPECT_EQ(served->editor.Heading(), "n|filler");
    EXPECT_EQ(served->editor.Cells(), QStringList());
    ExpectLost();
}

// The connection stays as it is, and nothing comes over it any more.
TEST_F(DatabaseViewLoss, AServerThatFallsSilentIsGivenUp) {
    served.reset();
    served.emplace(EmbeddedServer::ConnectionStringTo(proxy.Port()) + "Initial Catalog=shown;", 1);
    served->ClickTable("Before");
    proxy.Hush();
    EXPECT_EQ(served->RunCondition("id = 1"), Logged);
    EXPECT_EQ(served->ClickTable("After"), Logged);
    EXPECT_EQ(served->TakeBoxes(), QStringList());
    EXPECT_EQ(served->editor.Cells(), QStringList{"1|one"});
    EXPECT_EQ(proxy.Connections(), 2);
}

TEST_F(DatabaseViewLoss, OfAProcedureLeavesWhatIsShown) {
    served->ClickProcedure("Early");
    const QStringList shown = served->Procedure();
    EXPECT_EQ(shown[2], "create procedure Early as select 1");
    proxy.CutAfter(100);
    EXPECT_EQ(served->ClickProcedure("Late"), Logged);
    EXPECT_EQ(served->Procedure(), shown);
    ExpectLost();
}

// How far a click on "After" came that followed one on "Before".
enum Stage { InPanes, InKey, InQuery, InRows, Whole, Impossible };

Stage StageOf(ServedWindow& window, const QString& logged) {
    const bool caption = window.Captions()[2] == u"Records:After";
    const bool heading = window.editor.Heading() == u"n|filler";
    const qsizetype rows = window.editor.Cells().size();
    const QStringList boxes = window.TakeBoxes();
    const bool isLogged = logged == Logged && boxes.isEmpty();
    const bool isTold = logged.isEmpty() && boxes == QStringList{Told};
    if (!heading && rows == 1 && isLogged) return caption ? InKey : InPanes;
    if (!heading && rows == 1 && caption && isTold) return InQuery;
    if (heading && rows == 0 && caption && isTold) return InRows;
    if (heading && rows == 100 && caption && logged.isEmpty() && boxes.isEmpty()) return Whole;
    return Impossible;
}

TEST_F(DatabaseViewLoss, AtEveryMomentOfAClickLeavesTheStepsBeforeItAndNoneBehind) {
    std::vector<Stage> stages;
    for (int bytes = 1; stages.empty() || stages.back() < Whole; bytes += 450) {
        RecordingProxy between(server->Port());
        served.reset();
        served.emplace(EmbeddedServer::ConnectionStringTo(between.Port()) +
                       "Initial Catalog=shown;");
        served->ClickTable("Before");
        between.CutAfter(bytes);
        const QString logged = served->ClickTable("After");
        stages.push_back(StageOf(*served, logged));
        ASSERT_NE(stages.back(), Impossible) << bytes << " " << logged.toStdString();
        EXPECT_EQ(between.Connections(), 1);
    }
    EXPECT_TRUE(std::is_sorted(stages.begin(), stages.end()));
    for (const Stage each : {InPanes, InKey, InQuery, InRows})
        EXPECT_THAT(stages, testing::Contains(each));
}

}  // namespace
}  // namespace quarv::test
