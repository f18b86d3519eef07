// quarv-reg as a person runs it: the real program in an empty home.
#include <QCoreApplication>
#include <QProcess>

#include "platform/registry/RegistryHome.h"

namespace quarv::registry {
namespace {

struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

class ToolTest : public RegistryHome {
  protected:
    Outcome Run(const QStringList& words, const QByteArray& input = {}) {
        int argc = 1;
        char name[] = "test";
        char* argv[] = {name, nullptr};
        QCoreApplication application(argc, argv);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", folder_.path());
        environment.insert("XDG_CONFIG_HOME", folder_.path() + "/user");
        environment.insert("XDG_CONFIG_DIRS", folder_.path() + "/machine");
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(QUARV_REG), words);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(60000));
        return {.status = process.exitCode(),
                .out = process.readAllStandardOutput(),
                .err = process.readAllStandardError()};
    }

    void ExpectError(const QStringList& words, const QByteArray& message) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(1, outcome.status);
        EXPECT_EQ("", outcome.out);
        EXPECT_EQ("quarv-reg: " + message + "\n", outcome.err);
    }

    void ExpectOutput(const QStringList& words, const QByteArray& output) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(0, outcome.status);
        EXPECT_EQ(output, outcome.out);
        EXPECT_EQ("", outcome.err);
    }
};

const QString General = QStringLiteral("HKLM\\Software\\Kel\\Quarv\\General");

TEST_F(ToolTest, StoresAndShowsAConnectionString) {
    ExpectOutput({"add", General, "-v", "ConnStr", "-d", "Data Source=(localdb)\\quarv;"}, "");
    ExpectOutput({"query", General, "-v", "connstr"},
                 "HKLM\\Software\\Kel\\Quarv\\General\n"
                 "    connstr    REG_SZ    Data Source=(localdb)\\quarv;\n");
    ExpectOutput({"query", General, "ConnStr"}, "Data Source=(localdb)\\quarv;\n");
    ExpectOutput({"query", "hkey_local_machine\\software\\"},
                 "HKLM\\software\nHKLM\\software\\Kel\n");
}

TEST_F(ToolTest, ListsEveryTypeOnOneLineEach) {
    Run({"add", "HKCU\\K", "-d", "of the key"});
    Run({"add", "HKCU\\K", "lines", "a\nb\\n\"c\""});
    Run({"add", "HKCU\\K", "-v", "number", "-t", "reg_dword", "-d", "42"});
    Run({"add", "HKCU\\K", "-v", "large", "-t", "REG_QWORD", "-d", "0x1ffffffff"});
    Run({"add", "HKCU\\K", "-v", "bytes", "-t", "REG_BINARY", "-d", "00FF"});
    Run({"add", "HKCU\\K", "-v", "list", "-t", "REG_MULTI_SZ", "-d", "a\\0b"});
    Run({"add", "HKCU\\K", "-v", "strange", "-t", "77", "-d", ""});
    Run({"add", "HKCU\\K\\Below"});
    ExpectOutput({"query", "HKCU\\K"},
                 "HKCU\\K\n"
                 "    (Default)    REG_SZ    of the key\n"
                 "    lines    REG_SZ    \"a\\nb\\\\n\\\"c\\\"\"\n"
                 "    number    REG_DWORD    0x2a\n"
                 "    large    REG_QWORD    0x1ffffffff\n"
                 "    bytes    REG_BINARY    00ff\n"
                 "    list    REG_MULTI_SZ    \"a\\u{0}b\\u{0}\"\n"
                 "    strange    type 77    \n"
                 "HKCU\\K\\Below\n");
    ExpectOutput({"query", "HKCU\\K", "lines"}, "a\nb\\n\"c\"\n");
    ExpectOutput({"query", "HKCU\\K", "number"}, "42\n");
}

TEST_F(ToolTest, ListsAllBelowWithS) {
    Run({"add", "HKCU\\A\\B", "v", "1"});
    Run({"add", "HKCU\\A\\C"});
    ExpectOutput({"query", "HKCU", "-s"},
                 "HKCU\n\nHKCU\\A\n\nHKCU\\A\\B\n    v    REG_SZ    1\n\nHKCU\\A\\C\n");
}

