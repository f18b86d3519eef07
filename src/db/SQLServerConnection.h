// SQLServerConnection: the one connection through which every window talks to the database server,
// with the catalogue queries and the two quoting rules. Owned by the window that opens a database.
// It caches nothing; each record set that it gives belongs to the caller.
//
// What the data layer raises passes through every member unchanged.
#pragma once

#include <QString>

#include "db/ConnectionInfo.h"
#include "platform/ado/Catalog.h"

namespace quarv {

class SQLServerConnection {
  public:
    // The factory makes the connections that InitOpen opens.
    explicit SQLServerConnection(ado::ConnectionFactory factory);

    // Opens the database on a new connection, which takes the place of the earlier one, and gives
    // true. Where opening fails, the new string and the new, closed connection stay.
    bool InitOpen(const QString& ConnStr);
    // The connection itself; before InitOpen a new, closed one. Shared with this object.
    ado::ConnectionPtr ADOConn();

    // One line that names server and database.
    QString Description() const { return info_.Description(); }
    // The string as the model rebuilds it.
    QString GetConnectionString() const { return info_.ConnectionString(); }

    ado::RecordsetPtr GetTableList();
    ado::RecordsetPtr GetSprocList();
    ado::RecordsetPtr OpenQuery(const QString& SQL);
    // The columns of every table of that name in the database, whatever its schema.
    ado::RecordsetPtr GetTableInfo(const QString& Tbl);
    ado::RecordsetPtr GetIndexInfo(const QString& Tbl);
    ado::RecordsetPtr GetSprocInfo(const QString& Sproc);
    ado::RecordsetPtr GetObjectInfo(const QString& Sproc);

    // New, over the connection itself.
    ado::CatalogPtr GetCatalog();

    // The name in brackets.
    static QString o(const QString& ObjectName);
    // The text as a literal in single quotes.
    static QString SQLString(const QString& text);

  private:
    ado::ConnectionFactory factory_;
    ado::ConnectionPtr connection_;  // null until first used
    ConnectionInfo info_;
};

}  // namespace quarv
