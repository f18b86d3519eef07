// RunningProgram: quarv-localdb itself, serving a data folder on a port of its own for the account
// tester/right, until this object ends it.
#pragma once

#include <gtest/gtest.h>
#include <signal.h>

#include <QProcess>

#include "Files.h"
#include "support/EndWithUs.h"

namespace quarv::localdb::server {

class RunningProgram {
  public:
    // `home` holds its data and the file with the secret. `options` go behind those.
    explicit RunningProgram(const QString& home, const QStringList& options = {}) {
        const QString secret = home + QStringLiteral("/password");
        WriteFile(secret, "right\n");
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        EndWithUs(process_);
        process_.start(
            QStringLiteral(LOCALDB_PROGRAM),
            QStringList{QStringLiteral("serve"), QStringLiteral("--data"),
                        home + QStringLiteral("/data"), QStringLiteral("--listen"),
                        QStringLiteral("127.0.0.1:0"), QStringLiteral("--login"),
                        QStringLiteral("tester"), QStringLiteral("--password-file"), secret} +
                options);
        while (!process_.canReadLine() && process_.waitForReadyRead(PatienceMs)) {
        }
        const QByteArray line = process_.readLine().trimmed();
        port_ = line.mid(line.lastIndexOf(':') + 1).toUShort();
    }
    ~RunningProgram() { Kill(); }

    // 0 where it does not serve.
    uint16_t Port() const { return port_; }
    pid_t Pid() const { return static_cast<pid_t>(process_.processId()); }

    // The exit status after a friendly end.
    int Stop() {
        process_.terminate();
        EXPECT_TRUE(process_.waitForFinished(PatienceMs));
        return process_.exitCode();
    }
    void Kill() {
        if (process_.state() == QProcess::NotRunning) return;
        process_.kill();
        process_.waitForFinished(PatienceMs);
    }

  private:
    static constexpr int PatienceMs = 60'000;

    QProcess process_;
    uint16_t port_ = 0;
};

}  // namespace quarv::localdb::server
