#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "FakeEngine.h"
#include "base/Error.h"
#include "localdb/server/Account.h"
#include "localdb/server/CommandLine.h"
#include "localdb/server/Instance.h"
#include "localdb/server/InstanceCommands.h"
#include "localdb/server/ListenAddress.h"
#include "localdb/server/Log.h"
#include "localdb/server/Sample.h"
#include "localdb/server/ServeCommand.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

QByteArray Contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

int ModeOf(const QString& path) {
    struct stat info {};
    ::stat(QFile::encodeName(path).constData(), &info);
    return info.st_mode & 07777;
}

// The user's data directory, for one test.
class InstanceTest : public testing::Test {
  protected:
    InstanceTest() { qputenv("XDG_DATA_HOME", directory_.path().toUtf8()); }
    ~InstanceTest() override { qunsetenv("XDG_DATA_HOME"); }

    QTemporaryDir directory_;
};

struct Outcome {
    int status;
    std::string error;
};

Outcome RunProgram(const QStringList& arguments, const EngineAccess& engine = {}) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const int status = RunCommandLine(arguments, engine);
    testing::internal::GetCapturedStdout();
    return {status, testing::internal::GetCapturedStderr()};
}

}  // namespace

TEST(AccountTest, AdmitsNameInAnyCaseAndTheExactPassword) {
    const Account account(QStringLiteral("Sa"), QStringLiteral("Secret"));
    EXPECT_TRUE(account.Admits(QStringLiteral("sA"), QStringLiteral("Secret")));
    EXPECT_FALSE(account.Admits(QStringLiteral("sa"), QStringLiteral("secret")));
    EXPECT_FALSE(account.Admits(QStringLiteral("sa"), QStringLiteral("Secret ")));
    EXPECT_FALSE(account.Admits(QStringLiteral("sa"), QString()));
    EXPECT_FALSE(account.Admits(QString(), QStringLiteral("Secret")));
}

TEST(AccountTest, EmptyAccountAdmitsNoOne) {
    EXPECT_FALSE(Account().Admits(QString(), QString()));
}

struct AddressCase {
    const char* text;
    const char* back;  // null: refused
};

class AddressCases : public testing::TestWithParam<AddressCase> {};

