// TargetPath: the way from the name that a statement changes to the table behind it: through views,
// tables of WITH and derived tables, each a query over one source. Binds nothing; owns the views'
// trees.
#pragma once

#include <optional>

#include "localdb/engine/BindContext.h"
#include "localdb/tsql/Query.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::engine {

struct TargetLayer {
    QString name;  // as messages call it
    const tsql::Query* query = nullptr;
    const std::vector<QString>* columns = nullptr;  // the names given to its columns, or none
    std::optional<DatabaseEntry> database;          // of a view: whose names its query means
    bool checkOption = false;                       // of a view: WITH CHECK OPTION

    const tsql::TableSource& Source() const { return *query->from.front(); }
};

class TargetPath {
  public:
    // `with` are the statement's tables of WITH; `verb` is INSERT, UPDATE or DELETE. Raises
    // SqlError 217, 4405, 4406, 4426 and 40517 for what leads to no single table.
    TargetPath(const tsql::TableSource& source, const tsql::WithClause& with, BindContext& context,
               const QString& verb);

    // The outermost first; none where a table itself is named.
    const std::vector<TargetLayer>& Layers() const { return layers_; }
    // With its database where a view of another one leads to it.
    const tsql::ObjectName& Table() const { return table_; }

  private:
    const tsql::TableSource* Step(const tsql::TableSource& source, const tsql::WithClause& with,
                                  BindContext& context);
    bool TakeCommon(const tsql::NamedTable& table, const tsql::WithClause& with);
    bool TakeView(const tsql::NamedTable& table, BindContext& context);
    void CheckQuery(const TargetLayer& layer, const QString& verb) const;

    std::vector<TargetLayer> layers_;
    std::vector<tsql::StatementList> views_;
    tsql::ObjectName table_;
    std::optional<DatabaseEntry> database_;  // of the view that was entered last
};

}  // namespace quarv::localdb::engine
