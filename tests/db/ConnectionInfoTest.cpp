#include "db/ConnectionInfo.h"

#include "support/Raised.h"

namespace quarv {

namespace {

const char Sample[] =
    "Provider=sqloledb;Data Source=localhost;Initial Catalog=mirel;Integrated Security=SSPI;";

ConnectionInfo Parsed(const QString& text) {
    ConnectionInfo info;
    info.SetConnectionString(text);
    return info;
}

}  // namespace

TEST(ConnectionInfo, NewModelIsEmpty) {
    const ConnectionInfo info;
    EXPECT_EQ(info.ConnectionType(), 0);
    EXPECT_EQ(info.ConnectionString(), "");
    EXPECT_EQ(info.Description(), "");
    EXPECT_EQ(info.Provider(), "");
    EXPECT_EQ(info.ExtraParams().Count(), 0);
}

TEST(ConnectionInfo, SqlServerStringComesBackAsItWas) {
    const ConnectionInfo info = Parsed(Sample);
    EXPECT_EQ(info.ConnectionType(), 2);
    EXPECT_EQ(info.Source(), "localhost");
    EXPECT_EQ(info.ExtraParams().Count(), 2);
    EXPECT_EQ(info.ExtraParams().Keys(1).Text(), "Initial Catalog");
    EXPECT_EQ(info.ExtraParams().Values(1).Text(), "mirel");
    EXPECT_EQ(info.ExtraParams().Keys(2).Text(), "Integrated Security");
    EXPECT_EQ(info.ExtraParams().Values(2).Text(), "SSPI");
    EXPECT_EQ(info.ConnectionString(), Sample);
    EXPECT_EQ(info.Description(), "SQL Server localhost mirel");
}

TEST(ConnectionInfo, TextFilesAreKnownByTheirProperties) {
    const QString text =
        "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=c:\\data;"
        "Extended Properties=\"text;HDR=Yes\";";
    const ConnectionInfo info = Parsed(text);
    EXPECT_EQ(info.ConnectionType(), 3);
    EXPECT_EQ(info.Description(), "CSV");
    EXPECT_EQ(info.ExtraParams().Values(1).Text(), "text;HDR=Yes");
    EXPECT_EQ(info.ConnectionString(), text);
}

TEST(ConnectionInfo, MySqlDriverOfAnyVersionBecomesOne) {
    const ConnectionInfo info =
        Parsed("Driver={MySQL ODBC 5.1 Driver};Server=h;Database=d;User=u;Password=p;");
    EXPECT_EQ(info.ConnectionType(), 4);
    EXPECT_EQ(info.ConnectionString(),
              "Driver={MySQL ODBC 3.51 Driver};Server=h;Database=d;User=u;Password=p;");
}

struct TypeCase {
    const char* text;
    int type;
    const char* provider;
    const char* driver;
};

TEST(ConnectionInfo, KnowsTheKindFromProviderOrDriver) {
    const TypeCase cases[] = {
        {"Provider=microsoft.jet.oledb.3.51;", 1, "Microsoft.Jet.OLEDB.4.0", ""},
        {"extended properties=\"TEXT;x\";Provider=Microsoft.Jet.OLEDB.4.0;", 3,
         "Microsoft.Jet.OLEDB.4.0", ""},
        {"Provider=Microsoft.Jet.OLEDB.4.0;Extended Properties=text;", 1, "Microsoft.Jet.OLEDB.4.0",
         ""},
        {"Provider=SQLOLEDB.1;", 2, "sqloledb", ""},
        {"Provider=MySQLProv;", 4, "", "MySQL ODBC 3.51 Driver"},
        {"Provider=MSDAORA;", 5, "MSDAORA.1", ""},
        {"Driver={SQL Server ODBC};", 6, "", "SQL Server ODBC"},
        {"Driver={SQL Server};", 0, "", "SQL Server"},
        {"Provider=Other;", 0, "Other", ""},
        {"Provider=sqloledb;Provider=Other;", 2, "Other", ""},
    };
    for (const TypeCase& each : cases) {
        const ConnectionInfo info = Parsed(each.text);
        EXPECT_EQ(info.ConnectionType(), each.type) << each.text;
        EXPECT_EQ(info.Provider(), each.provider) << each.text;
        EXPECT_EQ(info.Driver(), each.driver) << each.text;
    }
}

TEST(ConnectionInfo, SettingTheTypeRewritesTheName) {
    ConnectionInfo info;
    info.SetConnectionType(2);
    EXPECT_EQ(info.Provider(), "sqloledb");
    info.SetConnectionType(0);
    EXPECT_EQ(info.Provider(), "Microsoft.Jet.OLEDB.4.0");
    info.SetConnectionType(5);
    EXPECT_EQ(info.Provider(), "MSDAORA.1");
    info.SetConnectionType(6);
    EXPECT_EQ(info.Provider(), "MSDAORA.1");
    info.SetConnectionType(4);
    EXPECT_EQ(info.Provider(), "");
    EXPECT_EQ(info.Driver(), "MySQL ODBC 3.51 Driver");
}

TEST(ConnectionInfo, KeysMatchInAnyLetterCase) {
    for (const char* key : {"User Id", "UID", "user"}) {
        EXPECT_EQ(Parsed(QString(key) + "=sa").User(), "sa") << key;
    }
    for (const char* key : {"Password", "PWD"}) {
        EXPECT_EQ(Parsed(QString(key) + "=secret").Password(), "secret") << key;
    }
    EXPECT_EQ(Parsed("DATA SOURCE=h").Source(), "h");
    // A blank before the sign belongs to the key.
    EXPECT_EQ(Parsed("Data Source =h").ExtraParams().Keys(1).Text(), "Data Source ");
}

TEST(ConnectionInfo, ReadsQuotedValuesAndLooseEnds) {
    const ConnectionInfo info =
        Parsed("  Data Source='a;b' ;User Id=;Password=\"p;'q\"; x = {y} ;;last=z");
    EXPECT_EQ(info.Source(), "a;b");
    // The blank behind the closing quote hides the ";", which then leads the next key.
    EXPECT_EQ(info.User(), "");
    EXPECT_EQ(info.Password(), "p;'q");
    EXPECT_EQ(info.ExtraParams().Count(), 3);
    EXPECT_EQ(info.ExtraParams().Keys(1).Text(), ";User Id");
    EXPECT_EQ(info.ExtraParams().Keys(2).Text(), "x ");
    EXPECT_EQ(info.ExtraParams().Values(2).Text(), "y");
    EXPECT_EQ(info.ExtraParams().Keys(3).Text(), ";;last");
}

TEST(ConnectionInfo, StopsAtAnEmptyKey) {
    const ConnectionInfo info = Parsed("Data Source=h;=x;User=u");
    EXPECT_EQ(info.Source(), "h");
    EXPECT_EQ(info.User(), "");
    EXPECT_EQ(Parsed("no sign at all").ExtraParams().Count(), 1);
    EXPECT_EQ(Parsed("no sign at all").ExtraParams().Values(1).Text(), "");
}

TEST(ConnectionInfo, ParsingDoesNotClear) {
    ConnectionInfo info = Parsed("Provider=sqloledb;Data Source=a;x=1;");
    info.SetConnectionString("User=u;x=2;");
    EXPECT_EQ(info.Source(), "a");
    EXPECT_EQ(info.ConnectionString(),
              "Provider=sqloledb;Data Source=a;x=1;x=2;User Id=u;Password=;");
    EXPECT_EQ(info.GetExtraParam("X", ""), "1");
}

TEST(ConnectionInfo, DriverTakesTheProvidersPlace) {
    ConnectionInfo info;
    info.SetProvider("P");
    info.SetDriver("D");
    info.SetSource("s");
    info.SetUser("u");
    info.SetPassword("p");
    EXPECT_EQ(info.ConnectionString(), "Driver={D};Data Source=s;User=u;Password=p;");
}

TEST(ConnectionInfo, UserWithoutPasswordWritesAnEmptyOne) {
    EXPECT_EQ(Parsed("Provider=sqloledb;User Id=sa;").ConnectionString(),
              "Provider=sqloledb;User Id=sa;Password=;");
}

TEST(ConnectionInfo, PasswordWithoutUserIsNotWritten) {
    EXPECT_EQ(Parsed("Provider=sqloledb;Password=p;").ConnectionString(), "Provider=sqloledb;");
}

TEST(ConnectionInfo, OnlyExtraValuesWithASemicolonAreQuoted) {
    ConnectionInfo info;
    info.SetSource("a;b");
    info.SetUser("u;v");
    info.SetPassword("p'q");
    info.ExtraParams().Add("x", Value(u"1;2"));
    info.ExtraParams().Add("y", Value(u"3 4"));
    info.ExtraParams().Add("z", 5);
    EXPECT_EQ(info.ConnectionString(),
              "Data Source=a;b;x=\"1;2\";y=3 4;z=5;User Id=u;v;Password=p'q;");
}

TEST(ConnectionInfo, DescribesEachKind) {
    ConnectionInfo info;
    info.SetSource(" h ");
    const std::pair<int, const char*> cases[] = {
        {0, " h "}, {1, " h "},       {2, "SQL Server  h"},
        {3, "CSV"}, {4, "MySQL  h "}, {5, "Oracle  h "},
    };
    for (const auto& [type, text] : cases) {
        info.SetConnectionType(type);
        EXPECT_EQ(info.Description(), text) << type;
    }
    info.SetProvider("P");
    info.SetConnectionType(6);
    EXPECT_EQ(info.Description(), "P  h ");
    info.SetConnectionType(77);
    EXPECT_EQ(info.Description(), "P  h ");
}

TEST(ConnectionInfo, SetupFillsTheParts) {
    ConnectionInfo info;
    info.Setup("h", "u", "p", 2);
    EXPECT_EQ(info.ConnectionString(), "Provider=sqloledb;Data Source=h;User Id=u;Password=p;");
}

TEST(ConnectionInfo, CloneIsAModelOfItsOwn) {
    ConnectionInfo info = Parsed(Sample);
    const ConnectionInfo copy = info.Clone();
    info.SetSource("other");
    info.ExtraParams().SetValueByKey("initial catalog", Value(u"other"));
    EXPECT_EQ(copy.ConnectionString(), Sample);
    EXPECT_EQ(copy.ConnectionType(), 2);
}

TEST(ConnectionInfo, OtherObjectsAreNotTheSameDatabase) {
    const ConnectionInfo info = Parsed(Sample);
    const RNamedList other;
    EXPECT_FALSE(info.IsSameDb(nullptr));
    EXPECT_FALSE(info.IsSameDb(&other));
    EXPECT_TRUE(info.IsSameDb(&info));
}

struct SameCase {
    const char* one;
    const char* other;
    bool same;
};

TEST(ConnectionInfo, ComparesProviderSourceAndDatabase) {
    const SameCase cases[] = {
        {"Provider=sqloledb;Data Source=h;Initial Catalog=d;User=a;",
         "Provider=SQLOLEDB.1;Data Source=H;initial catalog=D;User=b;", true},
        {"Provider=sqloledb;Data Source=h;Initial Catalog=d;",
         "Provider=sqloledb;Data Source=h;Initial Catalog=e;", false},
        {"Provider=sqloledb;Data Source=h;", "Provider=sqloledb;Data Source=h;", false},
        {"Provider=sqloledb;Data Source=h;Initial Catalog=y;", "Provider=sqloledb;Data Source=h;",
         true},
        {"Provider=sqloledb;Data Source=h;Initial Catalog=d;",
         "Provider=sqloledb;Data Source=i;Initial Catalog=d;", false},
        {"Provider=sqloledb;Data Source=h;", "Provider=MSDAORA;Data Source=h;", false},
        {"Driver={MySQL ODBC 5.1 Driver};Data Source=h;Database=d;",
         "Provider=MySQLProv;Data Source=h;Database=D;", true},
        {"Driver={MySQL ODBC 5.1 Driver};Data Source=h;",
         "Driver={MySQL ODBC 5.1 Driver};Data Source=h;", false},
        {"Provider=MSDAORA;Data Source=h;Database=d;", "Provider=MSDAORA;Data Source=h;Database=e;",
         true},
    };
    for (const SameCase& each : cases) {
        const ConnectionInfo other = Parsed(each.other);
        EXPECT_EQ(Parsed(each.one).IsSameDb(&other), each.same) << each.one << " / " << each.other;
    }
}

}  // namespace quarv
