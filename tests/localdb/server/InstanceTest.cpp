#include "localdb/server/Instance.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "Files.h"
#include "localdb/server/InstanceCommands.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

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

}  // namespace

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
    UniqueFd lock = instance.Lock().TryTake();
    EXPECT_TRUE(lock);
    EXPECT_FALSE(instance.Lock().TryTake());
    EXPECT_TRUE(instance.RunningState());
    lock.Reset();
    EXPECT_FALSE(instance.Lock().IsHeld());
}

TEST_F(InstanceTest, AnotherProgramsProcessNumberIsNotTakenForTheServers) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    QProcess other;
    other.start(QStringLiteral("cat"), {});
    ASSERT_TRUE(other.waitForStarted());
    instance.WriteState({other.processId(), QStringLiteral("127.0.0.1"), 1, QStringLiteral("u"),
                         QStringLiteral("s")});
    const UniqueFd lock = instance.Lock().TryTake();
    EXPECT_FALSE(instance.RunningState());
    EXPECT_TRUE(DescribeInstances(QStringLiteral("one"))
                    .contains(QStringLiteral("state: starting, or its state file is damaged\n")));
    other.closeWriteChannel();
    EXPECT_TRUE(other.waitForFinished());
    EXPECT_EQ(other.exitCode(), 0);
}

TEST_F(InstanceTest, DamagedStateHindersNeitherDescriptionNorDeletion) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    WriteFile(instance.Directory() + QStringLiteral("/state"), "version=1\npid=x\n\xFF\n");
    EXPECT_TRUE(
        DescribeInstances(QStringLiteral("one")).contains(QStringLiteral("state: stopped\n")));
    StopInstance(QStringLiteral("one"));
    UniqueFd lock = instance.Lock().TryTake();
    EXPECT_TRUE(DescribeInstances(QStringLiteral("one"))
                    .contains(QStringLiteral("state: starting, or its state file is damaged\n")));
    EXPECT_THROW(DeleteInstance(QStringLiteral("one")), ServerError);
    lock.Reset();
    DeleteInstance(QStringLiteral("one"));
    EXPECT_FALSE(instance.Exists());
}

TEST_F(InstanceTest, DeletionIsRefusedWhileItRuns) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    WriteFile(instance.Directory() + QStringLiteral("/log"), "x");
    UniqueFd lock = instance.Lock().TryTake();
    EXPECT_THROW(DeleteInstance(QStringLiteral("one")), ServerError);
    EXPECT_TRUE(instance.Exists());
    lock.Reset();
    DeleteInstance(QStringLiteral("one"));
    EXPECT_FALSE(instance.Exists());
    EXPECT_THROW(DeleteInstance(QStringLiteral("one")), ServerError);
}

TEST_F(InstanceTest, DescriptionShowsNoSecret) {
    const Instance instance = Instance::Named(QStringLiteral("one"));
    instance.MakeDirectory();
    const UniqueFd lock = instance.Lock().TryTake();
    instance.WriteState({::getpid(), QStringLiteral("127.0.0.1"), 4321, QStringLiteral("u"),
                         QStringLiteral("hunter2")});
    const QString text = DescribeInstances(QString());
    EXPECT_TRUE(text.contains(QStringLiteral("name: one\nstate: running\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("address: 127.0.0.1:4321")));
    EXPECT_FALSE(text.contains(QStringLiteral("hunter2")));
}

}  // namespace quarv::localdb::server
