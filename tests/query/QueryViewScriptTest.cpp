#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "platform/forms/ProgressBar.h"
#include "query/QueryWindow.h"

namespace quarv::test {
namespace {

using ado::MemoryResult;

const forms::BoxIcon Plain = forms::BoxIcon::None;

class QueryViewScriptTest : public QueryWindow {
  protected:
    QueryViewScriptTest() {
        lentScript->AnswerOthers([](const QString&) { return ado::MemoryResults{}; });
    }

    QString File(const QByteArray& bytes) {
        const QString path = folder.filePath(QStringLiteral("script.sql"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }

    // Clicks the button and chooses the file in the dialog that comes up; none is a cancel.
    void Run(const QString& path) {
        Open("");
        dialogs = 0;
        QTimer::singleShot(0, &window, [this, path] { Choose(path); });
        QTest::mouseClick(&Button("RunScript"), Qt::LeftButton);
        EXPECT_EQ(dialogs, 1);
    }

    void Choose(const QString& path) {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        ++dialogs;
        EXPECT_EQ(dialog->windowTitle(), "Open");
        EXPECT_TRUE(dialog->selectedFiles().value(0).isEmpty() ||
                    !dialog->selectedFiles().value(0).endsWith(QStringLiteral(".sql")));
        if (path.isEmpty()) return dialog->reject();
        // The dialog checks that a chosen file is there, and one may vanish behind its back.
        const bool vanishes = path.startsWith(u'-');
        const QString name = vanishes ? path.mid(1) : path;
        dialog->selectFile(name);
        if (vanishes) QObject::connect(dialog, &QDialog::accepted, [name] { QFile::remove(name); });
        dialog->QDialog::accept();
    }

    QTemporaryDir folder;
    int dialogs = 0;
};

TEST_F(QueryViewScriptTest, RunsEachBatchOnTheLentConnectionAndTellsWhenComplete) {
    Run(File("create table a (b int)\r\ngo\r\n\r\ninsert a values (1)\nGO -- done\nselect 1"));
    EXPECT_EQ(
        lentScript->Statements(),
        (QStringList{"create table a (b int)\r\n", "\r\ninsert a values (1)\r\n", "select 1\r\n"}));
    EXPECT_TRUE(script->Opened().isEmpty());
    EXPECT_EQ(boxes.Seen(), (std::vector<SeenBox>{{"Complete", "Quarv", Plain}}));
}

TEST_F(QueryViewScriptTest, AFailingBatchIsToldAndStopsTheScript) {
    lentScript->Answer("bad\r\n", MemoryResult::Fails(QStringLiteral("Incorrect syntax.")));
    Run(File("one\ngo\nbad\ngo\nthree\n"));
    EXPECT_EQ(lentScript->Statements(), (QStringList{"one\r\n", "bad\r\n"}));
    EXPECT_EQ(boxes.Seen(), (std::vector<SeenBox>{{"Incorrect syntax.", "Quarv", Plain}}));
    EXPECT_EQ(db->ADOConn()->State(), ado::adStateOpen);
}

TEST_F(QueryViewScriptTest, AnErrorBehindTheFirstResultOfABatchStopsTheScriptToo) {
    lentScript->Answer("two\r\n", {MemoryResult::Rows({"a"}, {{1}}), MemoryResult::Closed(),
                                   MemoryResult::Fails(QStringLiteral("late"))});
    Run(File("two\ngo\nthree"));
    EXPECT_EQ(lentScript->Statements(), QStringList{"two\r\n"});
    EXPECT_EQ(boxes.Seen(), (std::vector<SeenBox>{{"late", "Quarv", Plain}}));
}

TEST_F(QueryViewScriptTest, AnEmptyFileIsComplete) {
    Run(File(""));
    EXPECT_TRUE(lentScript->Statements().isEmpty());
    EXPECT_EQ(boxes.Seen(), (std::vector<SeenBox>{{"Complete", "Quarv", Plain}}));
}

TEST_F(QueryViewScriptTest, ACancelledDialogRunsNothing) {
    Run({});
    EXPECT_TRUE(boxes.Seen().empty());
    EXPECT_TRUE(lentScript->Statements().isEmpty());
}

TEST_F(QueryViewScriptTest, AFileThatVanishedIsTold) {
    Run(u'-' + File("select 1"));
    EXPECT_TRUE(lentScript->Statements().isEmpty());
    EXPECT_EQ(boxes.Seen(), (std::vector<SeenBox>{{"File does not exist", "Quarv", Plain}}));
}

TEST_F(QueryViewScriptTest, ABinaryFileFailsBeforeAnythingIsSent) {
    Run(File("select 1\ngo\n\xff\xfb\x80"));
    EXPECT_TRUE(lentScript->Statements().isEmpty());
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_TRUE(boxes.Seen()[0].text.contains(QStringLiteral("script.sql")));
}

TEST_F(QueryViewScriptTest, TheBarIsSeenWhileTheScriptRunsAndOnlyThen) {
    auto& bar = Child<forms::ProgressBar>("Progress");
    QStringList seen;
    lentScript->AnswerOthers([&](const QString&) {
        seen << QStringLiteral("%1 %2 of %3").arg(bar.Visible()).arg(bar.Value()).arg(bar.Max());
        return ado::MemoryResults{};
    });
    Open("");
    EXPECT_FALSE(bar.Visible());
    Run(File("one\ngo\ntwo\ngo\nthree\n"));
    EXPECT_EQ(seen, (QStringList{"1 0 of 3", "1 1 of 3", "1 2 of 3"}));
    EXPECT_FALSE(bar.Visible());
    lentScript->Answer("one\r\n", MemoryResult::Fails(QStringLiteral("no")));
    Run(File("one\n"));
    EXPECT_FALSE(bar.Visible());
}

TEST_F(QueryViewScriptTest, CommandsAreWaitedForWithoutEndWhileTheScriptRuns) {
    db->ADOConn()->SetCommandTimeout(45);
    std::vector<int> seconds;
    lentScript->AnswerOthers([&](const QString&) {
        seconds.push_back(db->ADOConn()->CommandTimeout());
        return ado::MemoryResults{};
    });
    Run(File("one\ngo\ntwo"));
    EXPECT_EQ(seconds, (std::vector<int>{0, 0}));
    EXPECT_EQ(db->ADOConn()->CommandTimeout(), 45);
}

}  // namespace
}  // namespace quarv::test
