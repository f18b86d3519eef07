#include "db/SQLServerConnectionDetails.h"

#include <algorithm>

#include "base/UTIL.h"
#include "db/ConnectionDetailsControls.h"
#include "db/Registry.h"
#include "platform/ado/ConnectProblems.h"
#include "platform/forms/Application.h"
#include "platform/forms/MsgBox.h"

namespace quarv {
namespace {

const QString SettingsKey = QStringLiteral("Software\\Kel\\Quarv\\General");
const QString ConnStrValue = QStringLiteral("ConnStr");
const QString DefaultConnStr = QStringLiteral(
    "Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;"
    "Integrated Security=SSPI;");

QString ErrorTitle(const Error& e) {
    return QStringLiteral("Error %1").arg(e.Number());
}

// Shows the frame while it lives, whatever ends it.
class PleaseWait {
  public:
    explicit PleaseWait(forms::FramePlus& frame) : frame_(frame) {
        frame_.SetVisible(true);
        frame_.ZOrder();
        forms::Application::DoEvents();  // the connection attempt blocks
    }
    ~PleaseWait() { frame_.SetVisible(false); }
    PleaseWait(const PleaseWait&) = delete;
    PleaseWait& operator=(const PleaseWait&) = delete;

  private:
    forms::FramePlus& frame_;
};

}  // namespace

SQLServerConnectionDetails::SQLServerConnectionDetails(MainWindow& mainWindow,
                                                       ado::ConnectionFactory newConnection,
                                                       Registry& registry)
    : forms::Form(QStringLiteral("SQLServerConnectionDetails")),
      mainWindow_(mainWindow),
      newConnection_(std::move(newConnection)),
      registry_(registry),
      controls_(std::make_unique<ConnectionDetailsControls>(*this)) {
    ConnectEvents();
}

SQLServerConnectionDetails::~SQLServerConnectionDetails() = default;

void SQLServerConnectionDetails::Form_Load() {
    tabs_.Init(*this);
    model_.SetConnectionString(
        registry_.GetMachineString(SettingsKey, ConnStrValue, DefaultConnStr));
    ShowChoices(ConnectionChoices::From(model_));
    controls_->Servername->SetFocus();
}

void SQLServerConnectionDetails::ConnectEvents() {
    ConnectionDetailsControls& c = *controls_;
    connect(c.Tabs, &forms::TabStrip::Click, this, [this] { tabs_.OnClick(); });
    connect(c.UseWinAccount, &forms::OptionButton::Click, this, [this] { EnableAccount(); });
    connect(c.UseSQLAccount, &forms::OptionButton::Click, this, [this] { EnableAccount(); });
    connect(c.DatabaseList, &forms::ComboBox::KeyPress, this,
            [this](int& keyAscii) { DatabaseList_KeyPress(keyAscii); });
    connect(c.CreateDatabase, &forms::ButtonPlus::Click, this, [this] { CreateDatabase_Click(); });
    connect(c.Test, &forms::ButtonPlus::Click, this, [this] { Test_Click(); });
    connect(c.Okay, &forms::ButtonPlus::Click, this, [this] { Okay_Click(); });
    connect(c.Cancel, &forms::ButtonPlus::Click, this, [this] { Close(); });
}

void SQLServerConnectionDetails::ShowChoices(const ConnectionChoices& choices) {
    controls_->Servername->SetText(choices.server);
    controls_->UseWinAccount->SetValue(choices.useWinAccount);
    controls_->UseSQLAccount->SetValue(choices.useSQLAccount);
    controls_->Username->SetText(choices.user);
    controls_->Password->SetText(choices.password);
    controls_->DatabaseList->SetText(choices.database);
    EnableAccount();
}

ConnectionChoices SQLServerConnectionDetails::ReadChoices() const {
    return {.server = controls_->Servername->Text(),
            .database = controls_->DatabaseList->Text(),
            .user = controls_->Username->Text(),
            .password = controls_->Password->Text(),
            .useWinAccount = controls_->UseWinAccount->Value(),
            .useSQLAccount = controls_->UseSQLAccount->Value()};
}

void SQLServerConnectionDetails::EnableAccount() {
    const bool enabled = controls_->UseSQLAccount->Value();
    controls_->Username->SetEnabled(enabled);
    controls_->UsernameLabel->SetEnabled(enabled);
    controls_->Password->SetEnabled(enabled);
    controls_->PaswordLabel->SetEnabled(enabled);
}

bool SQLServerConnectionDetails::Validate() const {
    const auto missing = ReadChoices().FindMissing();
    if (missing) forms::MsgBox(missing->text, missing->title, forms::BoxIcon::Information);
    return !missing;
}

QString SQLServerConnectionDetails::BuildConnectionString(const ConnectionChoices& choices) {
    choices.BuildInto(model_);
    return model_.ConnectionString();
}

ado::ConnectionPtr SQLServerConnectionDetails::OpenConnection(const ConnectionChoices& choices) {
    ado::ConnectionPtr connection = newConnection_();
    connection->SetConnectionString(BuildConnectionString(choices));
    connection->Open();
    return connection;
}

void SQLServerConnectionDetails::FillDatabaseList(ado::Connection& connection) {
    forms::ComboBox& list = *controls_->DatabaseList;
    const QString text = list.Text();
    try {
        const ado::RecordsetPtr catalogs = connection.OpenSchema(ado::Schema::Catalogs);
        list.Clear();
        const ado::Field& name = catalogs->Fields()[0];
        for (; !catalogs->EOF(); catalogs->MoveNext()) list.AddItem(name.Value().ToText());
        catalogs->Close();
    } catch (const Error&) {
        // The list is a help; a server that does not tell its databases can still be opened.
    }
    list.SetText(text);
}

void SQLServerConnectionDetails::Test_Click() {
    if (!Validate()) return;
    const PleaseWait wait(*controls_->PleaseWaitFrame);
    try {
        const ado::ConnectionPtr connection = OpenConnection(ReadChoices());
        FillDatabaseList(*connection);
        forms::MsgBox(QStringLiteral("Test successful."), QStringLiteral("Test"),
                      forms::BoxIcon::Information);
    } catch (const Error& e) {
        forms::MsgBox(QStringLiteral("Error connecting to server: ") + e.Description(),
                      ErrorTitle(e), forms::BoxIcon::Critical);
    }
}

ado::ConnectionPtr SQLServerConnectionDetails::TryOpenConnection() {
    const ConnectionChoices choices = ReadChoices();
    if (choices.FindMissing()) return nullptr;
    const PleaseWait wait(*controls_->PleaseWaitFrame);
    try {
        return OpenServer(choices);
    } catch (const Error&) {
        return nullptr;
    }
}

// A database that is to be created is not there yet: the server is opened without naming it then.
ado::ConnectionPtr SQLServerConnectionDetails::OpenServer(ConnectionChoices choices) {
    try {
        return OpenConnection(choices);
    } catch (const DataError& e) {
        if (!std::ranges::count(ado::DatabaseRefusals, e.NativeError())) throw;
    }
    choices.database.clear();
    return OpenConnection(choices);
}

void SQLServerConnectionDetails::CreateDatabase_Click() {
    const QString name = controls_->DatabaseList->Text();
    // A name of one character is refused, although Okay opens such a database.
    if (name.size() < 2) {
        ShowNote(QStringLiteral("You need a valid database name!"), QStringLiteral("Note"));
        return;
    }
    const ado::ConnectionPtr connection = TryOpenConnection();
    if (connection == nullptr) {
        forms::MsgBox(
            QStringLiteral("Please test the connection before attempting to Create a new "
                           "database!!!"));
        return;
    }
    FillDatabaseList(*connection);
    if (ListContains(*controls_->DatabaseList, name)) {
        forms::MsgBox(QStringLiteral("This database already exists!!! Create Failed"));
        return;
    }
    if (!AskYesNo(QStringLiteral("Are you sure you wish to create a database called [") + name +
                      QStringLiteral("]?"),
                  QStringLiteral("Question")))
        return;
    CreateDatabase(*connection, name);
}

void SQLServerConnectionDetails::CreateDatabase(ado::Connection& connection, const QString& name) {
    try {
        connection.Execute(QStringLiteral("CREATE DATABASE [") + name + u']');
        controls_->DatabaseList->SetText(name);
    } catch (const Error& e) {
        forms::MsgBox(e.Description());
    }
}

void SQLServerConnectionDetails::Okay_Click() {
    if (!Validate()) return;
    if (const auto missing = ReadChoices().FindMissingDatabase()) {
        forms::MsgBox(missing->text, missing->title, forms::BoxIcon::Information);
        return;
    }
    const QString connStr = BuildConnectionString(ReadChoices());
    registry_.SetMachineString(SettingsKey, ConnStrValue, connStr);
    mainWindow_.DoView(connStr);
    Close();
}

void SQLServerConnectionDetails::DatabaseList_KeyPress(int& keyAscii) {
    if (keyAscii != 13) return;
    keyAscii = 0;
    Okay_Click();
}

}  // namespace quarv
