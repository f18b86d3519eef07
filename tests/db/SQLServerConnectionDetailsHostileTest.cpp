// What the dialog makes of fields and stored strings that no sane person would leave it, with real
// connections to a port where nothing listens.
#include "db/ConnectionDialogFixture.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv {
namespace {

class HostileDialogFixture : public ConnectionDialogFixture {
  protected:
    void ShowWithRealConnections() {
        dialog_ = std::make_unique<SQLServerConnectionDetails>(
            mainWindow_, ado::odbc::OdbcConnectionFactory(), registry_);
        dialog_->Show();
    }
    void Fill(const char* field, const QString& text) {
        SetText("Servername", "127.0.0.1,9");
        ChooseSqlAccount("sa", "p");
        SetByName(&Get<QWidget>(field), "Text", text);
    }
};

struct Field {
    const char* name;
    const char* textName;
    QString text;
};

void PrintTo(const Field& field, std::ostream* out) {
    *out << field.name << ' ' << field.textName;
}

std::vector<Field> HostileFields() {
    const struct {
        const char* name;
        QString text;
    } texts[] = {{"long", QString(10'000, u'x')},
                 {"quotes", QStringLiteral("a'b\"c''d\"")},
                 {"braces", QStringLiteral("{a}b}}c{")},
                 {"endOfBraces", QStringLiteral("a};Server=elsewhere")},
                 {"semicolons", QStringLiteral("a;Password=other;b")},
                 {"lineBreaks", QStringLiteral("a\r\nb\nc\r")},
                 {"emoji", QStringLiteral("\U0001F6D1\U0001FA78\u200D\u2764")},
                 {"loneSurrogate", u'a' + QString(QChar(0xD83D))},
                 {"percents", QStringLiteral("%1%2%s%n")},
                 {"markup", QStringLiteral("<b>a</b><img src='file:///etc/passwd'>")},
                 {"equals", QStringLiteral("=a==b")}};
    std::vector<Field> fields;
    for (const char* name : {"Servername", "DatabaseList", "Username", "Password"})
        for (const auto& [textName, text] : texts) fields.push_back({name, textName, text});
    return fields;
}

class HostileFieldTest : public HostileDialogFixture, public testing::WithParamInterface<Field> {};

TEST_P(HostileFieldTest, TestTellsOneErrorAndLeavesTheField) {
    const auto& [name, textName, text] = GetParam();
    ShowWithRealConnections();
    Fill(name, text);
    Press("Test");
    ASSERT_EQ(watch_->Seen().size(), 1U);
    EXPECT_TRUE(watch_->Seen()[0].text.startsWith("Error connecting to server: "));
    EXPECT_TRUE(watch_->Seen()[0].title.startsWith("Error -"));
    // No message is longer than a person can read.
    EXPECT_LT(watch_->Seen()[0].text.size(), 1'000);
    EXPECT_EQ(TextOf(name), text);
    EXPECT_FALSE(Get<forms::FramePlus>("PleaseWaitFrame").Visible());
}

TEST_P(HostileFieldTest, OkayStoresWhatItOpensAndTheNextDialogOpens) {
    const auto& [name, textName, text] = GetParam();
    ShowWithRealConnections();
    Fill(name, text);
    Press("Okay");
    ASSERT_EQ(mainWindow_.opened.size(), 1);
    // Half a pair is no character, and no file can hold it.
    const QString half = u'a' + QString(QChar(0xD83D)) + u';';
    EXPECT_EQ(Stored(), mainWindow_.opened[0].replace(half, QStringLiteral("a?;")));
    testing::internal::CaptureStderr();
    ShowWithRealConnections();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(dialog_->isVisible());
    // What holds none of the string's own marks comes back.
    if (QStringList{"long", "emoji", "percents"}.contains(textName)) {
        EXPECT_EQ(TextOf(name), text);
    }
}

INSTANTIATE_TEST_SUITE_P(, HostileFieldTest, testing::ValuesIn(HostileFields()),
                         [](const auto& test) {
                             return std::string(test.param.name) + "_" + test.param.textName;
                         });

struct StoredString {
    const char* name;
    const char* text;
    const char* server;
    const char* database;
};

void PrintTo(const StoredString& stored, std::ostream* out) {
    *out << stored.name;
}

class OddStoredStringTest : public HostileDialogFixture,
                            public testing::WithParamInterface<StoredString> {};

TEST_P(OddStoredStringTest, TheDialogOpensWithWhatItKnows) {
    const StoredString& stored = GetParam();
    Store(stored.text);
    ShowWithRealConnections();
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(TextOf("Servername"), stored.server);
    EXPECT_EQ(TextOf("DatabaseList"), stored.database);
    EXPECT_TRUE(watch_->Seen().empty());
    // Looking at it changes nothing.
    EXPECT_EQ(Stored(), stored.text);
}

INSTANTIATE_TEST_SUITE_P(
    , OddStoredStringTest,
    testing::Values(
        StoredString{"noPairs", "complete nonsense", "", "mirel"},
        StoredString{"onlyMarks", "=;=;{\"';}", "", "mirel"},
        StoredString{"cutShort", "Provider=sqloledb;Data Source=srv;Initial Cat", "srv", "mirel"},
        StoredString{"openQuote", "Data Source=\"srv;Initial Catalog=db", "srv;Initial Catalog=db",
                     "mirel"},
        StoredString{"otherProvider", "Provider=MSDAORA.1;Data Source=ora;User Id=u;Password=p;",
                     "ora", "mirel"},
        StoredString{"driverAndProvider",
                     "Provider=sqloledb;Driver={FreeTDS};Data Source=srv;Initial Catalog=db;",
                     "srv", "db"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace quarv
