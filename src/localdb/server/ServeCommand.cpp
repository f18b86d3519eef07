#include "localdb/server/ServeCommand.h"

#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QSysInfo>
#include <thread>

#include "localdb/server/FileLock.h"
#include "localdb/server/Listener.h"
#include "localdb/server/Sample.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

constexpr rlim_t WantedDescriptors = 8192;
constexpr qint64 LongestPassword = 1024;

sigset_t StopSignals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

// Before the first thread, so that every thread inherits it.
void HoldStopSignals() {
    const sigset_t set = StopSignals();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
}

// Waits for a stop signal on a thread of its own, where a handler's limits do not apply.
class SignalWatch {
  public:
    explicit SignalWatch(Listener& listener)
        : thread_([&listener] {
              const sigset_t set = StopSignals();
              int received = 0;
              ::sigwait(&set, &received);
              listener.Stop();
          }) {}
    ~SignalWatch() {
        ::pthread_kill(thread_.native_handle(), SIGTERM);
        thread_.join();
    }
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

  private:
    std::thread thread_;
};

void WantDescriptors() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= WantedDescriptors) return;
    limit.rlim_cur = std::min<rlim_t>(WantedDescriptors, limit.rlim_max);
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

void CheckDataDirectory(const QString& path) {
    if (!QDir().mkpath(path)) {
        throw ServerError(ServerError::DataDirectory, path, SystemText(errno));
    }
    if (::access(QFile::encodeName(path).constData(), R_OK | W_OK | X_OK) != 0) {
        throw ServerError(ServerError::DataDirectory, path, SystemText(errno));
    }
}

UniqueFd LockDataDirectory(const QString& path) {
    UniqueFd lock = FileLock(path + QStringLiteral("/.lock")).TryTake();
    if (!lock) throw ServerError(ServerError::DataDirectoryInUse, path);
    return lock;
}

}  // namespace

void Serve(const ServeJob& job, const EngineAccess& engine, Log& log,
           const std::function<void(const ListenAddress&)>& ready,
           const std::function<void()>& ending) {
    HoldStopSignals();
    WantDescriptors();
    CheckDataDirectory(job.dataDirectory);
    const UniqueFd lock = LockDataDirectory(job.dataDirectory);

    Settings settings;
    settings.account = job.account;
    settings.serverName = QSysInfo::machineHostName();
    settings.version = ParseVersion(engine.productVersion);
    settings.idleTime = job.idleTime;

    const auto server =
        job.sample ? OpenWithSample(engine, job.dataDirectory) : engine.open(job.dataDirectory);
    Listener listener(job.listen, settings, *server, log);
    const SignalWatch watch(listener);
    ready(listener.Where());
    log.Write(QStringLiteral("listening on ") + listener.Where().ToText());
    listener.Run(ending);
    log.Write(QStringLiteral("ended"));
}

QString ReadPasswordFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw ServerError(ServerError::PasswordFile, path, file.errorString());
    }
    QByteArray line = file.readLine(LongestPassword);
    while (line.endsWith('\n') || line.endsWith('\r')) line.chop(1);
    if (line.isEmpty()) {
        throw ServerError(ServerError::PasswordFile, path, QStringLiteral("it is empty"));
    }
    return QString::fromUtf8(line);
}

tds::ProgramVersion ParseVersion(const QString& text) {
    const QStringList parts = text.split(u'.');
    tds::ProgramVersion version;
    version.major = static_cast<uint8_t>(parts.value(0).toUInt());
    version.minor = static_cast<uint8_t>(parts.value(1).toUInt());
    version.build = static_cast<uint16_t>(parts.value(2).toUInt());
    return version;
}

}  // namespace quarv::localdb::server
