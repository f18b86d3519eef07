// The program as a process: instances that start once however many ask, serving in the foreground,
// ending on a signal.
#include <gmock/gmock.h>
#include <signal.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <memory>
#include <vector>

#include "RunningServer.h"
#include "localdb/server/Instance.h"
#include "support/EndWithUs.h"

namespace quarv::localdb::server {

namespace {

constexpr int PatienceMs = 60'000;

class InstanceProcessTest : public testing::Test {
  protected:
    InstanceProcessTest() { qputenv("XDG_DATA_HOME", home_.path().toUtf8()); }
    ~InstanceProcessTest() override {
        for (const QString& name : Instance::All()) Run({QStringLiteral("stop"), name});
        qunsetenv("XDG_DATA_HOME");
    }

    static std::unique_ptr<QProcess> Begin(const QStringList& arguments) {
        auto process = std::make_unique<QProcess>();
        EndWithUs(*process);
        process->start(QStringLiteral(FAKE_SERVER), arguments);
        return process;
    }
    int Run(const QStringList& arguments) {
        const auto process = Begin(arguments);
        EXPECT_TRUE(process->waitForFinished(PatienceMs));
        output_ = process->readAllStandardOutput();
        error_ = process->readAllStandardError();
        return process->exitCode();
    }

    QTemporaryDir home_;
    QByteArray output_;
    QByteArray error_;
};

Instance Demo() {
    return Instance::Named(QStringLiteral("demo"));
}

tds::Login7 LoginOf(const InstanceState& state) {
    tds::Login7 login;
    login.userName = state.user;
    login.password = state.secret;
    return login;
}

}  // namespace

TEST_F(InstanceProcessTest, StartedInstanceServesWhoeverReadsItsState) {
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("Demo")}), 0) << error_.constData();
    const auto state = Demo().RunningState();
    ASSERT_TRUE(state);
    EXPECT_EQ(state->address, QStringLiteral("127.0.0.1"));
    TestClient client(state->port);
    const auto reply = client.LogIn(LoginOf(*state));
    ASSERT_TRUE(reply);
    EXPECT_TRUE(reply->ack);
    TestClient stranger(state->port);
    EXPECT_TRUE(stranger.LogIn()->Has(18456));
    QFile log(Demo().LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QByteArray text = log.readAll();
    EXPECT_TRUE(text.contains("listening on 127.0.0.1:"));
    EXPECT_FALSE(text.contains(state->secret.toUtf8()));
}

TEST_F(InstanceProcessTest, TenStartsAtOnceMakeOneProcess) {
    std::vector<std::unique_ptr<QProcess>> starts;
    for (int i = 0; i < 10; ++i) {
        starts.push_back(Begin({QStringLiteral("start"), QStringLiteral("demo")}));
    }
    for (const auto& start : starts) {
        EXPECT_TRUE(start->waitForFinished(PatienceMs));
        EXPECT_EQ(start->exitCode(), 0) << start->readAllStandardError().constData();
    }
    QFile log(Demo().LogFile());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll().count("listening on"), 1);
}

TEST_F(InstanceProcessTest, SecondStartFindsTheRunningOne) {
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    const auto first = Demo().RunningState();
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    EXPECT_EQ(Demo().RunningState(), first);
}

TEST_F(InstanceProcessTest, StopEndsItAndTheNextStartHasANewSecret) {
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    const auto first = Demo().RunningState();
    ASSERT_EQ(Run({QStringLiteral("stop"), QStringLiteral("demo")}), 0);
    EXPECT_FALSE(Demo().ReadState());
    EXPECT_FALSE(Demo().Lock().IsHeld());
    ASSERT_EQ(Run({QStringLiteral("stop"), QStringLiteral("demo")}), 0);
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    const auto second = Demo().RunningState();
    ASSERT_TRUE(second);
    EXPECT_NE(second->secret, first->secret);
}

TEST_F(InstanceProcessTest, KilledInstanceStartsAgain) {
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    const auto first = Demo().RunningState();
    ASSERT_TRUE(first);
    ::kill(static_cast<pid_t>(first->pid), SIGKILL);
    ASSERT_TRUE(Eventually([] { return !Demo().Lock().IsHeld(); }));
    ASSERT_TRUE(Demo().ReadState());
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    const auto second = Demo().RunningState();
    ASSERT_TRUE(second);
    EXPECT_NE(second->pid, first->pid);
}

