#include "platform/ado/ConnectionSettings.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

using ado::ConnectionSettings;

namespace {

struct Case {
    const char* text;
    const char* odbc;
};

#define START "Driver={FreeTDS};Server={h};Port={1433};TDS_Version={7.4};"

const Case Translations[] = {
    {"Provider=sqloledb;Data Source=h;User Id=u;Password=p", START "UID={u};PWD={p};APP={Quarv};"},
    {"provider=SQLOLEDB;DATA SOURCE=h;user=u;PWD=p", START "UID={u};PWD={p};APP={Quarv};"},
    {"Provider=SQLOLEDB.1;Server=h;UID=u", START "UID={u};PWD={};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;Integrated Security=SSPI",
     START "Trusted_Connection={yes};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;Trusted_Connection=yes",
     START "Trusted_Connection={yes};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;Integrated Security=sspi;User Id=u;Password=p",
     START "Trusted_Connection={yes};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;Integrated Security=no;User Id=u;Password=p",
     START "UID={u};PWD={p};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;Initial Catalog=mirel;UID=u;PWD=p",
     START "UID={u};PWD={p};Database={mirel};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;Database=mirel;UID=u;PWD=p",
     START "UID={u};PWD={p};Database={mirel};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=p;Application Name=a;Workstation ID=w;"
     "Current Language=German;Packet Size=8192",
     START "UID={u};PWD={p};APP={a};WSID={w};Language={German};PacketSize={8192};"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=p;Use Encryption for Data=yes;"
     "Trust Server Certificate=yes",
     "Driver={FreeTDS};Server={h};Port={1433};TDS_Version={7.4};Encryption={require};"
     "UID={u};PWD={p};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=p;Use Encryption for Data=False",
     START "UID={u};PWD={p};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=tcp:h,1433;UID=u;PWD=p;Persist Security Info=True;"
     "Network Library=dbmssocn",
     START "UID={u};PWD={p};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=[::1],1500;UID=u;PWD=p",
     "Driver={FreeTDS};Server={::1};Port={1500};TDS_Version={7.4};UID={u};PWD={p};APP={Quarv};"},
    // What a value holds stays a value.
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=\"p;Database=evil\"",
     START "UID={u};PWD={p;Database=evil};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;UID=\"u;Trusted_Connection=yes\";PWD=p",
     START "UID={u;Trusted_Connection=yes};PWD={p};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD='}';Initial Catalog='{x'",
     START "UID={u};PWD={}};Database={{x};APP={Quarv};"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=p;Application Name=\"x;Server=evil;Port=1\"",
     START "UID={u};PWD={p};APP={x;Server=evil;Port=1};"},
    // The last of equal keywords counts.
    {"Provider=sqloledb;Data Source=g;Data Source=h;UID=a;PWD=b;User Id=u;Password=p",
     START "UID={u};PWD={p};APP={Quarv};"},
    // A string that names a driver goes to that driver.
    {"Driver={Some Driver};Server=h;Database=d;User=u;Password=p;",
     "Driver={Some Driver};Server={h};Database={d};UID={u};PWD={p};"},
    {"Driver={Some Driver};Data Source=h;Initial Catalog=d;Option=3;Connect Timeout=5",
     "Driver={Some Driver};Server={h};Database={d};Option={3};"},
    {"Driver={Some Driver};Data Source=h;Integrated Security=SSPI",
     "Driver={Some Driver};Server={h};Trusted_Connection={yes};"},
    {"Driver=FreeTDS;Server=h;UID=u;PWD=p",
     "Driver={FreeTDS};Server={h};Port={1433};TDS_Version={7.4};UID={u};PWD={p};"},
    {"Driver=FreeTDS;Server=h;Port=1500;TDS_Version=7.3;UID=u;PWD=p",
     "Driver={FreeTDS};Server={h};Port={1500};TDS_Version={7.3};UID={u};PWD={p};"},
    {"Driver={Some Driver};Server=\"h;Database=evil\"",
     "Driver={Some Driver};Server={h;Database=evil};"},
};

