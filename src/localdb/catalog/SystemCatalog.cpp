#include "localdb/catalog/SystemCatalog.h"

#include "localdb/catalog/OpenServer.h"

namespace quarv::localdb::catalog {

namespace {

QString ViewKey(const QString& schema, const QString& name) {
    return schema.toCaseFolded() + u'.' + name.toCaseFolded();
}

}  // namespace

SystemCatalog::SystemCatalog() : views_(InformationSchemaViews()) {
    for (auto* list :
         {ServerProcedures, TablesProcedures, ColumnsProcedures, KeyProcedures, HelpProcedures}) {
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

const engine::SystemView* SystemCatalog::FindView(const QString& schema,
                                                  const QString& name) const {
    if (schema.isEmpty()) return nullptr;
    const auto found = viewsByName_.constFind(ViewKey(schema, name));
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
