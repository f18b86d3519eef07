// OdbcConnection: a Connection over the ODBC driver manager. It reads the OLE DB string, finds the
// server, logs in and runs commands, one at a time on its one session.
#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/ConnectionSettings.h"

namespace quarv::ado::odbc {

class OdbcSession;

class OdbcConnection : public Connection {
  public:
    // `localServer`: the local server's program, as LocalInstance takes it.
    explicit OdbcConnection(QString localServer);
    ~OdbcConnection() override;

    QString ConnectionString() const override { return connectionString_; }
    void SetConnectionString(const QString& text) override;
    void Open(const QString& connectionString, const QString& user, const QString& password,
              int options) override;
    ObjectState State() const override;
    void Close() override;
    RecordsetPtr Execute(const QString& sql, int options) override;
    RecordsetPtr OpenSchema(Schema schema, const TableName& table) override;
    int ConnectionTimeout() const override { return connectionTimeout_; }
    void SetConnectionTimeout(int seconds) override;
    int CommandTimeout() const override { return commandTimeout_; }
    void SetCommandTimeout(int seconds) override;

  private:
    void RequireOpen() const;
    void RequireClosed() const;

    QString localServer_;
    QString connectionString_;
    int connectionTimeout_ = 15;
    int commandTimeout_ = 30;
    // Record sets that still have results share it, and outlive this connection with it.
    std::shared_ptr<OdbcSession> session_;
};

}  // namespace quarv::ado::odbc
