#include "query/QueryView.h"

#include <gtest/gtest.h>

#include <QTest>

#include "query/QueryWindow.h"

namespace quarv::test {
namespace {

using ado::MemoryResult;

class QueryViewTest : public QueryWindow {};

TEST_F(QueryViewTest, ShowsTheConnectionInItsCaptionAndTheTextInItsBox) {
    window.DoModeless(db, QStringLiteral("select 1"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isModal());
    EXPECT_EQ(window.Caption(), "Query: SQL Server srv Sales");
    EXPECT_EQ(Query().Text(), "select 1");
    EXPECT_EQ(ResultsFrame().Caption(), "Results");
    EXPECT_TRUE(script->Opened().isEmpty());
}

TEST_F(QueryViewTest, ItsBoxHasTheKeyboardAtFirst) {
    Open("");
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("abc"));
    EXPECT_EQ(Query().Text(), "abc");
}

TEST_F(QueryViewTest, ASecondTextTakesThePlaceOfTheFirst) {
    window.DoModeless(db, QStringLiteral("select 1"));
    window.Close();
    window.DoModeless(db, QStringLiteral("select 2"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(Query().Text(), "select 2");
}

TEST_F(QueryViewTest, RunsTheWholeTextOnAConnectionOfItsOwn) {
    script->Answer("select a from t", MemoryResult::Rows({"a"}, {{1}, {2}}));
    Open("select a from t");
    window.RunIt();
    EXPECT_EQ(script->Statements(), QStringList{"select a from t"});
    EXPECT_EQ(script->Opened(), QStringList{db->GetConnectionString()});
    EXPECT_EQ(Rows(), (QStringList{"a", "1", "2"}));
}

TEST_F(QueryViewTest, RunsOnlyTheSelectedCharacters) {
    script->Answer("select 2", MemoryResult::Rows({"b"}, {{2}}));
    Open("select 1\r\nselect 2\r\nselect 3");
    Query().SetSelStart(10);
    Query().SetSelLength(8);
    window.RunIt();
    EXPECT_EQ(script->Statements(), QStringList{"select 2"});
    EXPECT_EQ(Rows(), (QStringList{"b", "2"}));
}

TEST_F(QueryViewTest, ASelectionOfOneCharacterCounts) {
    script->AnswerOthers([](const QString&) { return ado::MemoryResults{}; });
    Open("abc");
    Query().SetSelStart(1);
    Query().SetSelLength(1);
    window.RunIt();
    EXPECT_EQ(script->Statements(), QStringList{"b"});
}

TEST_F(QueryViewTest, SendsTheTextAsItWasGiven) {
    const QString text = QStringLiteral(u"select '\u00A0\U0001F600\u2028'\n-- lone ends\r go");
    script->AnswerOthers([](const QString&) { return ado::MemoryResults{}; });
    Open(text);
    window.RunIt();
    EXPECT_EQ(script->Statements(), QStringList{text});
}

TEST_F(QueryViewTest, ARejectedQueryIsToldAndTheRowsStay) {
    script->Answer("good", MemoryResult::Rows({"a"}, {{1}}));
    script->Answer("bad", MemoryResult::Fails(QStringLiteral("Invalid object name 'x'.")));
    Open("good");
    window.RunIt();
    Query().SetText(QStringLiteral("bad"));
    window.RunIt();
    EXPECT_EQ(
        boxes.Seen(),
        (std::vector<SeenBox>{{"Invalid object name 'x'.", "Run", forms::BoxIcon::Information}}));
    EXPECT_EQ(Rows(), (QStringList{"a", "1"}));
}

TEST_F(QueryViewTest, AConnectionThatCannotBeOpenedIsTold) {
    script->FailOpen(DataError(-2147467259, QStringLiteral("The server srv cannot be reached.")));
    Open("select 1");
    window.RunIt();
    EXPECT_EQ(boxes.Seen(), (std::vector<SeenBox>{{"The server srv cannot be reached.", "Run",
                                                   forms::BoxIcon::Information}}));
}

TEST_F(QueryViewTest, ErrorsBehindTheFirstResultAreToldTooAndItsRowsShown) {
    script->Answer("batch",
                   {MemoryResult::Rows({"a"}, {{1}}), MemoryResult::Fails(QStringLiteral("first")),
                    MemoryResult::Closed(), MemoryResult::Fails(QStringLiteral("second"))});
    Open("batch");
    window.RunIt();
    const auto note = forms::BoxIcon::Information;
    EXPECT_EQ(boxes.Seen(),
              (std::vector<SeenBox>{{"first", "Run", note}, {"second", "Run", note}}));
    EXPECT_EQ(Rows(), (QStringList{"a", "1"}));
}

TEST_F(QueryViewTest, AStatementWithoutRowsEmptiesTheGrid) {
    script->Answer("rows", MemoryResult::Rows({"a"}, {{1}}));
    script->Answer("print 'x'", MemoryResult::Closed());
    Open("rows");
    window.RunIt();
    Query().SetText(QStringLiteral("print 'x'"));
    window.RunIt();
    EXPECT_TRUE(boxes.Seen().empty());
    EXPECT_EQ(Rows(), QStringList{""});
}

TEST_F(QueryViewTest, RunsOnF5WhereverTheFocusIs) {
    script->Answer("q", MemoryResult::Rows({"a"}, {{1}}));
    Open("q");
    for (QWidget* place : {static_cast<QWidget*>(&Query()), static_cast<QWidget*>(&Results()),
                           static_cast<QWidget*>(&Button("RunScript"))}) {
        place->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5);
    }
    EXPECT_EQ(script->Statements(), (QStringList{"q", "q", "q"}));
}

TEST_F(QueryViewTest, F5WithAModifierHeldRunsNothing) {
    Open("q");
    Query().SetFocus();
    for (const Qt::KeyboardModifier held :
         {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier})
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F5, held);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_TRUE(script->Statements().isEmpty());
}

TEST_F(QueryViewTest, RunsWhenF5IsLetGoNotWhenItIsPressed) {
    script->AnswerOthers([](const QString&) { return ado::MemoryResults{}; });
    Open("q");
    Query().SetFocus();
    QTest::keyPress(QApplication::focusWidget(), Qt::Key_F5);
    EXPECT_TRUE(script->Statements().isEmpty());
    QTest::keyRelease(QApplication::focusWidget(), Qt::Key_F5);
    EXPECT_EQ(script->Statements(), QStringList{"q"});
}

TEST_F(QueryViewTest, RunsOnAClickOfItsButton) {
    script->Answer("q", MemoryResult::Rows({"a"}, {{1}}));
    Open("q");
    QTest::mouseClick(&Button("RunQuery"), Qt::LeftButton);
    EXPECT_EQ(script->Statements(), QStringList{"q"});
    EXPECT_EQ(Rows(), (QStringList{"a", "1"}));
}

TEST_F(QueryViewTest, ItsButtonsShowTheirWords) {
    Open("");
    for (const char* name : {"RunQuery", "RunScript"})
        EXPECT_TRUE(drawing::HasPicture(Button(name).Picture())) << name;
    EXPECT_EQ(Button("RunQuery").SpokenName(), "Run Query");
    EXPECT_GT(Button("RunQuery").Width(), Button("RunQuery").Picture()->Width());
    EXPECT_GT(Button("RunScript").Width(), Button("RunScript").Picture()->Width());
}

TEST_F(QueryViewTest, PlacesItsControlsByItsSize) {
    Open("");
    window.Move(window.Left(), window.Top(), 12000, 9000);
    EXPECT_EQ(Query().Left(), 120);
    EXPECT_EQ(Query().Top(), 480);
    EXPECT_EQ(Query().Width(), 11760);
    EXPECT_EQ(Query().Height(), 2175);
    EXPECT_EQ(ResultsFrame().Top(), 2760);
    EXPECT_EQ(ResultsFrame().Width(), 11760);
    EXPECT_EQ(ResultsFrame().Height(), 6000);
    EXPECT_EQ(Results().Left(), 120);
    EXPECT_EQ(Results().Top(), 240);
    EXPECT_EQ(Results().Width(), 11520);
    EXPECT_EQ(Results().Height(), 5520);
}

TEST_F(QueryViewTest, ASizeOfThirtyTwipsOrLessIsNotApplied) {
    Open("");
    window.Move(window.Left(), window.Top(), 12000, 9000);
    window.Move(window.Left(), window.Top(), 12000, 3030);  // 30 for the frame
    EXPECT_EQ(ResultsFrame().Height(), 6000);
    window.Move(window.Left(), window.Top(), 12000, 3045);
    EXPECT_EQ(ResultsFrame().Height(), 45);
    EXPECT_EQ(Results().Height(), 5520);
}

TEST_F(QueryViewTest, TheDesignerPlacesTheControlsBeforeTheFirstShowing) {
    EXPECT_EQ(Query().Width(), 9495);
    EXPECT_EQ(ResultsFrame().Width(), 10215);
    EXPECT_EQ(ResultsFrame().Height(), 3015);
}

TEST_F(QueryViewTest, IsPlacedOnceWhenItLoads) {
    int placed = 0;
    ProgramHooks().centreForm = [&](QObject& form, QObject*&) { placed += &form == &window; };
    Open("");
    Open("");
    ProgramHooks() = Hooks();
    EXPECT_EQ(placed, 1);
}

TEST_F(QueryViewTest, TheTabKeyStaysInTheQueryBox) {
    Open("");
    Query().SetFocus();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("a"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("b"));
    EXPECT_EQ(Query().Text(), "a\tb");
}

TEST_F(QueryViewTest, ANewQueryReplacesAResultThatWasNotReadToItsEnd) {
    std::vector<MemoryResult::Row> many;
    for (int i = 0; i < 10000; ++i) many.push_back({i});
    script->Answer("many", MemoryResult::Rows({"n"}, std::move(many)));
    script->Answer("few", MemoryResult::Rows({"a"}, {{1}}));
    script->Answer("bad", MemoryResult::Fails(QStringLiteral("no")));
    Open("many");
    window.RunIt();
    EXPECT_LT(Results().model()->rowCount(), 200);
    Query().SetText(QStringLiteral("bad"));
    window.RunIt();
    const int read = Results().model()->rowCount();
    Results().scrollToBottom();
    QCoreApplication::processEvents();
    EXPECT_GT(Results().model()->rowCount(), read);
    Query().SetText(QStringLiteral("few"));
    window.RunIt();
    EXPECT_EQ(Rows(), (QStringList{"a", "1"}));
    EXPECT_EQ(script->OpenConnections(), 1);
}

TEST_F(QueryViewTest, ClosedItHoldsNoRowsAndNoConnection) {
    std::vector<MemoryResult::Row> many(10000, {1});
    script->Answer("many", MemoryResult::Rows({"n"}, std::move(many)));
    Open("many");
    window.RunIt();
    EXPECT_EQ(script->OpenConnections(), 1);
    window.Close();
    EXPECT_EQ(script->OpenConnections(), 0);
    EXPECT_EQ(db->ADOConn()->State(), ado::adStateOpen);
    Open("many");
    EXPECT_EQ(Rows(), QStringList{""});
    window.RunIt();
    EXPECT_GT(Results().model()->rowCount(), 10);
}

TEST_F(QueryViewTest, NothingElseIsRunWhileABoxTellsOfAQuery) {
    script->Answer("bad", MemoryResult::Fails(QStringLiteral("no")));
    Open("bad");
    boxes.onShow = [this] {
        window.RunIt();
        Button("RunScript").Press();
    };
    window.RunIt();
    EXPECT_EQ(script->Statements(), QStringList{"bad"});
    EXPECT_EQ(boxes.Seen().size(), 1U);
}

TEST_F(QueryViewTest, AFailureThatIsNoErrorOfTheSystemIsToldToo) {
    script->AnswerOthers([](const QString&) -> ado::MemoryResults { throw std::bad_alloc(); });
    Open("huge");
    window.RunIt();
    ASSERT_EQ(boxes.Seen().size(), 1U);
    EXPECT_EQ(boxes.Seen()[0].title, "Run");
    EXPECT_FALSE(boxes.Seen()[0].text.isEmpty());
}

}  // namespace
}  // namespace quarv::test
