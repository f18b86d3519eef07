#include "localdb/engine/TargetPath.h"

#include "localdb/engine/SqlError.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/CreateView.h"

namespace quarv::localdb::engine {

TargetPath::TargetPath(const tsql::TableSource& source, const tsql::WithClause& with,
                       BindContext& context, const QString& verb) {
    const tsql::TableSource* at = &source;
    const tsql::WithClause* known = &with;
    while ((at = Step(*at, *known, context))) {
        if (layers_.size() > BindContext::MaxViewDepth) {
            throw SqlError(217, {QString::number(BindContext::MaxViewDepth)});
        }
        const TargetLayer& layer = layers_.back();
        CheckQuery(layer, verb);
        // A view's own tables of WITH; those of the statement are known to derived tables, too.
        if (layer.database) known = &layer.query->with;
    }
}

// The source of the query that the name stands for; nothing at the table.
const tsql::TableSource* TargetPath::Step(const tsql::TableSource& source,
                                          const tsql::WithClause& with, BindContext& context) {
    if (source.kind == tsql::TableSourceKind::Derived) {
        const auto& derived = static_cast<const tsql::DerivedTable&>(source);
        if (!derived.query) {
            throw SqlError(40517, {QStringLiteral("changing rows that are no table's")},
                           source.line);
        }
        layers_.push_back({derived.alias, derived.query.get(), &derived.columns, {}, false});
    } else {
        const auto& table = static_cast<const tsql::NamedTable&>(source);
        if (!TakeCommon(table, with) && !TakeView(table, context)) {
            table_ = table.name;
            if (database_ && table_.database.isEmpty()) table_.database = database_->name;
            return nullptr;
        }
    }
    const tsql::Query& query = *layers_.back().query;
    return query.arms.empty() && !query.from.empty() ? query.from.front().get() : &source;
}

bool TargetPath::TakeCommon(const tsql::NamedTable& table, const tsql::WithClause& with) {
    if (!table.name.schema.isEmpty() || !table.name.database.isEmpty()) return false;
    for (const tsql::CommonTable& common : with) {
        if (!SameName(common.name, table.name.name)) continue;
        // Within its own query the name means the table outside.
        for (const TargetLayer& layer : layers_) {
            if (layer.query == common.query.get()) return false;
        }
        layers_.push_back({common.name, common.query.get(), &common.columns, {}, false});
        return true;
    }
    return false;
}

bool TargetPath::TakeView(const tsql::NamedTable& table, BindContext& context) {
    if (table.name.isVariable) return false;
    tsql::ObjectName name = table.name;
    if (database_ && name.database.isEmpty()) name.database = database_->name;
    if (context.System().FindView(name.schema, name.name)) return false;
    Metadata metadata = context.MetadataFor(name);
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (!object || object->type != u"V") return false;
    views_.push_back(tsql::ParseBatch(object->definition));
    const auto& view = static_cast<const tsql::CreateView&>(*views_.back().front());
    database_ = metadata.Database();
    layers_.push_back({object->name, view.query.get(), &view.columns, database_, view.checkOption});
    return true;
}

// One source, which is no join, and no set operation.
void TargetPath::CheckQuery(const TargetLayer& layer, const QString& verb) const {
    const tsql::Query& query = *layer.query;
    if (!query.arms.empty()) throw SqlError(4426, {layer.name});
    if (query.from.empty()) throw SqlError(4406, {layer.name});
    if (query.from.size() == 1 && layer.Source().kind != tsql::TableSourceKind::Join) return;
    if (verb == u"DELETE") throw SqlError(4405, {layer.name});
    throw SqlError(40517, {verb + QStringLiteral(" of a view of several tables")});
}

}  // namespace quarv::localdb::engine
