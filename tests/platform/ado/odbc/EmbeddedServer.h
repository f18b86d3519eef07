// EmbeddedServer: a local server of this tree, run as a program of its own on a free loopback port
// with its data in a folder of its own, for as long as the object lives.
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace quarv::test {

class EmbeddedServer {
  public:
    // Fails the program's run where the server does not come up.
    EmbeddedServer();
    ~EmbeddedServer();

    int Port() const { return port_; }
    QString ConnectionString() const { return ConnectionStringTo(port_); }
    // For this server behind a port that leads to it.
    static QString ConnectionStringTo(int port);

  private:
    QTemporaryDir home_;
    QProcess process_;
    int port_ = 0;
};

}  // namespace quarv::test