TEST_P(AddressCases, AreReadOrRefused) {
    const QString text = QString::fromLatin1(GetParam().text);
    if (GetParam().back != nullptr) {
        EXPECT_EQ(ListenAddress::Parse(text).ToText(), QString::fromLatin1(GetParam().back));
    } else {
        EXPECT_THROW(ListenAddress::Parse(text), ServerError);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, AddressCases,
    testing::Values(AddressCase{"127.0.0.1:1433", "127.0.0.1:1433"},
                    AddressCase{"0.0.0.0:0", "0.0.0.0:0"}, AddressCase{"[::1]:99", "[::1]:99"},
                    AddressCase{"127.0.0.1", nullptr}, AddressCase{":1433", nullptr},
                    AddressCase{"::1:99", nullptr}, AddressCase{"[127.0.0.1]:99", nullptr},
                    AddressCase{"localhost:99", nullptr}, AddressCase{"127.0.0.1:65536", nullptr},
                    AddressCase{"127.0.0.1:-1", nullptr}, AddressCase{"127.0.0.1:x", nullptr},
                    AddressCase{"", nullptr}));

TEST(ListenAddressTest, TakenPortIsSaid) {
    ListenAddress first;
    const FileDescriptor socket = first.Listen();
    EXPECT_GT(first.port, 0);
    ListenAddress second = first;
    try {
        second.Listen();
        ADD_FAILURE() << "listened twice";
    } catch (const ServerError& error) {
        EXPECT_EQ(error.Description(), QStringLiteral("cannot listen on 127.0.0.1:%1: Address "
                                                      "already in use")
                                           .arg(first.port));
    }
}

TEST(InstanceStateTest, HasItsLines) {
    const InstanceState state{12, QStringLiteral("127.0.0.1"), 4321, QStringLiteral("u"),
                              QStringLiteral("s=1")};
    const QByteArray lines =
        "version=1\npid=12\naddress=127.0.0.1\nport=4321\nuser=u\nsecret=s=1\n";
    EXPECT_EQ(state.ToBytes(), lines);
    EXPECT_EQ(InstanceState::Parse(lines), state);
}

TEST(InstanceStateTest, EveryMissingLineIsRefused) {
    const QByteArrayList lines{"version=1", "pid=1",  "address=127.0.0.1",
                               "port=2",    "user=u", "secret=s"};
    EXPECT_TRUE(InstanceState::Parse(lines.join('\n')));
    for (const QByteArray& line : lines) {
        QByteArrayList rest = lines;
        rest.removeAll(line);
        EXPECT_FALSE(InstanceState::Parse(rest.join('\n'))) << line.constData();
    }
    EXPECT_FALSE(InstanceState::Parse(QByteArray(lines.join('\n')).replace("on=1", "on=2")));
    EXPECT_FALSE(InstanceState::Parse(QByteArray(lines.join('\n')).replace("port=2", "port=0")));
}

TEST(InstanceStateTest, SecretsAreLongAndDiffer) {
    EXPECT_EQ(NewSecret().size(), 64);
    EXPECT_NE(NewSecret(), NewSecret());
}

TEST_F(InstanceTest, NamesAreLowerCasedAndChecked) {
    EXPECT_EQ(Instance::Named(QStringLiteral("Quarv")).Name(), QStringLiteral("quarv"));
    EXPECT_EQ(Instance::Named(QStringLiteral("a_b-1")).Directory(),
              directory_.path() + QStringLiteral("/quarv/localdb/a_b-1"));
    for (const char* bad : {"", "..", "a/b", "a.b", "a b", "\xC3\xA4", "a\n"}) {
        EXPECT_THROW(Instance::Named(QString::fromUtf8(bad)), ServerError) << bad;
    }
    EXPECT_NO_THROW(Instance::Named(QString(64, QLatin1Char('a'))));
    EXPECT_THROW(Instance::Named(QString(65, QLatin1Char('a'))), ServerError);
}

TEST_F(InstanceTest, StateIsForTheUserAloneAndReplacedWhole) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    EXPECT_EQ(ModeOf(instance.Directory()), 0700);
    InstanceState state{::getpid(), QStringLiteral("127.0.0.1"), 1, QStringLiteral("u"),
                        QStringLiteral("s")};
    instance.WriteState(state);
    state.port = 2;
    instance.WriteState(state);
    EXPECT_EQ(ModeOf(instance.Directory() + QStringLiteral("/state")), 0600);
    EXPECT_EQ(instance.ReadState(), state);
    EXPECT_EQ(QDir(instance.Directory()).entryList(QDir::Files),
              QStringList{QStringLiteral("state")});
}

TEST_F(InstanceTest, RunsOnlyWhileItsLockIsHeld) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    instance.WriteState(
        {::getpid(), QStringLiteral("127.0.0.1"), 1, QStringLiteral("u"), QStringLiteral("s")});
    EXPECT_FALSE(instance.RunningState());
    FileDescriptor lock = instance.Lock().TryTake();
    EXPECT_TRUE(lock.IsOpen());
    EXPECT_FALSE(instance.Lock().TryTake().IsOpen());
    EXPECT_TRUE(instance.RunningState());
    lock.Close();
    EXPECT_FALSE(instance.Lock().IsHeld());
}

TEST_F(InstanceTest, DeletionIsRefusedWhileItRuns) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    WriteFile(instance.Directory() + QStringLiteral("/log"), "x");
    FileDescriptor lock = instance.Lock().TryTake();
    EXPECT_THROW(DeleteInstance(QStringLiteral("one")), ServerError);
    EXPECT_TRUE(instance.Exists());
    lock.Close();
    DeleteInstance(QStringLiteral("one"));
    EXPECT_FALSE(instance.Exists());
    EXPECT_THROW(DeleteInstance(QStringLiteral("one")), ServerError);
}

TEST_F(InstanceTest, DescriptionShowsNoSecret) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    const FileDescriptor lock = instance.Lock().TryTake();
    instance.WriteState({::getpid(), QStringLiteral("127.0.0.1"), 4321, QStringLiteral("u"),
                         QStringLiteral("hunter2")});
    const QString text = DescribeInstances(QString());
    EXPECT_TRUE(text.contains(QStringLiteral("name: one\nstate: running\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("address: 127.0.0.1:4321")));
    EXPECT_FALSE(text.contains(QStringLiteral("hunter2")));
}

TEST(LogTest, IsSetAsideWhenItIsFull) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("log"));
    Log log(path, 200);
    for (int i = 0; i < 10; ++i) log.Write(QString(50, QLatin1Char('a')));
    EXPECT_LE(Contents(path).size(), 200);
    EXPECT_LE(Contents(path + QStringLiteral(".old")).size(), 200);
    EXPECT_FALSE(Contents(path + QStringLiteral(".old")).isEmpty());
}

