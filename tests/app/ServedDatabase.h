// ServedDatabase: tests of the main window on a database of their own, which a real local server
// serves behind a proxy that records what it is asked. The server is started once for all of them.
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "app/ServedWindow.h"
#include "platform/ado/odbc/EmbeddedServer.h"
#include "platform/ado/odbc/RecordingProxy.h"

namespace quarv::test {

class ServedDatabase : public testing::Test {
  protected:
    static void SetUpTestSuite();
    static void TearDownTestSuite() { server.reset(); }

    ServedDatabase();

    // Over a connection of its own, past the proxy.
    void Run(const QString& sql);
    // The rows of the statement's result, their cells joined by "|"; nothing stands for null.
    QStringList Ask(const QString& sql);
    // The main window; what the statements make before is in its tree. What it sends until it is
    // there is put by, and the proxy forgets it.
    ServedWindow& Show(const QStringList& statements = {}, int commandTimeout = 30);

    static std::unique_ptr<EmbeddedServer> server;
    ado::ConnectionPtr direct;
    RecordingProxy proxy{server->Port()};
    QByteArray openedWith;
    std::optional<ServedWindow> served;
};

}  // namespace quarv::test
