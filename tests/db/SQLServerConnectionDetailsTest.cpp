#include "db/SQLServerConnectionDetails.h"

#include "db/ConnectionDialogFixture.h"

namespace quarv {
namespace {

constexpr const char* WindowsString =
    "Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;Integrated Security=SSPI;";

class SQLServerConnectionDetailsTest : public ConnectionDialogFixture {};

TEST_F(SQLServerConnectionDetailsTest, FirstRunShowsTheBuiltInString) {
    Show();
    EXPECT_EQ(dialog_->Caption(), "SQL Server Connection Details");
    EXPECT_EQ(TextOf("Servername"), "localhost");
    EXPECT_EQ(TextOf("DatabaseList"), "mirel");
    EXPECT_EQ(TextOf("Username"), "");
    EXPECT_EQ(TextOf("Password"), "");
    EXPECT_TRUE(Get<forms::OptionButton>("UseWinAccount").Value());
    EXPECT_FALSE(Get<forms::OptionButton>("UseSQLAccount").Value());
    EXPECT_FALSE(Get<forms::FramePlus>("PleaseWaitFrame").Visible());
}

TEST_F(SQLServerConnectionDetailsTest, StoredStringFillsTheFields) {
    Store(
        "Provider=sqloledb;Data Source=tcp:srv,1433;Initial Catalog=Sales;User Id=sa;"
        "Password=secret;");
    Show();
    EXPECT_EQ(TextOf("Servername"), "tcp:srv,1433");
    EXPECT_EQ(TextOf("DatabaseList"), "Sales");
    EXPECT_EQ(TextOf("Username"), "sa");
    EXPECT_EQ(TextOf("Password"), "secret");
    EXPECT_FALSE(Get<forms::OptionButton>("UseWinAccount").Value());
    EXPECT_TRUE(Get<forms::OptionButton>("UseSQLAccount").Value());
    EXPECT_TRUE(Get<forms::TextBox>("Username").Enabled());
}

TEST_F(SQLServerConnectionDetailsTest, StringWithoutAnAccountChoosesNone) {
    Store("Provider=sqloledb;Data Source=srv;");
    Show();
    EXPECT_FALSE(Get<forms::OptionButton>("UseWinAccount").Value());
    EXPECT_FALSE(Get<forms::OptionButton>("UseSQLAccount").Value());
    EXPECT_EQ(TextOf("DatabaseList"), "mirel");
}

TEST_F(SQLServerConnectionDetailsTest, AccountFieldsFollowTheChoiceClicked) {
    Show();
    const auto expectEnabled = [this](bool enabled) {
        for (const char* name : {"Username", "UsernameLabel", "Password", "PaswordLabel"})
            EXPECT_EQ(Get<QWidget>(name).isEnabled(), enabled) << name;
    };
    expectEnabled(false);
    QTest::mouseClick(&Get<QWidget>("UseSQLAccount"), Qt::LeftButton, {}, QPoint(8, 12));
    expectEnabled(true);
    EXPECT_FALSE(Get<forms::OptionButton>("UseWinAccount").Value());
    QTest::mouseClick(&Get<QWidget>("UseWinAccount"), Qt::LeftButton, {}, QPoint(8, 12));
    expectEnabled(false);
}

TEST_F(SQLServerConnectionDetailsTest, TestOpensFillsTheListAndSaysSo) {
    Show();
    Press("Test");
    EXPECT_EQ(script_->Opened(), QStringList{WindowsString});
    EXPECT_EQ(script_->OpenConnections(), 0);
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0],
              (test::SeenBox{"Test successful.", "Test", forms::BoxIcon::Information}));
    auto& list = Get<forms::ComboBox>("DatabaseList");
    ASSERT_EQ(list.ListCount(), 2);
    EXPECT_EQ(list.List(0), "master");
    EXPECT_EQ(list.List(1), "Sales");
    EXPECT_EQ(list.Text(), "mirel");
    EXPECT_EQ(Stored(), "nothing");
}

