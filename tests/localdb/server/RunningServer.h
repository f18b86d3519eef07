// RunningServer: a listener on a loopback port of its own, with the fake engine behind it, for the
// length of a test.
#pragma once

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>
#include <functional>
#include <thread>

#include "FakeEngine.h"
#include "TestClient.h"
#include "localdb/server/Listener.h"

namespace quarv::localdb::server {

inline Settings TestSettings() {
    Settings settings;
    settings.account = Account(QStringLiteral("tester"), QStringLiteral("right"));
    settings.serverName = QStringLiteral("here");
    settings.version = {16, 0, 1000};
    return settings;
}

class RunningServer {
  public:
    explicit RunningServer(Settings settings = TestSettings())
        : settings_(std::move(settings)),
          log_(directory_.filePath(QStringLiteral("log"))),
          listener_(ListenAddress{}, settings_, engine_, log_),
          thread_([this] { listener_.Run(); }) {}
    ~RunningServer() { Stop(); }

    void Stop() {
        listener_.Stop();
        if (thread_.joinable()) thread_.join();
    }
    // Returns when the server has ended by itself.
    void Join() { thread_.join(); }

    uint16_t Port() const { return listener_.Where().port; }
    FakeEngine& Engine() { return engine_; }
    QString LogText() const {
        QFile file(directory_.filePath(QStringLiteral("log")));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

  private:
    QTemporaryDir directory_;
    Settings settings_;
    FakeEngine engine_;
    Log log_;
    Listener listener_;
    std::thread thread_;
};

// Waits until `done` gives true, ten seconds at most.
inline bool Eventually(const std::function<bool()>& done) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > 10'000) return false;
        QThread::yieldCurrentThread();
    }
    return true;
}

}  // namespace quarv::localdb::server
