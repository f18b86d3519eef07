// What programs of other makers see of this server: they log in, read rows and errors, and leave.
#include <gmock/gmock.h>

#include <QProcess>
#include <QStandardPaths>

#include "RunningServer.h"

namespace quarv::localdb::server {

namespace {

using testing::HasSubstr;

struct Output {
    int status = -1;
    std::string text;  // stdout and stderr
};

Output RunClient(const QString& program, const QStringList& arguments, const QByteArray& input) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TDSVER"), QStringLiteral("7.4"));
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(20'000)) << program.toStdString() << " does not end";
    return {process.exitCode(), process.readAll().toStdString()};
}

class ClientProgramsTest : public testing::Test {
  protected:
    bool Has(const char* program) {
        return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
    }
    Output Tsql(const QByteArray& input, const char* password = "right") {
        return RunClient(
            QStringLiteral("tsql"),
            {QStringLiteral("-H"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
             QString::number(server_.Port()), QStringLiteral("-U"), QStringLiteral("tester"),
             QStringLiteral("-P"), QString::fromLatin1(password)},
            input);
    }
    Output Isql(const QByteArray& input) {
        const QString connection =
            QStringLiteral(
                "Driver=FreeTDS;Server=127.0.0.1;Port=%1;TDS_Version=7.4;UID=tester;PWD=right")
                .arg(server_.Port());
        return RunClient(
            QStringLiteral("isql"),
            {QStringLiteral("-k"), connection, QStringLiteral("-b"), QStringLiteral("-d,")}, input);
    }

    RunningServer server_;
};

}  // namespace

TEST_F(ClientProgramsTest, TsqlReadsRowsAndErrors) {
    if (!Has("tsql")) GTEST_SKIP() << "tsql is not installed";
    const Output output = Tsql("rows 3\ngo\nerror\ngo\nprint\ngo\nnulls\ngo\nexit\n");
    EXPECT_EQ(output.status, 0) << output.text;
    EXPECT_THAT(output.text, HasSubstr("id\tname"));
    EXPECT_THAT(output.text, HasSubstr("2\ttext"));
    EXPECT_THAT(output.text, HasSubstr("(3 rows affected)"));
    EXPECT_THAT(output.text, HasSubstr("Msg 208 (severity 16, state 1) from here Line 2:"));
    EXPECT_THAT(output.text, HasSubstr("Invalid object name 'x'."));
    EXPECT_THAT(output.text, HasSubstr("hello"));
    EXPECT_THAT(output.text, HasSubstr("NULL\tb"));
}

TEST_F(ClientProgramsTest, TsqlIsRefusedWithAWrongPassword) {
    if (!Has("tsql")) GTEST_SKIP() << "tsql is not installed";
    const Output output = Tsql("exit\n", "wrong");
    EXPECT_NE(output.status, 0);
    EXPECT_THAT(output.text, HasSubstr("Msg 18456"));
    EXPECT_THAT(output.text, HasSubstr("Login failed for user 'tester'."));
}

TEST_F(ClientProgramsTest, IsqlReadsRowsThroughOdbc) {
    if (!Has("isql")) GTEST_SKIP() << "isql is not installed";
    const Output output = Isql("rows 3\nnulls\n");
    EXPECT_THAT(output.text, HasSubstr("0,text"));
    EXPECT_THAT(output.text, HasSubstr("2,text"));
    EXPECT_THAT(output.text, HasSubstr(",b"));
    EXPECT_TRUE(server_.Engine().Ran().contains(QStringLiteral("batch:rows 3")))
        << server_.Engine().Ran().join(u' ').toStdString() << output.text;
}

TEST_F(ClientProgramsTest, BsqldbReadsManyRows) {
    if (!Has("bsqldb")) GTEST_SKIP() << "bsqldb is not installed";
    const Output output =
        RunClient(QStringLiteral("bsqldb"),
                  {QStringLiteral("-S"), QStringLiteral("127.0.0.1:%1").arg(server_.Port()),
                   QStringLiteral("-U"), QStringLiteral("tester"), QStringLiteral("-P"),
                   QStringLiteral("right")},
                  "rows 20000\n");
    EXPECT_EQ(output.status, 0) << output.text.substr(0, 2000);
    EXPECT_THAT(output.text, HasSubstr("19999"));
}

}  // namespace quarv::localdb::server