TEST_F(ToolTest, DeletesAValueOrAKeyAndAsksFirst) {
    Run({"add", "HKCU\\K", "a", "1"});
    Run({"add", "HKCU\\K", "b", "2"});
    const Outcome refused = Run({"delete", "HKCU\\K", "-v", "a"}, "n\n");
    EXPECT_EQ(1, refused.status);
    EXPECT_EQ("Delete HKCU\\K, value \"a\"? [y/N] ", refused.out);
    EXPECT_EQ(1, Run({"delete", "HKCU\\K"}).status);
    EXPECT_EQ(0, Run({"delete", "HKCU\\K", "-v", "a"}, "y\n").status);
    ExpectError({"query", "HKCU\\K", "a"}, "HKCU\\K, value \"a\": there is no such key or value");
    ExpectOutput({"query", "HKCU\\K", "b"}, "2\n");
    ExpectOutput({"delete", "HKCU\\K", "-f"}, "");
    ExpectError({"query", "HKCU\\K"}, "HKCU\\K: there is no such key or value");
}

TEST_F(ToolTest, RefusesWhatItDoesNotUnderstand) {
    ExpectError({}, "no command given; see quarv-reg --help");
    ExpectError({"list"}, "\"list\" is no command; see quarv-reg --help");
    ExpectError({"query"}, "query needs a key");
    ExpectError({"query", "HKCR\\A"}, "\"HKCR\\A\" does not begin with HKLM or HKCU");
    ExpectError({"query", "HKCU\\A", "-d", "x"},
                "query takes no option \"-d\"; see quarv-reg --help");
    ExpectError({"query", "HKCU\\A", "-v"}, "the option -v needs a word behind it");
    ExpectError({"query", "HKCU\\A", "n", "m"}, "\"m\" is one word too many");
    ExpectError({"query", "HKCU\\A", "n", "-v", "m"}, "the name is given twice");
    ExpectError({"add", "HKCU\\A", "-v", "n"}, "add needs the value's data (-d)");
    ExpectError({"add", "HKCU\\A", "-t", "REG_DWORD", "-d", "4294967296"},
                "\"4294967296\" is no number of 32 bits");
    ExpectError({"add", "HKCU\\A", "-t", "REG_BINARY", "-d", "0"},
                "\"0\" is not pairs of hexadecimal digits");
    ExpectError({"add", "HKCU\\A", "-t", "REG_LINK", "-d", "0"},
                "\"REG_LINK\" is no type of a value");
    ExpectError({"delete", "HKCU", "-f"}, "HKCU itself cannot be deleted");
    ExpectError({"add", "HKCU\\\\A"}, "HKCU\\\\A: a key path must not begin with a backslash");
    EXPECT_FALSE(Exists(paths_.user));
}

TEST_F(ToolTest, SaysThatADamagedHiveWasSetAside) {
    PutFile(paths_.user, "rubbish\n");
    const Outcome outcome = Run({"add", "HKCU\\K", "v", "x"});
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("quarv-reg: " + paths_.user +
                  " is damaged (line 1: the file is no hive) and was set aside as " + paths_.user +
                  ".damaged-1\n",
              outcome.err);
}

TEST_F(ToolTest, KeepsMachineWideChangesForTheUserWhereTheHiveIsBlocked) {
    BlockMachineHive();
    ExpectOutput({"add", General, "ConnStr", "mine"}, "");
    ExpectOutput({"query", General, "ConnStr"}, "mine\n");
}

TEST_F(ToolTest, TellsHelpAndVersion) {
    const Outcome help = Run({"--help"});
    EXPECT_EQ(0, help.status);
    EXPECT_TRUE(help.out.contains("quarv-reg query"));
    EXPECT_TRUE(help.out.contains(paths_.overlay));
    EXPECT_EQ("", help.err);
    ExpectOutput({"--version"}, "quarv-reg " QUARV_VERSION "\n");
}

}  // namespace
}  // namespace quarv::registry
