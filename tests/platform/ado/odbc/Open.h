// Opens connections to fake servers.
#pragma once

#include "platform/ado/ErrorOf.h"
#include "platform/ado/odbc/FakeServer.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv::test {

inline ado::ConnectionPtr Open(const FakeServer& server, const QString& more = {}) {
    const ado::ConnectionPtr connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(server.ConnectionString(more));
    return connection;
}

}  // namespace quarv::test