TEST_F(InstanceProcessTest, FailureToOpenIsSaidByTheStarter) {
    qputenv("FAKE_ENGINE_FAILS", "1");
    EXPECT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 1);
    qunsetenv("FAKE_ENGINE_FAILS");
    EXPECT_EQ(error_, "quarv-localdb: the instance \"demo\" did not start: the database in " +
                          Demo().DataDirectory().toUtf8() + " is damaged\n");
    EXPECT_FALSE(Demo().Lock().IsHeld());
    EXPECT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
}

TEST_F(InstanceProcessTest, InfoTellsWhetherItRuns) {
    ASSERT_EQ(Run({QStringLiteral("start"), QStringLiteral("demo")}), 0);
    ASSERT_EQ(Run({QStringLiteral("info"), QStringLiteral("demo")}), 0);
    EXPECT_TRUE(output_.startsWith("name: demo\nstate: running\nprocess: "));
    EXPECT_EQ(Run({QStringLiteral("delete"), QStringLiteral("demo")}), 1);
    ASSERT_EQ(Run({QStringLiteral("stop"), QStringLiteral("demo")}), 0);
    ASSERT_EQ(Run({QStringLiteral("info"), QStringLiteral("demo")}), 0);
    EXPECT_TRUE(output_.startsWith("name: demo\nstate: stopped\n"));
    EXPECT_EQ(Run({QStringLiteral("delete"), QStringLiteral("demo")}), 0);
    EXPECT_FALSE(Demo().Exists());
}

namespace {

class ServeProcessTest : public InstanceProcessTest {
  protected:
    ServeProcessTest() {
        QFile file(PasswordFile());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("right\n");
    }
    QString PasswordFile() const { return home_.filePath(QStringLiteral("password")); }
    std::unique_ptr<QProcess> Serve(const QString& listen, const QString& data) {
        return Begin({QStringLiteral("serve"), QStringLiteral("--data"), home_.filePath(data),
                      QStringLiteral("--listen"), listen, QStringLiteral("--login"),
                      QStringLiteral("tester"), QStringLiteral("--password-file"), PasswordFile()});
    }
    static uint16_t PortFrom(QProcess& process) {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(PatienceMs)) break;
        }
        const QByteArray line = process.readLine();
        EXPECT_TRUE(line.startsWith("listening on 127.0.0.1:")) << line.constData();
        return line.trimmed().mid(line.lastIndexOf(':') + 1).toUShort();
    }
};

}  // namespace

TEST_F(ServeProcessTest, ServesUntilItIsTold) {
    const auto process = Serve(QStringLiteral("127.0.0.1:0"), QStringLiteral("data"));
    TestClient client(PortFrom(*process));
    ASSERT_TRUE(client.LogIn()->ack);
    client.SendBatch(QStringLiteral("busy"));
    process->terminate();
    ASSERT_TRUE(process->waitForFinished(PatienceMs));
    EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process->exitCode(), 0);
}

TEST_F(ServeProcessTest, TakenPortIsSaid) {
    const auto first = Serve(QStringLiteral("127.0.0.1:0"), QStringLiteral("data"));
    const QString where = QStringLiteral("127.0.0.1:%1").arg(PortFrom(*first));
    const auto second = Serve(where, QStringLiteral("other"));
    ASSERT_TRUE(second->waitForFinished(PatienceMs));
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_EQ(second->readAllStandardError(),
              "quarv-localdb: cannot listen on " + where.toUtf8() + ": Address already in use\n");
    first->terminate();
    EXPECT_TRUE(first->waitForFinished(PatienceMs));
}

TEST_F(ServeProcessTest, DataDirectoryIsServedOnce) {
    const auto first = Serve(QStringLiteral("127.0.0.1:0"), QStringLiteral("data"));
    PortFrom(*first);
    const auto second = Serve(QStringLiteral("127.0.0.1:0"), QStringLiteral("data"));
    ASSERT_TRUE(second->waitForFinished(PatienceMs));
    EXPECT_EQ(second->exitCode(), 1);
    EXPECT_EQ(second->readAllStandardError(), "quarv-localdb: the data directory \"" +
                                                  home_.filePath(QStringLiteral("data")).toUtf8() +
                                                  "\" is in use by another server\n");
    first->terminate();
    EXPECT_TRUE(first->waitForFinished(PatienceMs));
}

}  // namespace quarv::localdb::server
