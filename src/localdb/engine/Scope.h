// Scope: the row sources that a query's names can mean, and those of the queries around it.
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "localdb/engine/BoundNodes.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

struct SourceColumn {
    QString name;
    SqlType type;
    bool nullable = true;
    bool identity = false;
    std::string sql;  // "s1.c2"
    CollationId collation = CollationId::Server;
    // Of a computed column that has no place in the storage: what it stands for.
    std::shared_ptr<const BoundExpression> computed = nullptr;

    std::unique_ptr<BoundColumn> Bind() const;
};

struct Source {
    QString name;    // the alias, else the table's name
    QString schema;  // empty behind an alias
    std::vector<SourceColumn> columns;
    int64_t objectId = 0;  // of a table, else 0
    std::string storageAlias;
};

class Scope {
  public:
    explicit Scope(const Scope* outer = nullptr) : outer_(outer) {}

    // Raises SqlError 1011 or 1013 where the name is taken.
    void Add(Source source, bool isAlias);
    const std::vector<Source>& Sources() const { return sources_; }
    // The sources from `begin` on alone, inside the same outer queries.
    Scope From(size_t begin) const;
    // The sources from `begin` up to `end` may be missing from a row: the far side of an outer
    // join.
    void MakeNullable(size_t begin, size_t end);

    // A column by its name as written. Raises SqlError 207, 209 or 4104.
    std::unique_ptr<BoundColumn> Resolve(const tsql::ObjectName& name) const;
    // The source that "name.*" means. Raises SqlError 107.
    const Source& Find(const tsql::ObjectName& qualifier) const;
    bool IsEmpty() const { return sources_.empty(); }

  private:
    static bool Matches(const Source& source, const tsql::ObjectName& name);
    std::unique_ptr<BoundColumn> TryResolve(const tsql::ObjectName& name) const;
    bool KnowsSource(const tsql::ObjectName& name) const;

    const Scope* outer_;
    std::vector<Source> sources_;
};

}  // namespace quarv::localdb::engine
