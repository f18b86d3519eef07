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

    QString ConnectionString() const;

  private:
    QTemporaryDir home_;
    QProcess process_;
    QString port_;
};

}  // namespace quarv::test
