// OdbcSession: an open connection's handles, shared by the connection and every command that still
// has results; the last of them ends it. It knows which command holds the connection busy.
#pragma once

#include <memory>

#include "base/DataError.h"
#include "platform/ado/odbc/Handle.h"

namespace quarv::ado::odbc {

class OdbcCommand;

class OdbcSession {
  public:
    // Takes over a connection that is open.
    OdbcSession(EnvironmentHandle environment, ConnectionHandle connection);
    ~OdbcSession();
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;

    SQLHDBC Handle() const { return connection_.get(); }
    // Ends every command and the connection; what record sets still hold is closed.
    void Close();
    bool IsClosed() const { return closed_; }
    // The server or the way to it is gone, or the server has said that it ends the session.
    bool IsDead() const;
    // SQLGetData takes columns in any order, those before the last bound one included.
    bool ReadsInAnyOrder() const { return anyOrder_; }
    // The error of the last call on `statement`.
    DataError StatementError(SQLHSTMT statement);
    // The session is dead and an error has said why.
    bool IsDeadAsSaid() const { return endSaid_; }

    // Reads the busy command's remaining results into memory, so that another command can run.
    void Free();
    void SetBusy(const std::shared_ptr<OdbcCommand>& command) { busy_ = command; }

  private:
    EnvironmentHandle environment_;
    ConnectionHandle connection_;
    bool knownDriver_;
    bool anyOrder_;
    bool closed_ = false;
    bool endSaid_ = false;  // the server has said why it ends the session
    std::weak_ptr<OdbcCommand> busy_;
};

}  // namespace quarv::ado::odbc
