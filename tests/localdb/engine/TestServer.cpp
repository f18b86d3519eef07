#include "TestServer.h"

namespace quarv::localdb::engine {

std::unique_ptr<Session> TestServer::NewDatabase(const QString& name) {
    std::unique_ptr<Session> session = NewSession();
    Lines(*session, QStringLiteral("CREATE DATABASE [%1]").arg(name));
    session->UseDatabase(name);
    return session;
}

QStringList Lines(Session& session, const QString& batch) {
    RecordingSink sink;
    session.RunBatch(batch, sink);
    return sink.lines;
}

}  // namespace quarv::localdb::engine
