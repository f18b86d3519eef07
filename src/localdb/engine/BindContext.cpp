#include "localdb/engine/BindContext.h"

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TemporaryTables.h"
#include "localdb/engine/VariableTable.h"

namespace quarv::localdb::engine {

BindContext::BindContext(Store& store, const DatabaseList& databases, const DatabaseEntry& current,
                         const SystemObjects& system, const VariableTable& variables,
                         ParseCache& parsed)
    : store_(store),
      databases_(databases),
      current_(current),
      system_(system),
      variables_(variables),
      parsed_(parsed) {}

Metadata BindContext::MetadataFor(const tsql::ObjectName& name) {
    if (name.isVariable || TemporaryTables::IsTemporary(name.name, name.line)) {
        return Metadata(store_, DatabaseList::Temporary());
    }
    if (!name.server.isEmpty()) throw SqlError(40515, {name.ToText()}, name.line);
    if (name.database.isEmpty()) return CurrentMetadata();
    const std::optional<DatabaseEntry> entry = databases_.Find(name.database);
    if (!entry) throw SqlError(208, {name.ToText()}, name.line);
    return Metadata(store_, *entry);
}

const std::shared_ptr<TableInfo>& BindContext::TableVariable(const tsql::ObjectName& name) const {
    const std::shared_ptr<TableInfo>* table = variables_.FindTable(name.name);
    if (!table) throw SqlError(1087, {name.name}, name.line);
    return *table;
}

CommonInfo* BindContext::FindCommon(const QString& name) const {
    for (auto common = commons_.rbegin(); common != commons_.rend(); ++common) {
        if (SameName((*common)->name, name)) return common->get();
    }
    return nullptr;
}

BindContext::InView::InView(BindContext& context, const DatabaseEntry& database)
    : context_(context), before_(context.current_) {
    if (context.viewDepth_ == MaxViewDepth) {
        throw SqlError(217, {QString::number(MaxViewDepth)});
    }
    ++context.viewDepth_;
    context.current_ = database;
    commons_.swap(context.commons_);
}

BindContext::InView::~InView() {
    --context_.viewDepth_;
    context_.current_ = before_;
    commons_.swap(context_.commons_);
}

}  // namespace quarv::localdb::engine
