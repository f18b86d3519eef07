// SystemCatalog: all system views and procedures, found by name. The engine's server owns it.
#pragma once

#include <QHash>

#include "localdb/engine/SystemObjects.h"

namespace quarv::localdb::catalog {

class SystemCatalog : public engine::SystemObjects {
  public:
    SystemCatalog();

    // sysobjects and its like are found without a schema and as dbo's too. Raises SqlError 40517
    // for the views of the running server, sys.dm_..., which there are none of.
    const engine::SystemView* FindView(const QString& schema, const QString& name) const override;
    const engine::SystemProcedure* FindProcedure(const QString& name) const override;
    // By schema and name.
    const std::vector<engine::SystemView>& Views() const override { return views_; }

  private:
    void AddViews(std::vector<engine::SystemView> views);

    std::vector<engine::SystemView> views_;
    std::vector<engine::SystemProcedure> procedures_;
    QHash<QString, size_t> viewsByName_;
    QHash<QString, size_t> proceduresByName_;
};

// What the files of this folder bring.
std::vector<engine::SystemView> InformationSchemaViews();
std::vector<engine::SystemView> InformationConstraints();
std::vector<engine::SystemView> InformationDomains();
std::vector<engine::SystemView> SysViews();
std::vector<engine::SystemView> ColumnViews();
std::vector<engine::SystemView> ConstraintViews();
std::vector<engine::SystemView> TypeViews();
std::vector<engine::SystemView> ObjectViews();
std::vector<engine::SystemView> DatabaseViews();
std::vector<engine::SystemView> OldViews();
// A view of sys.columns' form over rows of the form of $q_columns.
engine::SystemView ColumnsOver(const char* name, const std::string& rows);
// Those that list the system's views, which are `known` and not these.
std::vector<engine::SystemView> AllViews(const std::vector<engine::SystemView>& known);
std::vector<engine::SystemProcedure> ServerProcedures();
std::vector<engine::SystemProcedure> StorageProcedures();
std::vector<engine::SystemProcedure> RightsProcedures();
std::vector<engine::SystemProcedure> TablesProcedures();
std::vector<engine::SystemProcedure> RoutinesProcedures();
std::vector<engine::SystemProcedure> ColumnsProcedures();
std::vector<engine::SystemProcedure> KeyProcedures();
std::vector<engine::SystemProcedure> ForeignKeyProcedures();
std::vector<engine::SystemProcedure> HelpProcedures();
std::vector<engine::SystemProcedure> TypesProcedures();

}  // namespace quarv::localdb::catalog
