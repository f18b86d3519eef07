#include "platform/ado/odbc/OdbcSession.h"

#include <QByteArray>
#include <array>

#include "platform/ado/odbc/Diagnostics.h"
#include "platform/ado/odbc/OdbcCommand.h"

namespace quarv::ado::odbc {

namespace {

// The driver for SQL Server: it reads in any order but does not say so, and tells how severe an
// error is where others tell its state.
bool IsKnownDriver(SQLHDBC connection) {
    std::array<SQLCHAR, 256> name{};
    const SQLRETURN rc = SQLGetInfo(connection, SQL_DRIVER_NAME, name.data(), name.size(), nullptr);
    return SQL_SUCCEEDED(rc) &&
           QByteArray(reinterpret_cast<const char*>(name.data())).startsWith("libtdsodbc.so");
}

bool SaysItReadsInAnyOrder(SQLHDBC connection) {
    SQLUINTEGER extensions = 0;
    const SQLRETURN rc =
        SQLGetInfo(connection, SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
    constexpr SQLUINTEGER needed = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER;
    return SQL_SUCCEEDED(rc) && (extensions & needed) == needed;
}

}  // namespace

OdbcSession::OdbcSession(EnvironmentHandle environment, ConnectionHandle connection)
    : environment_(std::move(environment)),
      connection_(std::move(connection)),
      knownDriver_(IsKnownDriver(connection_.get())),
      anyOrder_(knownDriver_ || SaysItReadsInAnyOrder(connection_.get())) {}

OdbcSession::~OdbcSession() {
    Close();
}

void OdbcSession::Close() {
    if (closed_) return;
    closed_ = true;
    if (const auto command = busy_.lock()) command->Abandon();
    SQLDisconnect(connection_.get());
    connection_.Reset();
    environment_.Reset();
}

bool OdbcSession::IsDead() const {
    if (closed_ || endSaid_) return true;
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN rc = SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead,
                                           SQL_IS_UINTEGER, nullptr);
    return SQL_SUCCEEDED(rc) && dead == SQL_CD_TRUE;
}

DataError OdbcSession::StatementError(SQLHSTMT statement) {
    const Diagnostics diagnostics(SQL_HANDLE_STMT, statement);
    endSaid_ = endSaid_ || (knownDriver_ && diagnostics.EndsSession());
    return diagnostics.StatementError(IsDead());
}

void OdbcSession::Free() {
    if (const auto command = busy_.lock()) command->ReadAhead();
    busy_.reset();
}

}  // namespace quarv::ado::odbc
