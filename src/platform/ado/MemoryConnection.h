// MemoryConnection: a Connection that answers from a MemoryScript, for the tests of the floors
// above. It raises what a real connection raises, and records what was sent in the script.
#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/MemoryScript.h"

namespace quarv::ado {

class MemoryConnection : public Connection {
  public:
    // Never null; with no argument, a script of its own.
    explicit MemoryConnection(
        std::shared_ptr<MemoryScript> script = std::make_shared<MemoryScript>());
    ~MemoryConnection() override;

    MemoryScript& Script() { return *script_; }

    QString ConnectionString() const override { return connectionString_; }
    void SetConnectionString(const QString& text) override;
    // User and password are accepted and not checked.
    void Open(const QString& connectionString = {}, const QString& user = {},
              const QString& password = {}, int options = -1) override;
    ObjectState State() const override { return open_ ? adStateOpen : adStateClosed; }
    void Close() override;
    RecordsetPtr Execute(const QString& sql, int options = -1) override;
    RecordsetPtr OpenSchema(Schema schema, const TableName& table) override;
    int ConnectionTimeout() const override { return connectionTimeout_; }
    void SetConnectionTimeout(int seconds) override { connectionTimeout_ = seconds; }
    int CommandTimeout() const override { return commandTimeout_; }
    void SetCommandTimeout(int seconds) override { commandTimeout_ = seconds; }

  private:
    void RequireOpen() const;

    std::shared_ptr<MemoryScript> script_;
    // Record sets of this connection watch it: reset by Close.
    std::shared_ptr<bool> open_;
    QString connectionString_;
    int connectionTimeout_ = 15;
    int commandTimeout_ = 30;
};

}  // namespace quarv::ado
