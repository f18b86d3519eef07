// Catalog, Table, Index: the tables of a database with their indexes, as an open connection's
// schema rowsets tell them. The caller owns the catalogue, which keeps its connection alive.
// Nothing is asked of the server before it is read here, and then of the one table only.
#pragma once

#include <optional>
#include <vector>

#include "platform/ado/Connection.h"

namespace quarv::ado {

struct Index {
    QString Name;
    bool PrimaryKey = false;
    QStringList Columns;  // names in the index's order
};

// One table or view, valid as long as anyone holds it.
class Table {
  public:
    Table(ConnectionPtr connection, TableName name)
        : connection_(std::move(connection)), name_(std::move(name)) {}

    const QString& Name() const { return name_.name; }
    // Read from the server once, when first asked for; in the server's order. Raises DataError.
    const std::vector<Index>& Indexes();

  private:
    ConnectionPtr connection_;
    TableName name_;
    std::optional<std::vector<Index>> indexes_;
};

class Catalog {
  public:
    // None at first.
    ConnectionPtr ActiveConnection() const { return connection_; }
    void SetActiveConnection(ConnectionPtr connection) { connection_ = std::move(connection); }

    // The table or view of that name, in any letter case. Of several the one in the schema "dbo",
    // which a bare name means to the server, otherwise the first. Raises DataError 3265 where there
    // is none, 3709 without a connection, and what the connection raises.
    Table Tables(const QString& name) const;

  private:
    ConnectionPtr connection_;
};

using CatalogPtr = std::shared_ptr<Catalog>;

}  // namespace quarv::ado