TEST_F(SQLServerConnectionDetailsTest, TestTwiceListsEachDatabaseOnce) {
    Show();
    Press("Test");
    Press("Test");
    EXPECT_EQ(Get<forms::ComboBox>("DatabaseList").ListCount(), 2);
}

TEST_F(SQLServerConnectionDetailsTest, FailingTestShowsDescriptionAndNumber) {
    script_->FailOpen(DataError(-2147217843, "Login failed for user 'sa'."));
    Show();
    ChooseSqlAccount("sa", "wrong");
    Press("Test");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0],
              (test::SeenBox{"Error connecting to server: Login failed for user 'sa'.",
                             "Error -2147217843", forms::BoxIcon::Critical}));
    EXPECT_FALSE(Get<forms::FramePlus>("PleaseWaitFrame").Visible());
}

TEST_F(SQLServerConnectionDetailsTest, ListThatCannotBeReadIsNoFailure) {
    script_->AnswerSchema(ado::Schema::Catalogs, ado::MemoryResult::Fails("no catalogue"));
    Show();
    Press("Test");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0].text, "Test successful.");
    EXPECT_EQ(TextOf("DatabaseList"), "mirel");
}

TEST_F(SQLServerConnectionDetailsTest, ListThatBreaksOffKeepsTheText) {
    script_->AnswerSchema(
        ado::Schema::Catalogs,
        ado::MemoryResult::Rows({"CATALOG_NAME"}, {{u"master"}}).ThenFails("gone"));
    Show();
    Press("Test");
    EXPECT_EQ(watch_->Seen()[0].text, "Test successful.");
    EXPECT_EQ(TextOf("DatabaseList"), "mirel");
}

// Counts the paint requests that a widget gets before a moment that the test names.
class PaintCount : public QObject {
  public:
    explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
    int count = 0;
};

TEST_F(SQLServerConnectionDetailsTest, PleaseWaitIsPaintedBeforeTheConnectionIsTried) {
    SQLServerConnectionDetails* dialog = nullptr;
    int paintedBefore = -1;
    bool visibleBefore = false;
    std::unique_ptr<PaintCount> paints;
    const ado::ConnectionFactory memory = script_->Factory();
    SQLServerConnectionDetails own(
        mainWindow_,
        [&] {
            paintedBefore = paints->count;
            visibleBefore = dialog->findChild<forms::FramePlus*>("PleaseWaitFrame")->Visible();
            return memory();
        },
        registry_);
    dialog = &own;
    own.Show();
    paints = std::make_unique<PaintCount>(*own.findChild<QWidget*>("PleaseWaitFrame"));
    QTest::mouseClick(own.findChild<QWidget*>("Test"), Qt::LeftButton);
    EXPECT_TRUE(visibleBefore);
    EXPECT_GT(paintedBefore, 0);
    EXPECT_FALSE(own.findChild<forms::FramePlus*>("PleaseWaitFrame")->Visible());
}

TEST_F(SQLServerConnectionDetailsTest, MissingServerStopsTestAndOkay) {
    Show();
    SetText("Servername", "");
    Press("Test");
    Press("Okay");
    const test::SeenBox box{"You must provide the name of the SQL Server.", "Server name",
                            forms::BoxIcon::Information};
    EXPECT_EQ(watch_->Seen(), (std::vector<test::SeenBox>{box, box}));
    EXPECT_TRUE(script_->Opened().isEmpty());
    EXPECT_TRUE(mainWindow_.opened.isEmpty());
    EXPECT_TRUE(dialog_->isVisible());
}

TEST_F(SQLServerConnectionDetailsTest, MissingUserStopsTest) {
    Show();
    ChooseSqlAccount("", "p");
    Press("Test");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(watch_->Seen()[0].title, "Username");
    EXPECT_TRUE(script_->Opened().isEmpty());
}

