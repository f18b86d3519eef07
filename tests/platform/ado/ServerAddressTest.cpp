#include "platform/ado/ServerAddress.h"

#include "platform/ado/ErrorOf.h"

namespace quarv::test {

using ado::ServerAddress;

namespace {

struct Good {
    const char* text;
    const char* host;
    int port;
    const char* instance;
    const char* local;
};

const Good Addresses[] = {
    {"db1", "db1", 1433, "", ""},
    {" db1 ", "db1", 1433, "", ""},
    {"db1.example.org", "db1.example.org", 1433, "", ""},
    {"DB_1-x", "DB_1-x", 1433, "", ""},
    {"db1,1500", "db1", 1500, "", ""},
    {"db1, 1500", "db1", 1500, "", ""},
    {"db1,65535", "db1", 65535, "", ""},
    {"db1,1", "db1", 1, "", ""},
    {"tcp:db1", "db1", 1433, "", ""},
    {"TCP:db1,1500", "db1", 1500, "", ""},
    {"db1\\EXPRESS", "db1", 0, "EXPRESS", ""},
    {"db1\\MSSQLSERVER", "db1", 1433, "", ""},
    {"db1\\EXPRESS,1500", "db1", 1500, "", ""},
    {"tcp:db1\\in$t#2_3", "db1", 0, "in$t#2_3", ""},
    {".", "localhost", 1433, "", ""},
    {"", "localhost", 1433, "", ""},
    {".,1500", "localhost", 1500, "", ""},
    {".\\EXPRESS", "localhost", 0, "EXPRESS", ""},
    {"(local)", "localhost", 1433, "", ""},
    {"(LOCAL)\\EXPRESS", "localhost", 0, "EXPRESS", ""},
    {"(local),1500", "localhost", 1500, "", ""},
    {"127.0.0.1,1500", "127.0.0.1", 1500, "", ""},
    {"::1", "::1", 1433, "", ""},
    {"::1,1500", "::1", 1500, "", ""},
    {"[::1],1500", "::1", 1500, "", ""},
    {"[2001:db8::a]", "2001:db8::a", 1433, "", ""},
    {"tcp:[fe80::1%eth0],1500", "fe80::1%eth0", 1500, "", ""},
    {"müller.example", "xn--mller-kva.example", 1433, "", ""},
    {"(localdb)\\quarv", "", 0, "", "quarv"},
    {"(LocalDB)\\MyInstance", "", 0, "", "myinstance"},
    {"(localdb)\\a_b-9", "", 0, "", "a_b-9"},
};

struct Bad {
    const char* text;
    const char* words;
};

const Bad Refused[] = {
    {"a b", "is not a server's name"},
    {"db1:1433", "is not a server's name"},
    {"db1;Port=1", "is not a server's name"},
    {"db1}", "is not a server's name"},
    {"-db", "is not a server's name"},
    {"a..b", "is not a server's name"},
    {",1433", "is not a server's name"},
    {"\\inst", "is not a server's name"},
    {"db1\\", "is not a server's name"},
    {"db1\\a b", "is not a server's name"},
    {"db1\\a;b", "is not a server's name"},
    {"db1\\a\\b", "is not a server's name"},
    {"[::1", "is not a server's name"},
    {"[::g]", "is not a server's name"},
    {"a,b,1", "is not a server's name"},
    {"db1/x", "is not a server's name"},
    {"db1,", "is not a number from 1 to 65535"},
    {"db1,0", "is not a number from 1 to 65535"},
    {"db1,65536", "is not a number from 1 to 65535"},
    {"db1,-1", "is not a number from 1 to 65535"},
    {"db1,1433x", "is not a number from 1 to 65535"},
    {"db1,999999999999", "is not a number from 1 to 65535"},
    {"db1,١٤٣٣", "is not a number from 1 to 65535"},
    {"np:\\\\db1\\pipe\\sql\\query", "protocol"},
    {"lpc:db1", "protocol"},
    {"admin:db1", "protocol"},
    {"\\\\db1\\pipe\\sql", "protocol"},
    {"(localdb)\\", "not the name of a local instance"},
    {"(localdb)\\a b", "not the name of a local instance"},
    {"(localdb)\\..", "not the name of a local instance"},
    {"(localdb)\\a/b", "not the name of a local instance"},
    {"(localdb)\\ä", "not the name of a local instance"},
    {"(localdb)\\aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa",
     "not the name of a local instance"},
};

}  // namespace

TEST(ServerAddress, ReadsEveryForm) {
    for (const Good& row : Addresses) {
        const ServerAddress address = ServerAddress::Parse(row.text);
        EXPECT_EQ(address.host, QString(row.host)) << row.text;
        EXPECT_EQ(address.port, row.port) << row.text;
        EXPECT_EQ(address.instance, QString(row.instance)) << row.text;
        EXPECT_EQ(address.localInstance, QString(row.local)) << row.text;
    }
}

TEST(ServerAddress, RefusesEverythingElse) {
    for (const Bad& row : Refused) {
        const DataError error = ErrorOf([&row] { ServerAddress::Parse(row.text); });
        EXPECT_TRUE(error.Description().contains(QString(row.words)))
            << row.text << ": " << qPrintable(error.Description());
    }
}

}  // namespace quarv::test