const Case Refusals[] = {
    {"Data Source=h;UID=u", "Provider cannot be found."},
    {"", "Provider cannot be found."},
    {"Provider=;Data Source=h", "Provider cannot be found."},
    {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=c:\\x.mdb", "Provider cannot be found."},
    {"Provider=MSDAORA.1;Data Source=h", "Provider cannot be found."},
    {"Provider=sqloledb2;Data Source=h", "Provider cannot be found."},
    {"Provider=xsqloledb;Data Source=h", "Provider cannot be found."},
    {"Provider=sqloledb.x;Data Source=h", "Provider cannot be found."},
    {"Provider=sqloledb;Data Source=h", "The connection string names no account"},
    {"Provider=sqloledb;Data Source=h;Password=p", "The connection string names no account"},
    {"Provider=sqloledb;Data Source=h;Integrated Security=maybe", "must be yes or no"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=\"};x\"", "The value of \"PWD\" holds characters"},
    {"Provider=sqloledb;Data Source=h;UID=\"u};Server=evil\"",
     "The value of \"UID\" holds characters"},
    {"Provider=sqloledb;Data Source=h;UID=u;Database=\"a};b\"",
     "The value of \"Database\" holds characters"},
    {"Provider=sqloledb;Data Source=\"h};Port=1\";UID=u", "is not a server's name"},
    {"Provider=sqloledb;Data Source=h;UID=u;Packet Size=\"1};x\"", "must be a whole number"},
    {"Provider=sqloledb;Data Source=h;UID=u;Connect Timeout=soon", "must be a whole number"},
    {"Provider=sqloledb;Data Source=h;UID=u;Connect Timeout=-1", "must be a whole number"},
    {"Provider=sqloledb;Data Source=h;UID=u;Use Encryption for Data=yes",
     "cannot check the server's certificate"},
    {"Provider=sqloledb;Data Source=h;UID=u;PWD=\"x", "is not well formed"},
    {"Driver=\"a};b\";Server=h", "The value of \"Driver\" holds characters"},
    {"Driver={Some Driver};k{y=1", "holds characters"},
};

#undef START

}  // namespace

TEST(ConnectionSettings, TranslatesLetterForLetter) {
    for (const Case& row : Translations)
        EXPECT_EQ(ConnectionSettings::Read(row.text).ForOdbc().Text(), QString(row.odbc))
            << row.text;
}

TEST(ConnectionSettings, RefusesWithWords) {
    for (const Case& row : Refusals) {
        const DataError error = ErrorOf([&row] { ConnectionSettings::Read(row.text).ForOdbc(); });
        EXPECT_TRUE(error.Description().contains(QString(row.odbc)))
            << row.text << ": " << qPrintable(error.Description());
    }
}

TEST(ConnectionSettings, ValueBeyondALoginIsRefusedNotCut) {
    const QString start = QStringLiteral("Provider=sqloledb;Data Source=h;UID=u;Password=");
    EXPECT_TRUE(ErrorOf([&] { ConnectionSettings::Read(start + QString(129, 'x')).ForOdbc(); })
                    .Description()
                    .contains("longer than the 128 characters"));
    EXPECT_TRUE(ConnectionSettings::Read(start + QString(128, 'x'))
                    .ForOdbc()
                    .Text()
                    .contains(QString(128, 'x')));
}

TEST(ConnectionSettings, TimeoutComesFromEitherKeyword) {
    const auto timeout = [](const char* text) {
        return ConnectionSettings::Read(QStringLiteral("Provider=sqloledb;UID=u;") + text)
            .connectTimeout;
    };
    EXPECT_EQ(timeout("Connect Timeout=7"), 7);
    EXPECT_EQ(timeout("connection timeout=0"), 0);
    EXPECT_EQ(timeout("Connect Timeout="), std::nullopt);
    EXPECT_EQ(timeout(""), std::nullopt);
}

TEST(ConnectionSettings, ArgumentsStandInForTheStringsAccount) {
    const auto settings =
        ConnectionSettings::Read("Provider=sqloledb;Data Source=h;User Id=u;Password=p", "v", "q");
    EXPECT_EQ(settings.user, QStringLiteral("v"));
    EXPECT_EQ(settings.password, QStringLiteral("q"));
}

TEST(ConnectionSettings, LocalInstanceNeedsNoCertificate) {
    const auto settings = ConnectionSettings::Read(
        "Provider=sqloledb;Data Source=(localdb)\\quarv;Integrated Security=SSPI;"
        "Use Encryption for Data=yes");
    EXPECT_EQ(settings.server.localInstance, QStringLiteral("quarv"));
    EXPECT_TRUE(settings.integrated);
    EXPECT_FALSE(settings.encrypt);
}

}  // namespace quarv::test
