// Connection: one connection to a data source, opened from an OLE DB connection string. Interface
// only: platform/ado/odbc implements it over a driver, MemoryConnection for tests.
#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "base/Object.h"
#include "platform/ado/Recordset.h"
#include "platform/ado/Schema.h"

namespace quarv::ado {

class Connection : public Object {
  public:
    virtual QString ConnectionString() const = 0;
    // Raises 3705 while open.
    virtual void SetConnectionString(const QString& text) = 0;

    // Opens the data source; non-empty arguments stand in for what the string says. `options` is
    // accepted for its callers' sake (-1: unspecified). Raises DataError within the timeout.
    virtual void Open(const QString& connectionString = {}, const QString& user = {},
                      const QString& password = {}, int options = -1) = 0;
    // A connection that was found lost is closed: it may be opened again, what else is asked of it
    // raises the loss. Nothing is sent to find out, so a loss shows only once something was asked.
    virtual ObjectState State() const = 0;
    // Raises 3704 where never opened or already closed; not for a lost one. Record sets of this
    // connection end.
    virtual void Close() = 0;

    // Runs `sql`; its first result, closed where that has no rows. An empty text succeeds with a
    // closed record set and sends nothing. Rows still pending on an earlier record set of this
    // connection are read into memory first. Raises DataError.
    virtual RecordsetPtr Execute(const QString& sql, int options = -1) = 0;
    // The rowset. PrimaryKeys and Indexes must be of a table. Tables may be restricted to a name:
    // rows of other tables, whose names are like it, may then be among them. The schema's name
    // counts only where a table is needed, `table` not at all for the rest. Raises DataError.
    virtual RecordsetPtr OpenSchema(Schema schema, const TableName& table = {}) = 0;

    // Seconds to wait for a connection to open (default 15; 0: for ever).
    virtual int ConnectionTimeout() const = 0;
    virtual void SetConnectionTimeout(int seconds) = 0;
    // Seconds to wait for a command (default 30; 0: for ever); counts for later commands.
    virtual int CommandTimeout() const = 0;
    virtual void SetCommandTimeout(int seconds) = 0;
};

using ConnectionPtr = std::shared_ptr<Connection>;

// Makes a new, closed connection. Handed down from the program's start, so that nothing above
// platform/ado names a driver.
using ConnectionFactory = std::function<ConnectionPtr()>;

}  // namespace quarv::ado
