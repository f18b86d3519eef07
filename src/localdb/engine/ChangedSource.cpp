#include "localdb/engine/ChangedSource.h"

#include <algorithm>

#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

namespace {

// The table's column that a column of this layer's source stands for.
std::optional<size_t> PlaceOf(const BoundExpression& item, const Source& source,
                              const ChangedSource& changed) {
    if (!item.IsColumn()) return std::nullopt;
    for (size_t i = 0; i < source.columns.size(); ++i) {
        if (source.columns[i].sql == item.Detail()) return changed.places[i];
    }
    return std::nullopt;
}

// The columns of a check take their values from the table's row.
void PlaceLeaves(const BoundExpression& node, const Source& source, const ChangedSource& changed) {
    if (!node.IsLeaf()) {
        for (const BoundPtr& part : node.parts) PlaceLeaves(*part, source, changed);
        return;
    }
    const std::optional<size_t> place = PlaceOf(node, source, changed);
    if (!place) {
        throw SqlError(40517, {QStringLiteral("WITH CHECK OPTION of what is no column")});
    }
    node.slot = *place;
}

bool ChecksBelow(const TargetPath& path, size_t layer) {
    for (size_t i = 0; i <= layer; ++i) {
        if (path.Layers()[i].checkOption) return true;
    }
    return false;
}

}  // namespace

void ChangedSource::Check(const std::vector<OwnedValue>& row,
                          const Environment& environment) const {
    if (checks.empty()) return;
    std::vector<SqlValue> leaves;
    leaves.reserve(row.size());
    for (const OwnedValue& value : row) leaves.push_back(value.View());
    TextArena arena;
    const Evaluation evaluation{leaves.data(), &arena, &environment};
    const bool holds = std::all_of(
        checks.begin(), checks.end(),
        [&evaluation](const BoundPtr& check) { return Holds(check->Evaluate(evaluation)); });
    if (!holds) throw SqlError(550);
}

void QueryBinder::SetChanged(ChangedSource& changed, size_t layer) {
    changed_ = &changed;
    layer_ = layer;
    target_ = layer == 0 ? changed.source : &changed.path->Layers()[layer - 1].Source();
}

std::unique_ptr<BoundSource> QueryBinder::BindChanged(const tsql::TableSource& source) {
    ChangedSource& changed = *changed_;
    const bool table = layer_ == changed.path->Layers().size();
    std::unique_ptr<BoundSource> bound =
        table ? BindTable(static_cast<const tsql::NamedTable&>(source)) : BindLayer(source);
    changed.place = scope_.Sources().size() - 1;
    if (!table) return bound;
    const Source& own = scope_.Sources().back();
    changed.base = own.columns;
    for (size_t i = 0; i < own.columns.size(); ++i) changed.places.emplace_back(i);
    for (const std::string& name : changed.keyNames) {
        changed.keySql.push_back(own.storageAlias + '.' + name);
    }
    return bound;
}

// The query of a layer with the table's columns and the row's key as items behind its own.
std::unique_ptr<BoundSource> QueryBinder::BindLayer(const tsql::TableSource& source) {
    ChangedSource& changed = *changed_;
    const TargetLayer& layer = changed.path->Layers()[layer_];
    std::optional<BindContext::InView> inView;
    if (layer.database) inView.emplace(context_, *layer.database);
    QueryBinder inner(context_, nullptr);
    inner.SetChanged(changed, layer_ + 1);
    auto bound = std::make_unique<BoundSource>();
    bound->query = inner.BindSub(*layer.query);
    BoundQuery& query = *bound->query;
    if (query.grouped || query.distinct) throw SqlError(4403, {layer.name});
    bound->alias = context_.NextAlias();
    const Source& below = inner.Names().Sources().front();
    if (ChecksBelow(*changed.path, layer_) && layer.query->where) {
        ExpressionBinder binder(context_, inner.Names());
        changed.checks.push_back(binder.Condition(*layer.query->where));
        PlaceLeaves(*changed.checks.back(), below, changed);
    }
    std::vector<std::optional<size_t>> places;
    for (const BoundPtr& item : query.items) places.push_back(PlaceOf(*item, below, changed));
    const auto add = [&](BoundPtr item) {
        query.items.push_back(std::move(item));
        return bound->alias + ".c" + std::to_string(query.items.size());
    };
    for (SourceColumn& column : changed.base) {
        column.sql = add(column.Bind());
        column.computed = nullptr;
    }
    for (size_t i = 0; i < changed.keySql.size(); ++i) {
        changed.keySql[i] =
            add(std::make_unique<BoundColumn>(changed.keySql[i], QString(), changed.keyTypes[i]));
    }
    changed.places = std::move(places);
    const bool named = source.kind == tsql::TableSourceKind::Table;
    AddQuerySource(
        query, *layer.columns, named ? &static_cast<const tsql::NamedTable&>(source) : nullptr,
        named ? QString() : static_cast<const tsql::DerivedTable&>(source).alias, bound->alias);
    return bound;
}

}  // namespace quarv::localdb::engine
