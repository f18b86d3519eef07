#include "localdb/server/InstanceCommands.h"

#include <signal.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>

#include "localdb/server/DetachedProcess.h"
#include "localdb/server/Instance.h"
#include "localdb/server/ServeCommand.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

constexpr auto SampleInstance = "quarv";
constexpr auto InstanceUser = "quarv";
constexpr std::chrono::minutes IdleTime{10};
constexpr int LongestWaitMs = 60'000;
constexpr int PauseMs = 20;

// Calls `done` until it gives true. False where that takes too long.
template <typename Done>
bool WaitUntil(Done done) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > LongestWaitMs) return false;
        QThread::msleep(PauseMs);
    }
    return true;
}

void ServeInstance(const Instance& instance, const EngineAccess& engine,
                   const std::function<void()>& ready) {
    Log log(instance.LogFile());
    const QString user = QString::fromLatin1(InstanceUser);
    const QString secret = NewSecret();
    ServeJob job;
    job.dataDirectory = instance.DataDirectory();
    job.account = Account(user, secret);
    job.sample = instance.Name() == QLatin1String(SampleInstance);
    job.idleTime = IdleTime;
    const auto listening = [&](const ListenAddress& where) {
        instance.WriteState({QCoreApplication::applicationPid(), where.address.toString(),
                             where.port, user, secret});
        ready();
    };
    try {
        Serve(job, engine, log, listening, [&] { instance.RemoveState(); });
    } catch (const Error& error) {
        instance.RemoveState();
        log.Write(error.Description());
        throw;
    }
}

// With the lock in hand: this caller is the one that makes the process. The lock goes over to it.
void Launch(const Instance& instance, const EngineAccess& engine, UniqueFd lock) {
    instance.RemoveState();
    const QString failure = RunDetached(
        lock.Get(), LongestWaitMs,
        [&](const std::function<void()>& ready) { ServeInstance(instance, engine, ready); });
    if (!failure.isEmpty()) {
        throw ServerError(ServerError::InstanceNotStarted, instance.Name(), failure);
    }
}

QString Describe(const Instance& instance) {
    const auto state = instance.RunningState();
    QString text = QStringLiteral("name: %1\n").arg(instance.Name());
    if (state) {
        text += QStringLiteral("state: running\nprocess: %1\naddress: %2:%3\n")
                    .arg(QString::number(state->pid), state->address, QString::number(state->port));
    } else if (instance.Lock().IsHeld()) {
        // Nothing says where it serves: it is about to write that down, or someone damaged it.
        text += QStringLiteral("state: starting, or its state file is damaged\n");
    } else {
        text += QStringLiteral("state: stopped\n");
    }
    return text + QStringLiteral("databases: %1\n").arg(instance.DataDirectory());
}

}  // namespace

void StartInstance(const QString& name, const EngineAccess& engine) {
    const Instance instance = Instance::Named(name);
    const bool serving = WaitUntil([&] {
        instance.MakeDirectory();
        UniqueFd lock = instance.Lock().TryTake();
        if (lock) {
            Launch(instance, engine, std::move(lock));
            return true;
        }
        return instance.RunningState().has_value();
    });
    if (!serving) {
        throw ServerError(ServerError::InstanceNotStarted, instance.Name(),
                          QStringLiteral("another start of it does not come to an end"));
    }
}

void StopInstance(const QString& name) {
    const Instance instance = Instance::Named(name);
    if (!instance.Exists()) throw ServerError(ServerError::NoSuchInstance, instance.Name());
    // One that is starting is stopped as soon as it serves.
    std::optional<InstanceState> state;
    const auto known = [&] {
        state = instance.RunningState();
        return state || !instance.Lock().IsHeld();
    };
    if (!WaitUntil(known)) throw ServerError(ServerError::InstanceNotStopped, instance.Name());
    if (!state) return;
    (void)::kill(static_cast<pid_t>(state->pid), SIGTERM);
    if (!WaitUntil([&] { return !instance.Lock().IsHeld(); })) {
        throw ServerError(ServerError::InstanceNotStopped, instance.Name());
    }
}

QString DescribeInstances(const QString& name) {
    if (!name.isEmpty()) {
        const Instance instance = Instance::Named(name);
        if (!instance.Exists()) throw ServerError(ServerError::NoSuchInstance, instance.Name());
        return Describe(instance);
    }
    QStringList parts;
    for (const QString& each : Instance::All()) parts.append(Describe(Instance::Named(each)));
    return parts.join(u'\n');
}

void DeleteInstance(const QString& name) {
    const Instance instance = Instance::Named(name);
    if (!instance.Exists()) throw ServerError(ServerError::NoSuchInstance, instance.Name());
    const UniqueFd lock = instance.Lock().TryTake();
    if (!lock) throw ServerError(ServerError::InstanceRunning, instance.Name());
    if (!QDir(instance.Directory()).removeRecursively()) {
        throw ServerError(ServerError::InstanceFiles, instance.Directory(),
                          QStringLiteral("not everything could be removed"));
    }
}

}  // namespace quarv::localdb::server
