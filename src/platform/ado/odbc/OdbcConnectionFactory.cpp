#include "platform/ado/odbc/OdbcConnectionFactory.h"

#include "platform/ado/odbc/OdbcConnection.h"

namespace quarv::ado::odbc {

ConnectionFactory OdbcConnectionFactory(const QString& localServer) {
    return [localServer] { return std::make_shared<OdbcConnection>(localServer); };
}

}  // namespace quarv::ado::odbc
