#include "platform/ado/ConnectionSettings.h"

#include "platform/ado/ConnectProblems.h"
#include "platform/ado/DataErrors.h"
#include "platform/ado/OleDbString.h"

namespace quarv::ado {

const QString ConnectionSettings::SqlServerDriver = QStringLiteral("FreeTDS");

namespace {

// The protocol's version is always named: left to itself the driver tries one after another, and
// then a silent server holds it beyond every timeout.
const QString ProtocolVersion = QStringLiteral("7.4");

bool IsOneOf(const QString& value, std::initializer_list<const char*> words) {
    for (const char* word : words)
        if (value.compare(QLatin1String(word), Qt::CaseInsensitive) == 0) return true;
    return false;
}

bool YesOrNo(const QString& keyword, const QString& value) {
    if (IsOneOf(value, {"yes", "true", "1", "-1"})) return true;
    if (IsOneOf(value, {"no", "false", "0", ""})) return false;
    throw MakeConnectError(ConnectProblem::BadSetting, {keyword, QStringLiteral("yes or no")});
}

std::optional<int> WholeNumber(const QString& keyword, const std::optional<QString>& value) {
    if (!value || value->isEmpty()) return std::nullopt;
    bool ok = false;
    const int number = value->toInt(&ok);
    if (!ok || number < 0)
        throw MakeConnectError(ConnectProblem::BadSetting,
                               {keyword, QStringLiteral("a whole number from 0")});
    return number;
}

bool WindowsAccount(const OleDbString& pairs) {
    const auto security = pairs.Find({"Integrated Security", "Trusted_Connection"});
    if (!security) return false;
    if (security->compare(QStringLiteral("SSPI"), Qt::CaseInsensitive) == 0) return true;
    return YesOrNo(QStringLiteral("Integrated Security"), *security);
}

// "sqloledb" in any letter case, and with the version that a registered name may carry
// ("SQLOLEDB.1").
bool IsSqlServerProvider(const QString& provider) {
    const qsizetype dot = provider.indexOf(u'.');
    if (provider.left(dot).compare(QStringLiteral("sqloledb"), Qt::CaseInsensitive) != 0)
        return false;
    bool number = dot < 0;
    if (dot >= 0) provider.mid(dot + 1).toUInt(&number);
    return number;
}

struct Account {
    QString user;
    QString password;
};

Account AccountOf(const OleDbString& pairs, const QString& user, const QString& password) {
    return {user.isEmpty() ? pairs.Find({"User Id", "UID", "User"}).value_or(QString()) : user,
            password.isEmpty() ? pairs.Find({"Password", "PWD"}).value_or(QString()) : password};
}

// The name under which ODBC drivers know a keyword; empty where it is not theirs.
QString OdbcKeyword(const QString& keyword) {
    if (IsOneOf(keyword, {"Driver", "Provider", "User Id", "UID", "User", "Password", "PWD",
                          "Connect Timeout", "Connection Timeout"}))
        return {};
    if (IsOneOf(keyword, {"Data Source"})) return QStringLiteral("Server");
    if (IsOneOf(keyword, {"Initial Catalog"})) return QStringLiteral("Database");
    if (IsOneOf(keyword, {"Integrated Security"})) return QStringLiteral("Trusted_Connection");
    return keyword;
}

// What our own driver must be told even where the string does not say it.
void CompleteForSqlServer(OdbcString& odbc, const QString& server) {
    const bool complete = server.contains(u',') || server.contains(u'\\') ||
                          odbc.Has(QStringLiteral("Port")) ||
                          odbc.Has(QStringLiteral("Servername"));
    if (!complete) odbc.Add(QStringLiteral("Port"), QString::number(ServerAddress::DefaultPort));
    if (!odbc.Has(QStringLiteral("TDS_Version")))
        odbc.Add(QStringLiteral("TDS_Version"), ProtocolVersion);
}

// Everything the string says, for the driver that it names.
OdbcString PassedOn(const OleDbString& pairs, const QString& driver, const Account& account) {
    OdbcString odbc;
    odbc.Add(QStringLiteral("Driver"), driver);
    const QString security = WindowsAccount(pairs) ? QStringLiteral("yes") : QStringLiteral("no");
    for (const OleDbString::Pair& pair : pairs.Pairs()) {
        const QString keyword = OdbcKeyword(pair.keyword);
        if (keyword.isEmpty()) continue;
        odbc.Add(keyword, IsOneOf(pair.keyword, {"Integrated Security"}) ? security : pair.value);
    }
    if (driver.compare(ConnectionSettings::SqlServerDriver, Qt::CaseInsensitive) == 0)
        CompleteForSqlServer(odbc, pairs.Find({"Server", "Data Source"}).value_or(QString()));
    if (!account.user.isEmpty())
        odbc.Add(QStringLiteral("UID"), account.user).Add(QStringLiteral("PWD"), account.password);
    return odbc;
}

bool WantsEncryption(const OleDbString& pairs, bool local) {
    const bool encrypt =
        YesOrNo(QStringLiteral("Use Encryption for Data"),
                pairs.Find({"Use Encryption for Data", "Encrypt"}).value_or(QString()));
    const bool trust = YesOrNo(
        QStringLiteral("Trust Server Certificate"),
        pairs.Find({"Trust Server Certificate", "TrustServerCertificate"}).value_or(QString()));
    // What goes to a local instance does not leave this computer.
    if (!encrypt || local) return false;
    if (!trust) throw MakeConnectError(ConnectProblem::CertificateUnchecked);
    return true;
}

}  // namespace

ConnectionSettings ConnectionSettings::Read(const QString& text, const QString& user,
                                            const QString& password) {
    const OleDbString pairs(text);
    const Account account = AccountOf(pairs, user, password);
    ConnectionSettings settings;
    settings.connectTimeout = WholeNumber(QStringLiteral("Connect Timeout"),
                                          pairs.Find({"Connect Timeout", "Connection Timeout"}));
    if (const auto driver = pairs.Find({"Driver"}); driver && !driver->isEmpty()) {
        settings.driver = *driver;
        settings.forDriver = PassedOn(pairs, *driver, account);
        return settings;
    }
    if (!IsSqlServerProvider(pairs.Find({"Provider"}).value_or(QString())))
        throw MakeDataError(DataErrorCode::ProviderNotFound);

    settings.server = ServerAddress::Parse(
        pairs.Find({"Data Source", "Server", "Address", "Addr", "Network Address"})
            .value_or(QString()));
    settings.user = account.user;
    settings.password = account.password;
    settings.integrated = WindowsAccount(pairs);
    settings.encrypt = WantsEncryption(pairs, !settings.server.localInstance.isEmpty());
    settings.database = pairs.Find({"Initial Catalog", "Database"}).value_or(QString());
    settings.applicationName = pairs.Find({"Application Name", "App"}).value_or(QString());
    settings.workstation = pairs.Find({"Workstation ID", "WSID"}).value_or(QString());
    settings.language = pairs.Find({"Current Language", "Language"}).value_or(QString());
    settings.packetSize =
        WholeNumber(QStringLiteral("Packet Size"), pairs.Find({"Packet Size", "PacketSize"}));
    return settings;
}

OdbcString ConnectionSettings::ForOdbc() const {
    if (forDriver) return *forDriver;
    OdbcString odbc;
    odbc.Add(QStringLiteral("Driver"), driver)
        .AddLoginValue(QStringLiteral("Server"), server.host)
        .Add(QStringLiteral("Port"), QString::number(server.port))
        .Add(QStringLiteral("TDS_Version"), ProtocolVersion);
    if (encrypt) odbc.Add(QStringLiteral("Encryption"), QStringLiteral("require"));
    if (integrated) {
        odbc.Add(QStringLiteral("Trusted_Connection"), QStringLiteral("yes"));
    } else {
        // Without a user the driver would quietly try the Windows account.
        if (user.isEmpty()) throw MakeConnectError(ConnectProblem::NoAccount);
        odbc.AddLoginValue(QStringLiteral("UID"), user)
            .AddLoginValue(QStringLiteral("PWD"), password);
    }
    if (!database.isEmpty()) odbc.AddLoginValue(QStringLiteral("Database"), database);
    odbc.AddLoginValue(QStringLiteral("APP"),
                       applicationName.isEmpty() ? QStringLiteral("Quarv") : applicationName);
    if (!workstation.isEmpty()) odbc.AddLoginValue(QStringLiteral("WSID"), workstation);
    if (!language.isEmpty()) odbc.AddLoginValue(QStringLiteral("Language"), language);
    if (packetSize) odbc.Add(QStringLiteral("PacketSize"), QString::number(*packetSize));
    return odbc;
}

}  // namespace quarv::ado
