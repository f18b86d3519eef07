// TestServer: an engine over a temporary data directory, without the system's catalogue. Reopening
// it is what a restart of the program does.
#pragma once

#include <QTemporaryDir>

#include "RecordingSink.h"
#include "localdb/engine/Server.h"
#include "localdb/engine/SystemObjects.h"

namespace quarv::localdb::engine {

class NoObjects : public SystemObjects {
  public:
    const SystemView* FindView(const QString&, const QString&) const override { return nullptr; }
    const SystemProcedure* FindProcedure(const QString&) const override { return nullptr; }
    const std::vector<SystemView>& Views() const override { return views_; }

  private:
    std::vector<SystemView> views_;
};

class TestServer {
  public:
    TestServer() { Open(); }

    void Open() { server = Server::Open(Path(), std::make_unique<NoObjects>()); }
    void Close() { server.reset(); }
    QString Path() const { return directory_.path() + QStringLiteral("/data"); }

    std::unique_ptr<Session> NewSession() { return server->NewSession(QStringLiteral("tester")); }
    // A session in a new database of this name.
    std::unique_ptr<Session> NewDatabase(const QString& name);

    std::unique_ptr<Server> server;

  private:
    QTemporaryDir directory_;
};

// What the batch shows, line by line.
QStringList Lines(Session& session, const QString& batch);

}  // namespace quarv::localdb::engine
