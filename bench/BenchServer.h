// BenchServer: an embedded server started by hand on a temporary folder, for one bench. It ends
// with this object.
#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace quarv::bench {

class BenchServer {
  public:
    // Serves the sample database "mirel" to the account bench/bench. Ends the program with status 2
    // where it does not come up.
    BenchServer();
    ~BenchServer();

    int Port() const { return port_; }
    // Where it keeps its databases' files.
    QString DataFolder() const { return folder_.filePath(QStringLiteral("data")); }

  private:
    QTemporaryDir folder_;
    QProcess process_;
    int port_ = 0;
};

// What the program itself opens the sample database of a server on this port with.
QString ClientString(int port);

}  // namespace quarv::bench
