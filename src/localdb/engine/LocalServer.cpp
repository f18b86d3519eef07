#include "localdb/engine/LocalServer.h"

#include <QSysInfo>

#include "localdb/engine/LocalSession.h"

namespace quarv::localdb::engine {

namespace {

constexpr int FirstSession = 51;  // lower numbers are the server's own

}  // namespace

QString Server::ProductVersion() {
    return QStringLiteral("16.00.1000");
}

QString Server::VersionText() {
    return QStringLiteral("SQL Server 2022 (Quarv local server " QUARV_VERSION ") - ") +
           ProductVersion();
}

QString Server::Name() {
    const QString name = QSysInfo::machineHostName();
    return name.isEmpty() ? QStringLiteral("localhost") : name;
}

std::unique_ptr<Server> Server::Open(const QString& dataDirectory,
                                     std::unique_ptr<const SystemObjects> objects) {
    return std::make_unique<LocalServer>(dataDirectory, std::move(objects));
}

LocalServer::LocalServer(const QString& dataDirectory, std::unique_ptr<const SystemObjects> objects)
    : objects_(std::move(objects)), databases_(dataDirectory), nextSession_(FirstSession) {}

std::unique_ptr<Session> LocalServer::NewSession(const QString& login) {
    return std::make_unique<LocalSession>(databases_, *objects_, login, nextSession_++);
}

bool LocalServer::HasDatabase(const QString& name) const {
    return databases_.Find(name).has_value();
}

}  // namespace quarv::localdb::engine
