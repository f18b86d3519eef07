#include "localdb/server/CommandLine.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "Files.h"
#include "localdb/server/ServeCommand.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

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

TEST(CommandLineTest, UnwritableDataDirectoryIsSaid) {
    QTemporaryDir directory;
    const QString password = directory.filePath(QStringLiteral("password"));
    WriteFile(password, "x\n");
    const QString file = directory.filePath(QStringLiteral("file"));
    WriteFile(file, "x");
    const Outcome outcome = RunProgram(
        {QStringLiteral("serve"), QStringLiteral("--data"), file + QStringLiteral("/data"),
         QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--login"),
         QStringLiteral("x"), QStringLiteral("--password-file"), password});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error, QStringLiteral("quarv-localdb: cannot use the data directory "
                                            "\"%1/data\": Not a directory\n")
                                 .arg(file)
                                 .toStdString());
}

}  // namespace quarv::localdb::server
