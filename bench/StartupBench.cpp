// StartupBench: process start to first painted window, the program's dialog against an empty window
// of the same size, on an X display as a user has one: the one that the environment names, else a
// virtual one of its own. The programs have an empty home and end by themselves.
#include <spawn.h>
#include <sys/wait.h>

#include <QProcess>
#include <QTemporaryDir>
#include <cstdlib>
#include <optional>

#include "Ratio.h"

extern char** environ;

namespace {

using quarv::bench::Cost;

constexpr int Rounds = 21;
constexpr double Limit = 1.6;

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "StartupBench: %s\n", what);
    std::exit(2);
}

Cost Start(const char* program) {
    const auto start = std::chrono::steady_clock::now();
    char* arguments[] = {const_cast<char*>(program), nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, program, nullptr, nullptr, arguments, environ) != 0)
        Fail("cannot start the program");
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        Fail("the program did not paint a window");
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    return {quarv::bench::Seconds(usage), elapsed.count()};
}

// A virtual X server that lives as long as this object.
class VirtualDisplay {
  public:
    VirtualDisplay() {
        server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        server_.start(QStringLiteral("Xvfb"),
                      {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                       QStringLiteral("0"), QStringLiteral("1440x900x24")});
        QByteArray number;
        while (!number.contains('\n') && server_.waitForReadyRead(30000))
            number += server_.readLine();
        if (number.trimmed().isEmpty()) Fail("no X display, and no virtual one could be started");
        qputenv("DISPLAY", ':' + number.trimmed());
    }
    ~VirtualDisplay() {
        server_.terminate();
        server_.waitForFinished();
    }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

  private:
    QProcess server_;
};

}  // namespace

int main() {
    const QTemporaryDir home;
    if (!home.isValid()) Fail("no temporary folder");
    std::optional<VirtualDisplay> display;
    if (qEnvironmentVariableIsEmpty("DISPLAY")) display.emplace();
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", home.path().toUtf8());
    qputenv("LD_PRELOAD", FIRST_PAINT_LIBRARY);
    Start(EMPTY_WINDOW_PROGRAM);
    Start(QUARV_PROGRAM);
    std::vector<Cost> ours;
    std::vector<Cost> bare;
    for (int i = 0; i < Rounds; ++i) {
        bare.push_back(Start(EMPTY_WINDOW_PROGRAM));
        ours.push_back(Start(QUARV_PROGRAM));
    }
    return quarv::bench::Report("startup", Median(ours), Median(bare), Limit) ? 0 : 1;
}
