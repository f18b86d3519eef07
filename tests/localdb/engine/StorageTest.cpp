// What stays on disk: reopening, and files that are damaged, missing or held by somebody else.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "TestServer.h"
#include "localdb/engine/SqlError.h"
#include "support/Raised.h"

namespace quarv::localdb::engine {

namespace {

QString FileOf(const TestServer& server, const QString& pattern) {
    const QStringList files = QDir(server.Path()).entryList({pattern}, QDir::Files);
    return files.isEmpty() ? QString() : server.Path() + u'/' + files.first();
}

void Overwrite(const QString& path, qint64 at, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(at);
    file.write(bytes);
}

int ErrorOf(Session& session, const QString& batch) {
    RecordingSink sink;
    session.RunBatch(batch, sink);
    return sink.FirstError();
}

}  // namespace

TEST(Storage, EverythingIsThereAfterReopening) {
    TestServer server;
    {
        const auto session = server.NewDatabase(QStringLiteral("Größe 😀"));
        Lines(*session,
              QStringLiteral("create table t(id int identity(5,1) primary key, n nvarchar(9) "
                             "default N'ж', d decimal(25,3)) insert t (d) values (1.5)"));
        Lines(*session, QStringLiteral("create view v as select id from t"));
        Lines(*session, QStringLiteral("create procedure p @x int = 2 as select @x x"));
    }
    server.Close();
    server.Open();
    const auto session = server.NewSession();
    session->UseDatabase(QStringLiteral("größe 😀"));
    EXPECT_EQ(Lines(*session, QStringLiteral("insert t (d) values (-2) select * from t")),
              QStringList({QStringLiteral("(1 row)"),
                           QStringLiteral(
                               "columns id int not null identity, n nvarchar(9), d decimal(25,3)"),
                           QStringLiteral("5 | ж | 1.500"), QStringLiteral("6 | ж | -2.000"),
                           QStringLiteral("(2 rows)")}));
    EXPECT_EQ(Lines(*session, QStringLiteral("select count(*) c from v")).value(1), u"2");
    EXPECT_EQ(Lines(*session, QStringLiteral("p")).value(1), u"2");
}

TEST(Storage, AMovedDirectoryStillWorks) {
    TestServer server;
    server.NewDatabase(QStringLiteral("d"));
    server.Close();
    const QString moved = server.Path() + QStringLiteral("2");
    ASSERT_TRUE(QDir().rename(server.Path(), moved));
    const auto other = Server::Open(moved, std::make_unique<NoObjects>());
    other->NewSession(QStringLiteral("x"))->UseDatabase(QStringLiteral("d"));
}

TEST(Storage, FilesAreForTheirOwnerOnly) {
    TestServer server;
    server.NewDatabase(QStringLiteral("d"));
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeGroup | QFile::ExeOther;
    EXPECT_FALSE(QFile::permissions(server.Path()) & others);
    EXPECT_FALSE(QFile::permissions(FileOf(server, QStringLiteral("d-*.sqlite"))) & others);
    EXPECT_FALSE(QFile::permissions(FileOf(server, QStringLiteral("master.sqlite"))) & others);
}

TEST(Storage, ADamagedDatabaseRaisesAndTheOthersLive) {
    TestServer server;
    for (const char* name : {"good", "bad"}) server.NewDatabase(QString::fromLatin1(name));
    server.Close();
    Overwrite(FileOf(server, QStringLiteral("bad-*.sqlite")), 0, QByteArray(4096, 'x'));
    server.Open();
    const auto session = server.NewSession();
    EXPECT_EQ(Raised([&] { session->UseDatabase(QStringLiteral("bad")); }), 945);
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("use bad")), 945);
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("select * from bad..t")), 945);
    session->UseDatabase(QStringLiteral("good"));
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("create table t(a int)")), 0);
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("drop database bad")), 0);
}

TEST(Storage, DamageInsideATableRaisesWhenItIsMet) {
    TestServer server;
    {
        const auto session = server.NewDatabase(QStringLiteral("d"));
        Lines(*session,
              QStringLiteral("create table t(a int, s nvarchar(max)) "
                             "insert t values (1, replicate(cast(N'x' as nvarchar(max)), 30000))"));
        for (int i = 0; i < 6; ++i) Lines(*session, QStringLiteral("insert t select a, s from t"));
    }
    server.Close();
    const QString path = FileOf(server, QStringLiteral("d-*.sqlite"));
    const qint64 size = QFile(path).size();
    for (qint64 at = size / 4 / 4096 * 4096; at < size; at += 4096)
        Overwrite(path, at, QByteArray(64, '\xFF'));
    server.Open();
    const auto session = server.NewSession();
    int error = Raised([&] { session->UseDatabase(QStringLiteral("d")); });
    if (error == 0) error = ErrorOf(*session, QStringLiteral("select a, len(s) from t"));
    EXPECT_EQ(error, 945);
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("use master select 1")), 0);
}

