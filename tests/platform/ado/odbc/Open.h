// Opens connections to fake servers, and names the numbers that tests expect.
#pragma once

#include <gtest/gtest.h>

#include "base/DataError.h"
#include "base/Printers.h"
#include "platform/ado/odbc/FakeServer.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv::test {

inline ado::ConnectionPtr Open(const FakeServer& server, const QString& more = {}) {
    const ado::ConnectionPtr connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(server.ConnectionString(more));
    return connection;
}

// The DataError that `action` raises; a failure of the test where it raises none.
template <class Action>
DataError ErrorOf(Action action) {
    try {
        action();
    } catch (const DataError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing was raised";
    return DataError(0, QStringLiteral("nothing was raised"));
}

}  // namespace quarv::test
