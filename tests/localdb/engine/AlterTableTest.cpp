// ALTER TABLE and ALTER DATABASE beyond one session and one life of the server: what others see of
// it, and what is there after the server's sudden end.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "TestServer.h"

namespace quarv::localdb::engine {

namespace {

QStringList Shown(Session& session, const char* batch) {
    return Lines(session, QString::fromUtf8(batch));
}

int ErrorOf(Session& session, const char* batch) {
    RecordingSink sink;
    session.RunBatch(QString::fromUtf8(batch), sink);
    return sink.FirstError();
}

// Changes a column's type to and fro, as long as it lives.
[[noreturn]] void AlterForever(TestServer& server) {
    server.Open();
    const auto session = server.NewSession();
    session->UseDatabase(QStringLiteral("d"));
    while (true) {
        Shown(*session, "alter table t alter column v varchar(20) not null");
        Shown(*session, "alter table t add w int not null constraint DF_w default 1");
        Shown(*session, "alter table t alter column v int not null");
        Shown(*session, "alter table t drop constraint DF_w, column w");
    }
}

}  // namespace

TEST(AlterTable, OtherSessionsSeeTheNewTableAtOnce) {
    TestServer server;
    const auto first = server.NewDatabase(QStringLiteral("d"));
    const auto second = server.NewSession();
    second->UseDatabase(QStringLiteral("d"));
    Shown(*first, "create table t(a int) insert t values (1)");
    EXPECT_EQ(Shown(*second, "select * from t").value(0), u"columns a int");
    Shown(*first, "alter table t add b int not null default 5, constraint CK_a check (a < 3)");
    EXPECT_EQ(Shown(*second, "select * from t").value(0), u"columns a int, b int not null");
    EXPECT_EQ(ErrorOf(*second, "insert t(a) values (3)"), 547);
    Shown(*first, "alter table t nocheck constraint CK_a");
    EXPECT_EQ(ErrorOf(*second, "insert t(a) values (3)"), 0);
    Shown(*first, "alter table t drop constraint CK_a");
    Shown(*first, "alter table t alter column a varchar(5)");
    EXPECT_EQ(Shown(*second, "select a from t order by a"),
              QStringList({QStringLiteral("columns a varchar(5)"), QStringLiteral("1"),
                           QStringLiteral("3"), QStringLiteral("(2 rows)")}));
    Shown(*first, "exec sp_rename 't', 'u'");
    EXPECT_EQ(ErrorOf(*second, "select * from t"), 208);
    EXPECT_EQ(ErrorOf(*second, "select * from u"), 0);
}

TEST(AlterTable, OtherSessionsSeeNothingBeforeTheCommit) {
    TestServer server;
    const auto first = server.NewDatabase(QStringLiteral("d"));
    const auto second = server.NewSession();
    second->UseDatabase(QStringLiteral("d"));
    Shown(*first, "create table t(a int) insert t values (1)");
    Shown(*first, "begin transaction alter table t add b int not null default 5");
    EXPECT_EQ(Shown(*second, "select * from t").value(0), u"columns a int");
    Shown(*first, "commit");
    EXPECT_EQ(Shown(*second, "select * from t").value(0), u"columns a int, b int not null");
}

TEST(AlterTable, AfterASuddenEndTheTableIsAsBeforeOrAfter) {
    TestServer server;
    {
        const auto session = server.NewDatabase(QStringLiteral("d"));
        Shown(*session,
              "create table t(id int identity constraint PK_t primary key, v int not null)"
              " insert t values (1)");
        for (int i = 0; i < 11; ++i) Shown(*session, "insert t select v + 1 from t");
    }
    server.Close();
    for (int kill = 0; kill < 12; ++kill) {
        const pid_t child = fork();
        if (child == 0) AlterForever(server);
        ASSERT_GT(child, 0);
        usleep(60'000 + 17'000 * static_cast<useconds_t>(kill));
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        server.Open();
        {
            const auto session = server.NewSession();
            session->UseDatabase(QStringLiteral("d"));
            EXPECT_EQ(Shown(*session,
                            "select count(*) n, sum(cast(v as int)) s, count(distinct id)"
                            " d from t")
                          .value(1),
                      u"2048 | 13312 | 2048");
            EXPECT_EQ(ErrorOf(*session, "set identity_insert t on insert t(id, v) values (1, 1)"),
                      2627);
        }
        server.Close();
    }
}

TEST(AlterDatabase, ADatabaseThatOthersUseKeepsItsName) {
    TestServer server;
    {
        const auto first = server.NewDatabase(QStringLiteral("d"));
        auto second = server.NewSession();
        second->UseDatabase(QStringLiteral("d"));
        EXPECT_EQ(ErrorOf(*first, "alter database d modify name = e"), 5030);
        second.reset();
        EXPECT_EQ(ErrorOf(*first, "alter database d modify name = e create table t(a int)"), 0);
    }
    server.Close();
    server.Open();
    const auto later = server.NewSession();
    later->UseDatabase(QStringLiteral("e"));
    EXPECT_EQ(ErrorOf(*later, "select a from t"), 0);
}

}  // namespace quarv::localdb::engine