TEST(ServeCommandTest, PasswordIsTheFilesFirstLine) {
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("password"));
    WriteFile(path, "p\xC3\xA4ss word \r\nsecond\n");
    EXPECT_EQ(ReadPasswordFile(path), QString::fromUtf8("p\xC3\xA4ss word "));
    WriteFile(path, "\nsecond\n");
    EXPECT_THROW(ReadPasswordFile(path), ServerError);
    EXPECT_THROW(ReadPasswordFile(path + QStringLiteral("x")), ServerError);
}

TEST(ServeCommandTest, VersionHasThreeParts) {
    EXPECT_EQ(ParseVersion(QStringLiteral("16.00.1000")), (tds::ProgramVersion{16, 0, 1000}));
}

struct CommandCase {
    const char* arguments;
    int status;
    const char* error;
};

class CommandCases : public testing::TestWithParam<CommandCase> {};

TEST_P(CommandCases, EndWithTheirStatusAndOneLine) {
    const auto arguments =
        QString::fromLatin1(GetParam().arguments).split(u' ', Qt::SkipEmptyParts);
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.error, GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandCases,
    testing::Values(
        CommandCase{"--help", 0, ""}, CommandCase{"--version", 0, ""},
        CommandCase{"", 2, "quarv-localdb: nothing to do (try --help)\n"},
        CommandCase{"--quick", 2, "quarv-localdb: unknown option \"--quick\" (try --help)\n"},
        CommandCase{"dance", 2, "quarv-localdb: unknown verb \"dance\" (try --help)\n"},
        CommandCase{"start", 2, "quarv-localdb: one instance name is needed (try --help)\n"},
        CommandCase{"start a/b", 1,
                    "quarv-localdb: \"a/b\" is no instance name; use 1 to 64 of the characters "
                    "a-z, 0-9, _ and -\n"},
        CommandCase{"stop no-such-one", 1, "quarv-localdb: there is no instance \"no-such-one\"\n"},
        CommandCase{"serve --fast", 2, "quarv-localdb: unknown option \"--fast\" (try --help)\n"},
        CommandCase{"serve --data", 2, "quarv-localdb: --data needs a value (try --help)\n"},
        CommandCase{"serve --data /tmp", 2, "quarv-localdb: serve needs --listen (try --help)\n"},
        CommandCase{"serve --data a --data b", 2,
                    "quarv-localdb: --data is given twice (try --help)\n"},
        CommandCase{"serve --data a --login b --listen nowhere --password-file /dev/null", 1,
                    "quarv-localdb: \"nowhere\" is no address and port; use for example "
                    "127.0.0.1:1433 or [::1]:1433\n"},
        CommandCase{"serve --data a --login b --listen 127.0.0.1:0 --password-file /no/file", 1,
                    "quarv-localdb: cannot use the password file \"/no/file\": No such file or "
                    "directory\n"}));

namespace {

// A fake engine whose databases are files in its directory.
class FileEngine final : public engine::Server {
  public:
    explicit FileEngine(QString directory) : directory_(std::move(directory)) {
        WriteFile(directory_ + QStringLiteral("/master.db"), "m");
    }
    std::unique_ptr<engine::Session> NewSession(const QString&) override;
    bool HasDatabase(const QString& name) const override {
        return QFile::exists(directory_ + u'/' + name + QStringLiteral(".db"));
    }

