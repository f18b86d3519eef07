#include "platform/ado/odbc/OdbcSession.h"

#include "platform/ado/odbc/Diagnostics.h"
#include "platform/ado/odbc/OdbcCommand.h"

namespace quarv::ado::odbc {

OdbcSession::OdbcSession(EnvironmentHandle environment, ConnectionHandle connection)
    : environment_(std::move(environment)), connection_(std::move(connection)) {
    SQLUINTEGER extensions = 0;
    const SQLRETURN rc = SQLGetInfo(connection_.get(), SQL_GETDATA_EXTENSIONS, &extensions,
                                    sizeof extensions, nullptr);
    constexpr SQLUINTEGER needed = SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND;
    anyOrder_ = SQL_SUCCEEDED(rc) && (extensions & needed) == needed;
}

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
    if (closed_) return true;
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN rc = SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead,
                                           SQL_IS_UINTEGER, nullptr);
    return SQL_SUCCEEDED(rc) && dead == SQL_CD_TRUE;
}

DataError OdbcSession::StatementError(SQLHSTMT statement) const {
    const Diagnostics diagnostics(SQL_HANDLE_STMT, statement);
    return diagnostics.StatementError(IsDead());
}

void OdbcSession::Free() {
    if (const auto command = busy_.lock()) command->ReadAhead();
    busy_.reset();
}

}  // namespace quarv::ado::odbc