TEST_F(SQLServerConnectionDetailsTest, EmptyPasswordIsAcceptedAndStored) {
    Show();
    SetText("Servername", "srv");
    SetText("DatabaseList", "db");
    ChooseSqlAccount("sa", "");
    Press("Okay");
    const QString expected =
        "Provider=sqloledb;Data Source=srv;Initial Catalog=db;User Id=sa;Password=;";
    EXPECT_EQ(mainWindow_.opened, QStringList{expected});
    EXPECT_EQ(Stored(), expected);
    EXPECT_TRUE(watch_->Seen().empty());
}

TEST_F(SQLServerConnectionDetailsTest, OkayStoresOpensAndCloses) {
    Show();
    Press("Okay");
    EXPECT_EQ(mainWindow_.opened, QStringList{WindowsString});
    EXPECT_EQ(Stored(), WindowsString);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_TRUE(script_->Opened().isEmpty());
}

TEST_F(SQLServerConnectionDetailsTest, OkayNeedsADatabase) {
    Show();
    SetText("DatabaseList", "");
    Press("Okay");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_EQ(
        watch_->Seen()[0],
        (test::SeenBox{"You must provide the name of a database within the SQL Server you have "
                       "chosen.",
                       "Database name", forms::BoxIcon::Information}));
    EXPECT_TRUE(mainWindow_.opened.isEmpty());
    EXPECT_EQ(Stored(), "nothing");
    EXPECT_TRUE(dialog_->isVisible());
}

TEST_F(SQLServerConnectionDetailsTest, OneLetterDatabaseIsEnoughForOkay) {
    Show();
    SetText("DatabaseList", "x");
    Press("Okay");
    EXPECT_EQ(mainWindow_.opened.size(), 1);
}

TEST_F(SQLServerConnectionDetailsTest, EnterInTheDatabaseListIsOkayOnce) {
    Show();
    auto& list = Get<forms::ComboBox>("DatabaseList");
    list.setFocus();
    QTest::keyClick(list.focusWidget() != nullptr ? list.focusWidget() : &list, Qt::Key_Return);
    EXPECT_EQ(mainWindow_.opened, QStringList{WindowsString});
    EXPECT_FALSE(dialog_->isVisible());
}

TEST_F(SQLServerConnectionDetailsTest, FailingMainWindowLeavesTheDialogOpen) {
    mainWindow_.error = DataError(-2147467259, "no server");
    Show();
    testing::internal::CaptureStderr();
    Press("Okay");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "-2147467259: no server\n");
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(Stored(), WindowsString);
}

TEST_F(SQLServerConnectionDetailsTest, CancelClosesAndKeepsNothing) {
    Show();
    SetText("Servername", "other");
    Press("Cancel");
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_EQ(Stored(), "nothing");
    EXPECT_TRUE(mainWindow_.opened.isEmpty());
}

TEST_F(SQLServerConnectionDetailsTest, EscapeCancelsAndEnterConfirms) {
    Show();
    QTest::keyClick(dialog_.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_TRUE(mainWindow_.opened.isEmpty());
    dialog_->Show();
    QTest::keyClick(dialog_.get(), Qt::Key_Return);
    EXPECT_EQ(mainWindow_.opened.size(), 1);
}

TEST_F(SQLServerConnectionDetailsTest, TabKeyVisitsTheControlsFromTopToBottom) {
    Store("Provider=sqloledb;Data Source=srv;User Id=sa;Password=p;");
    Show();
    QStringList visited;
    for (int i = 0; i < 10; ++i) {
        QWidget* focus = dialog_->focusWidget();
        ASSERT_NE(focus, nullptr);
        QWidget* control = forms::ControlOf(focus) != nullptr ? focus : focus->parentWidget();
        visited.append(control->objectName());
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    EXPECT_EQ(visited,
              (QStringList{"Servername", "DatabaseList", "CreateDatabase", "UseWinAccount",
                           "UseSQLAccount", "Username", "Password", "Test", "Okay", "Cancel"}));
}

}  // namespace
}  // namespace quarv