  private:
    QString directory_;
};

class FileSession final : public engine::Session {
  public:
    explicit FileSession(QString directory) : directory_(std::move(directory)) {}
    QString Database() const override { return {}; }
    void UseDatabase(const QString&) override {}
    void RunBatch(const QString& sql, engine::ResultSink& sink) override {
        if (sql == u"CREATE DATABASE [mirel]") WriteFile(File(), "");
        if (sql == u"DROP DATABASE [mirel]") QFile::remove(File());
        if (sql.startsWith(u"append ")) {
            WriteFile(File(), Contents(File()) + sql.mid(7).toUtf8());
        }
        if (sql == u"fail") {
            engine::Message message;
            message.severity = 16;
            message.line = 3;
            message.text = QStringLiteral("no");
            sink.Say(message);
        }
    }
    void RunProcedure(const QString&, const std::vector<engine::Argument>&,
                      engine::ResultSink&) override {}
    void BeginTransaction(engine::ResultSink&) override {}
    void CommitTransaction(engine::ResultSink&) override {}
    void RollbackTransaction(engine::ResultSink&) override {}
    void Reset(const QString&) override {}
    int Id() const override { return 51; }

  private:
    QString File() const { return directory_ + QStringLiteral("/mirel.db"); }
    QString directory_;
};

std::unique_ptr<engine::Session> FileEngine::NewSession(const QString&) {
    return std::make_unique<FileSession>(directory_);
}

EngineAccess FileEngineAccess(const QStringList& batches) {
    EngineAccess access;
    access.open = [](const QString& directory) { return std::make_unique<FileEngine>(directory); };
    access.productVersion = QStringLiteral("16.00.1000");
    access.sampleName = QStringLiteral("mirel");
    access.sampleBatches = batches;
    return access;
}

QStringList FilesIn(const QString& directory) {
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                     QDir::Name);
}

}  // namespace

TEST(SampleTest, IsMadeWhole) {
    QTemporaryDir directory;
    const auto access = FileEngineAccess({QStringLiteral("append a"), QStringLiteral("append b")});
    EXPECT_TRUE(OpenWithSample(access, directory.path())->HasDatabase(QStringLiteral("mirel")));
    EXPECT_EQ(Contents(directory.filePath(QStringLiteral("mirel.db"))), "ab");
    EXPECT_EQ(FilesIn(directory.path()),
              (QStringList{QStringLiteral("master.db"), QStringLiteral("mirel.db")}));
}

TEST(SampleTest, ExistingDatabaseIsLeftAlone) {
    QTemporaryDir directory;
    WriteFile(directory.filePath(QStringLiteral("mirel.db")), "mine");
    OpenWithSample(FileEngineAccess({QStringLiteral("append a")}), directory.path());
    EXPECT_EQ(Contents(directory.filePath(QStringLiteral("mirel.db"))), "mine");
}

TEST(SampleTest, FailureLeavesNothingHalfMade) {
    QTemporaryDir directory;
    try {
        OpenWithSample(FileEngineAccess({QStringLiteral("append a"), QStringLiteral("fail")}),
                       directory.path());
        ADD_FAILURE() << "nothing was raised";
    } catch (const ServerError& error) {
        EXPECT_EQ(error.Description(),
                  QStringLiteral("the sample database \"mirel\" could not be made: batch 2, line "
                                 "3: no"));
    }
    EXPECT_EQ(FilesIn(directory.path()), QStringList{QStringLiteral("master.db")});
}

TEST(SampleTest, WhatAKilledTryLeftBehindIsMadeAnew) {
    QTemporaryDir directory;
    WriteFile(directory.filePath(QStringLiteral(".sample-unfinished")), "");
    WriteFile(directory.filePath(QStringLiteral("mirel.db")), "half");
    OpenWithSample(FileEngineAccess({QStringLiteral("append a")}), directory.path());
    EXPECT_EQ(Contents(directory.filePath(QStringLiteral("mirel.db"))), "a");
    EXPECT_EQ(FilesIn(directory.path()),
              (QStringList{QStringLiteral("master.db"), QStringLiteral("mirel.db")}));
}

TEST(CommandLineTest, UnwritableDataDirectoryIsSaid) {
    QTemporaryDir directory;
    const QString password = directory.filePath(QStringLiteral("password"));
    WriteFile(password, "x\n");
    const QString file = directory.filePath(QStringLiteral("file"));
    WriteFile(file, "x");
    const Outcome outcome = RunProgram(
        {QStringLiteral("serve"), QStringLiteral("--data"), file + QStringLiteral("/data"),
         QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--login"),
         QStringLiteral("x"), QStringLiteral("--password-file"), password},
        FileEngineAccess({}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, QStringLiteral("quarv-localdb: cannot use the data directory "
                                            "\"%1/data\": Not a directory\n")
                                 .arg(file)
                                 .toStdString());
}

}  // namespace quarv::localdb::server
