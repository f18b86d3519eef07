#include "localdb/catalog/SystemCatalog.h"

#include <algorithm>
#include <iterator>

#include "localdb/catalog/OpenServer.h"
#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::catalog {

namespace {

QString ViewKey(const QString& schema, const QString& name) {
    return schema.toCaseFolded() + u'.' + name.toCaseFolded();
}

}  // namespace

SystemCatalog::SystemCatalog() : views_(InformationSchemaViews()) {
    for (auto* list : {InformationConstraints, InformationDomains, SysViews, ColumnViews,
                       ConstraintViews, TypeViews, ObjectViews, DatabaseViews, OldViews})
        AddViews(list());
    AddViews(AllViews(views_));
    std::sort(views_.begin(), views_.end(), [](const auto& a, const auto& b) {
        return ViewKey(a.schema, a.name) < ViewKey(b.schema, b.name);
    });
    for (auto* list : {StorageProcedures, RightsProcedures, ServerProcedures, TablesProcedures,
                       RoutinesProcedures, ColumnsProcedures, KeyProcedures, ForeignKeyProcedures,
                       HelpProcedures, TypesProcedures}) {
        for (engine::SystemProcedure& procedure : list()) {
            procedures_.push_back(std::move(procedure));
        }
    }
    for (size_t i = 0; i < views_.size(); ++i) {
        viewsByName_.insert(ViewKey(views_[i].schema, views_[i].name), i);
    }
    for (size_t i = 0; i < procedures_.size(); ++i) {
        proceduresByName_.insert(procedures_[i].name.toCaseFolded(), i);
    }
}

void SystemCatalog::AddViews(std::vector<engine::SystemView> views) {
    std::move(views.begin(), views.end(), std::back_inserter(views_));
}

const engine::SystemView* SystemCatalog::FindView(const QString& schema,
                                                  const QString& name) const {
    // What older programs ask for as dbo's; the other views need their schema.
    const bool old = name.startsWith(u"sys", Qt::CaseInsensitive) &&
                     (schema.isEmpty() || engine::SameName(schema, QStringLiteral("dbo")));
    if (schema.isEmpty() && !old) return nullptr;
    // How the server runs is no part of a database's catalogue, and not kept.
    if (engine::SameName(schema, QStringLiteral("sys")) &&
        name.startsWith(u"dm_", Qt::CaseInsensitive)) {
        throw engine::SqlError(40517, {QStringLiteral("sys.") + name});
    }
    const auto found = viewsByName_.constFind(ViewKey(old ? QStringLiteral("sys") : schema, name));
    return found != viewsByName_.constEnd() ? &views_[*found] : nullptr;
}

const engine::SystemProcedure* SystemCatalog::FindProcedure(const QString& name) const {
    const auto found = proceduresByName_.constFind(name.toCaseFolded());
    return found != proceduresByName_.constEnd() ? &procedures_[*found] : nullptr;
}

std::unique_ptr<engine::Server> OpenServer(const QString& dataDirectory) {
    return engine::Server::Open(dataDirectory, std::make_unique<SystemCatalog>());
}

}  // namespace quarv::localdb::catalog
