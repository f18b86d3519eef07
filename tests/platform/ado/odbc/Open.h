// Opens connections to fake servers, or shows why they cannot be opened.
#pragma once

#include "platform/ado/ErrorOf.h"
#include "platform/ado/odbc/FakeServer.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv::test {

inline ado::ConnectionPtr Open(const QString& connectionString) {
    const ado::ConnectionPtr connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(connectionString);
    return connection;
}

inline ado::ConnectionPtr Open(const FakeServer& server, const QString& more = {}) {
    return Open(server.ConnectionString(more));
}

inline DataError OpenError(const QString& connectionString) {
    const ado::ConnectionPtr connection = ado::odbc::OdbcConnectionFactory()();
    const DataError error = ErrorOf([&] { connection->Open(connectionString); });
    EXPECT_EQ(connection->State(), ado::adStateClosed);
    return error;
}

}  // namespace quarv::test
