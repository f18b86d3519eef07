#include "platform/ado/Conformance.h"
#include "platform/ado/odbc/EmbeddedServer.h"
#include "platform/ado/odbc/OdbcConnectionFactory.h"

namespace quarv::test {

namespace {

ado::ConnectionPtr OpenOdbc(const QString& connectionString) {
    const ado::ConnectionPtr connection = ado::odbc::OdbcConnectionFactory()();
    connection->Open(connectionString);
    return connection;
}

}  // namespace

// The local server always, and any server whose connection string QUARV_TEST_SERVER holds. The
// suite makes and drops a table in the database it is sent to.
std::vector<Backend> Backends() {
    std::vector<Backend> backends;
    backends.push_back({"Embedded", [] {
                            static const EmbeddedServer server;
                            return OpenOdbc(server.ConnectionString());
                        }});
    const QString other = qEnvironmentVariable("QUARV_TEST_SERVER");
    if (!other.isEmpty()) backends.push_back({"Named", [other] { return OpenOdbc(other); }});
    return backends;
}

}  // namespace quarv::test
