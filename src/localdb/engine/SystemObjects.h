// SystemObjects: the system's own views and procedures, which every database has. The engine knows
// this interface only; localdb/catalog brings them.
#pragma once

#include <QString>
#include <functional>
#include <string>
#include <vector>

#include "localdb/engine/ResultSink.h"
#include "localdb/engine/SqlValue.h"

namespace quarv::localdb::engine {

class DatabaseList;
class SystemCall;
struct DatabaseEntry;

// A view over the catalogue: `sql` is storage SQL with one result column for each of `columns`, in
// their storage forms. In it "$" stands for the prefix of the database's tables, ":db" for its name
// and ":databases" for the rows of all databases: column1 is the id, then name and creation.
struct SystemView {
    QString schema;
    QString name;
    std::vector<Column> columns;
    std::string sql;
};

struct SystemParameter {
    QString name;  // with its "@"
    SqlType type;
    bool required = false;  // else null where the caller leaves it out
};

// Its parameters are bound by name or position and converted before `run` is called.
struct SystemProcedure {
    QString name;
    std::vector<SystemParameter> parameters;
    std::function<int(SystemCall&)> run;  // gives the return status; raises SqlError
};

// Puts in what "$", ":db" and ":databases" stand for. `prefix` is the storage's for `database`.
std::string FillInDatabase(const std::string& sql, const std::string& prefix,
                           const DatabaseEntry& database, const DatabaseList& databases);

class SystemObjects {
  public:
    virtual ~SystemObjects() = default;

    // Nothing where there is none; names in any letter case.
    virtual const SystemView* FindView(const QString& schema, const QString& name) const = 0;
    virtual const SystemProcedure* FindProcedure(const QString& name) const = 0;
    virtual const std::vector<SystemView>& Views() const = 0;
};

}  // namespace quarv::localdb::engine