TEST(Storage, ARecordThatDoesNotHoldItsTypeRaises) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int, d decimal(30,2), s nvarchar(5)) "
                                   "insert t values (1, 2, N'x')"));
    sqlite3* handle = nullptr;
    ASSERT_EQ(
        sqlite3_open(FileOf(server, QStringLiteral("d-*.sqlite")).toUtf8().constData(), &handle),
        SQLITE_OK);
    const auto set = [handle](const char* sql) {
        ASSERT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(handle);
    };
    set("UPDATE t100001 SET c1 = x'00'");
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("select a from t")), 945);
    set("UPDATE t100001 SET c1 = 1, c2 = 'abc'");
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("select d + 1 from t")), 945);
    set("UPDATE t100001 SET c3 = x'00'");
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("select upper(s) from t")), 945);
    set("UPDATE q_columns SET type = 7");
    // A session that has not met the table yet.
    const auto other = server.NewSession();
    other->UseDatabase(QStringLiteral("d"));
    EXPECT_EQ(ErrorOf(*other, QStringLiteral("select a from t")), 945);
    sqlite3_close(handle);
}

TEST(Storage, AMissingFileIsNotMadeAnew) {
    TestServer server;
    server.NewDatabase(QStringLiteral("d"));
    server.Close();
    const QString path = FileOf(server, QStringLiteral("d-*.sqlite"));
    ASSERT_TRUE(QFile::remove(path));
    server.Open();
    const auto session = server.NewSession();
    EXPECT_EQ(Raised([&] { session->UseDatabase(QStringLiteral("d")); }), 945);
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(session->Database(), u"master");
}

TEST(Storage, AnEmptyFileIsNoDatabase) {
    TestServer server;
    server.NewDatabase(QStringLiteral("d"));
    server.Close();
    QFile file(FileOf(server, QStringLiteral("d-*.sqlite")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.close();
    server.Open();
    const auto session = server.NewSession();
    EXPECT_EQ(Raised([&] { session->UseDatabase(QStringLiteral("d")); }), 945);
}

TEST(Storage, ADamagedMasterDoesNotOpen) {
    TestServer server;
    server.Close();
    Overwrite(FileOf(server, QStringLiteral("master.sqlite")), 0, QByteArray(8192, '\1'));
    EXPECT_EQ(Raised([&] { server.Open(); }), 945);
}

TEST(Storage, ADirectoryThatCannotBeMadeRaises) {
    EXPECT_EQ(
        Raised([] { Server::Open(QStringLiteral("/dev/null/x"), std::make_unique<NoObjects>()); }),
        945);
}

TEST(Storage, ALockedFileEndsInAnErrorOnceTheClientGivesUp) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    Lines(*session, QStringLiteral("create table t(a int)"));
    sqlite3* handle = nullptr;
    ASSERT_EQ(
        sqlite3_open(FileOf(server, QStringLiteral("d-*.sqlite")).toUtf8().constData(), &handle),
        SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(handle, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    // Reading goes on; writing waits until the client cancels.
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("select * from t")), 0);
    RecordingSink sink;
    sink.cancelAfterRows = 0;
    session->RunBatch(QStringLiteral("insert t values (1)"), sink);
    EXPECT_EQ(sink.lines, QStringList());
    ASSERT_EQ(sqlite3_exec(handle, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
    EXPECT_EQ(ErrorOf(*session, QStringLiteral("insert t values (1)")), 0);
}

TEST(Storage, ManyTablesInOneTransactionAreQuick) {
    TestServer server;
    const auto session = server.NewDatabase(QStringLiteral("d"));
    RecordingSink sink;
    session->BeginTransaction(sink);
    for (int i = 0; i < 1000; ++i) {
        session->RunBatch(
            QStringLiteral("create table t%1(id int primary key, n nvarchar(20))").arg(i), sink);
    }
    session->CommitTransaction(sink);
    EXPECT_EQ(sink.FirstError(), 0);
    EXPECT_EQ(Lines(*session, QStringLiteral("select * from T999")).last(), u"(0 rows)");
}

TEST(Storage, ManyDatabasesAreUsedInTurn) {
    TestServer server;
    const auto session = server.NewSession();
    for (int i = 0; i < 15; ++i) {
        EXPECT_EQ(ErrorOf(*session, QStringLiteral("create database d%1").arg(i)), 0);
        session->UseDatabase(QStringLiteral("d%1").arg(i));
        EXPECT_EQ(
            ErrorOf(*session, QStringLiteral("create table t(a int) insert t values (%1)").arg(i)),
            0);
    }
    for (int i = 0; i < 15; ++i) {
        EXPECT_EQ(Lines(*session, QStringLiteral("select a from d%1..t").arg(i)).value(1),
                  QString::number(i));
    }
}

}  // namespace quarv::localdb::engine
