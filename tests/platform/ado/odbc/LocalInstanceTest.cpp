#include "platform/ado/odbc/LocalInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/ado/odbc/Open.h"

namespace quarv::test {

using ado::odbc::LocalInstance;

namespace {

// Holds the instance's lock as a server does.
class HeldLock {
  public:
    explicit HeldLock(const QString& path)
        : fd_(open(qPrintable(path), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        flock(fd_, LOCK_EX | LOCK_NB);
    }
    ~HeldLock() { close(fd_); }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

  private:
    int fd_;
};

class LocalInstanceTest : public testing::Test {
  protected:
    void SetUp() override {
        before_ = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", home_.path().toUtf8());
        QDir().mkpath(Folder());
    }
    void TearDown() override {
        if (before_.isNull())
            qunsetenv("XDG_DATA_HOME");
        else
            qputenv("XDG_DATA_HOME", before_);
    }

    QString Folder() const { return home_.path() + QStringLiteral("/quarv/localdb/quarv"); }
    QString Program() const { return home_.path() + QStringLiteral("/server"); }

    static void Write(const QString& path, const QByteArray& text, QFile::Permissions mode) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.setPermissions(mode);
    }
    void WriteState(const QByteArray& text,
                    QFile::Permissions mode = QFile::ReadOwner | QFile::WriteOwner) const {
        Write(Folder() + QStringLiteral("/state"), text, mode);
    }
    // A program in the server's place that notes how it was called and then runs `commands`.
    void WriteProgram(const QByteArray& commands) const {
        Write(Program(),
              "#!/bin/sh\ncd \"" + Folder().toUtf8() + "\"\necho \"$@\" >> calls\n" + commands,
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QString Calls() const {
        QFile file(Folder() + QStringLiteral("/calls"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    static QByteArray State(int port) {
        return "version=1\npid=1\naddress=127.0.0.1\nport=" + QByteArray::number(port) +
               "\nuser=me\nsecret=s=1;}{\n";
    }
    QByteArray WritesState(int port) const {
        return "umask 077\ncat > state <<'END'\n" + State(port) + "END\n";
    }
    LocalInstance::Access Reach(int timeout = 5000) const {
        return LocalInstance(QStringLiteral("quarv"), Program()).Reach(timeout);
    }
    QString ReachError(int timeout = 5000) const {
        return ErrorOf([&] { Reach(timeout); }).Description();
    }

    QTemporaryDir home_;
    QByteArray before_;
};

}  // namespace

TEST_F(LocalInstanceTest, RunningOneIsUsedWithoutStarting) {
    WriteState(State(1234));
    const HeldLock lock(Folder() + QStringLiteral("/lock"));
    const LocalInstance::Access access = Reach();
    EXPECT_EQ(access.host, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(access.port, 1234);
    EXPECT_EQ(access.user, QStringLiteral("me"));
    EXPECT_EQ(access.secret, QStringLiteral("s=1;}{"));
}

TEST_F(LocalInstanceTest, IdleOneIsStarted) {
    WriteState(State(1));
    WriteProgram(WritesState(4321));
    EXPECT_EQ(Reach().port, 4321);
    EXPECT_EQ(Calls(), QStringLiteral("start quarv\n"));
}

TEST_F(LocalInstanceTest, NameIsLowerCased) {
    WriteProgram(WritesState(4321));
    EXPECT_EQ(LocalInstance(QStringLiteral("QUARV"), Program()).Reach(5000).port, 4321);
    EXPECT_EQ(Calls(), QStringLiteral("start quarv\n"));
}

TEST_F(LocalInstanceTest, NameThatIsNoneIsRefused) {
    for (const char* name : {"", "..", "a/b", "a b", "ä"})
        EXPECT_TRUE(ErrorOf([&] { LocalInstance(name, Program()); })
                        .Description()
                        .contains("is not the name of a local instance"))
            << name;
}

TEST_F(LocalInstanceTest, MissingProgramIsNamed) {
    EXPECT_EQ(ReachError(), QStringLiteral("The local server's program was not found at \"%1\". "
                                           "Check that Quarv is installed whole.")
                                .arg(Program()));
}

// The server's own program, whose databases are damaged.
TEST_F(LocalInstanceTest, ServerThatCannotStartIsToldWithItsReasonAndItsLog) {
    const QString data = Folder() + QStringLiteral("/data");
    QDir().mkpath(data);
    Write(data + QStringLiteral("/master.sqlite"), "no database at all, but text",
          QFile::ReadOwner | QFile::WriteOwner);
    const auto connection =
        ado::odbc::OdbcConnectionFactory(QStringLiteral(QUARV_LOCALDB_PROGRAM))();
    const DataError error = ErrorOf([&] {
        connection->Open(QStringLiteral(
            "Provider=sqloledb;Data Source=(localdb)\\quarv;Integrated Security=SSPI"));
    });
    EXPECT_EQ(error.Number(), -2147467259);
    EXPECT_EQ(error.Description(),
              QStringLiteral("The local instance \"quarv\" could not be started: Database "
                             "'%1/data/master.sqlite' cannot be opened due to inaccessible files "
                             "or insufficient memory or disk space. See the SQL Server errorlog "
                             "for details. Its log is \"%1/log\".")
                  .arg(Folder()));
    QFile log(Folder() + QStringLiteral("/log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("master.sqlite' cannot be opened"));
}

TEST_F(LocalInstanceTest, FailedStartGivesItsReasonAndTheLog) {
    WriteProgram("echo 'the data folder is full' >&2\nexit 3\n");
    EXPECT_EQ(ReachError(), QStringLiteral("The local instance \"quarv\" could not be started: "
                                           "the data folder is full. Its log is \"%1/log\".")
                                .arg(Folder()));
}

TEST_F(LocalInstanceTest, FailedStartWithoutAReasonStillSaysSo) {
    WriteProgram("exit 1\n");
    EXPECT_TRUE(ReachError().contains("could not be started: it gave no reason. Its log"));
}

TEST_F(LocalInstanceTest, StartThatHangsEndsWithTheTimeout) {
    WriteProgram("exec sleep 30\n");
    EXPECT_TRUE(ReachError(200).contains("it was not ready within 1 second."));
}

TEST_F(LocalInstanceTest, StateThatCannotBeTrustedIsRefused) {
    const QByteArray good = State(1234);
    WriteProgram("true\n");
    const QByteArray states[] = {QByteArray(),
                                 "garbage",
                                 QByteArray(good).replace("version=1", "version=2"),
                                 QByteArray(good).replace("127.0.0.1", "10.0.0.1"),
                                 QByteArray(good).replace("127.0.0.1", "localhost"),
                                 QByteArray(good).replace("1234", "0"),
                                 QByteArray(good).replace("1234", "65536"),
                                 QByteArray(good).replace("1234", "12x"),
                                 QByteArray(good).replace("user=me", "user="),
                                 QByteArray(good).replace("secret=s=1;}{", "secret="),
                                 good + QByteArray(100000, 'x')};
    for (const QByteArray& state : states) {
        WriteState(state);
        EXPECT_TRUE(ReachError().contains("cannot be used")) << state.left(200).constData();
    }
    WriteState(good, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    EXPECT_TRUE(ReachError().contains("cannot be used"));
}

TEST_F(LocalInstanceTest, WindowsAccountIsProvedByTheSecret) {
    const FakeServer server(FakeTds().Done());
    WriteProgram(WritesState(server.Port()));
    const auto connection = ado::odbc::OdbcConnectionFactory(Program())();
    connection->Open(
        QStringLiteral("Provider=sqloledb;Data Source=(localdb)\\quarv;Initial "
                       "Catalog=mirel;Integrated Security=SSPI;"));
    EXPECT_EQ(server.Login(), QStringList({"me", "s=1;}{", "Quarv", "mirel"}));
}

TEST_F(LocalInstanceTest, AccountOfTheStringIsUsedWhereItIsGiven) {
    const FakeServer server(FakeTds().Done());
    WriteProgram(WritesState(server.Port()));
    const auto connection = ado::odbc::OdbcConnectionFactory(Program())();
    connection->Open(
        QStringLiteral("Provider=sqloledb;Data Source=(localdb)\\quarv;User Id=other;Password=p"));
    EXPECT_EQ(server.Login().mid(0, 2), QStringList({"other", "p"}));
}

TEST_F(LocalInstanceTest, OneThatEndedJustNowIsStartedAgain) {
    int dead = 0;
    { dead = FakeServer(FakeTds()).Port(); }
    const FakeServer server(FakeTds().Done());
    // The first start leaves a port where nothing listens any more, the second one a good one.
    WriteProgram("if [ $(wc -l < calls) = 1 ]; then\n" + WritesState(dead) + "else\n" +
                 WritesState(server.Port()) + "fi\n");
    const auto connection = ado::odbc::OdbcConnectionFactory(Program())();
    connection->Open(
        QStringLiteral("Provider=sqloledb;Data Source=(localdb)\\quarv;Integrated Security=SSPI"));
    EXPECT_EQ(connection->State(), ado::adStateOpen);
    EXPECT_EQ(Calls(), QStringLiteral("start quarv\nstart quarv\n"));
}

}  // namespace quarv::test
