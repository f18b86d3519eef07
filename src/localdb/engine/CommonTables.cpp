// The tables of WITH: QueryBinder binds each once, the parts that refer to their own table last.
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/TypeTable.h"
#include "localdb/engine/WindowFunction.h"

namespace quarv::localdb::engine {

namespace {

// Whether the source, or what it joins, is the table of that name.
bool RefersTo(const tsql::TableSource& source, const QString& name) {
    if (source.kind == tsql::TableSourceKind::Table) {
        const tsql::ObjectName& table = static_cast<const tsql::NamedTable&>(source).name;
        return table.schema.isEmpty() && table.database.isEmpty() && SameName(table.name, name);
    }
    if (source.kind != tsql::TableSourceKind::Join) return false;
    const auto& join = static_cast<const tsql::Join&>(source);
    return RefersTo(*join.left, name) || RefersTo(*join.right, name);
}

bool RefersTo(const tsql::Query& query, const QString& name) {
    for (const tsql::TableSourcePtr& source : query.from) {
        if (RefersTo(*source, name)) return true;
    }
    for (const std::unique_ptr<tsql::Query>& arm : query.arms) {
        if (RefersTo(*arm, name)) return true;
    }
    return false;
}

bool HasOuterJoin(const tsql::TableSource& source) {
    if (source.kind != tsql::TableSourceKind::Join) return false;
    const auto& join = static_cast<const tsql::Join&>(source);
    const bool outer = join.join != tsql::JoinKind::Inner && join.join != tsql::JoinKind::Cross &&
                       join.join != tsql::JoinKind::CrossApply;
    return outer || HasOuterJoin(*join.left) || HasOuterJoin(*join.right);
}

// The names and types by which a query's columns are known outside it.
std::vector<SourceColumn> NamedColumns(const BoundQuery& query, const tsql::CommonTable& table) {
    if (table.columns.size() > query.columns.size()) throw SqlError(8159, {table.name}, table.line);
    if (!table.columns.empty() && table.columns.size() < query.columns.size()) {
        throw SqlError(8158, {table.name}, table.line);
    }
    std::vector<SourceColumn> columns;
    for (size_t i = 0; i < query.columns.size(); ++i) {
        const Column& column = query.columns[i];
        const QString& name = table.columns.empty() ? column.name : table.columns[i];
        if (name.isEmpty()) {
            throw SqlError(8155, {QString::number(i + 1), table.name}, table.line);
        }
        for (const SourceColumn& other : columns) {
            if (SameName(other.name, name)) throw SqlError(8156, {name, table.name}, table.line);
        }
        columns.push_back({name, column.type, column.nullable, false, "c" + std::to_string(i + 1),
                           query.items[i]->Collates().id});
    }
    return columns;
}

void CheckRecursivePart(const tsql::Query& query, const QString& name) {
    if (query.distinct) throw SqlError(460, {name}, query.line);
    if (query.top || query.offset) throw SqlError(461, {name}, query.line);
    if (!query.groupBy.empty() || query.having) throw SqlError(467, {name}, query.line);
    for (const tsql::TableSourcePtr& source : query.from) {
        if (HasOuterJoin(*source)) throw SqlError(462, {name}, query.line);
    }
}

// Where a table refers to itself, how many queries in front do not. Raises SqlError 246, 247 or
// 252.
size_t CountAnchors(const tsql::CommonTable& table) {
    const tsql::Query& query = *table.query;
    if (query.arms.empty()) throw SqlError(252, {table.name}, table.line);
    size_t anchors = 0;
    while (anchors < query.arms.size() && !RefersTo(*query.arms[anchors], table.name)) ++anchors;
    if (anchors == 0) throw SqlError(246, {table.name}, table.line);
    for (size_t i = anchors; i < query.arms.size(); ++i) {
        if (query.operators[i - 1] != tsql::SetOperator::UnionAll) {
            throw SqlError(252, {table.name}, table.line);
        }
        if (!RefersTo(*query.arms[i], table.name)) throw SqlError(247, {table.name}, table.line);
    }
    return anchors;
}

}  // namespace

std::vector<BoundCommon> QueryBinder::BindCommons(const tsql::WithClause& with) {
    std::vector<BoundCommon> bound;
    for (const tsql::CommonTable& table : with) {
        for (const tsql::CommonTable& other : with) {
            if (&other == &table) break;
            if (SameName(other.name, table.name)) throw SqlError(239, {table.name}, table.line);
        }
        bound.push_back(BindCommon(table));
    }
    return bound;
}

BoundCommon QueryBinder::BindCommon(const tsql::CommonTable& table) {
    BoundCommon bound;
    bound.name = "w" + context_.NextAlias();
    const auto info = std::make_shared<CommonInfo>();
    info->name = table.name;
    info->storage = bound.name;
    context_.Commons().push_back(info);
    const tsql::Query& query = *table.query;
    if (!RefersTo(query, table.name)) {
        bound.query = QueryBinder(context_, nullptr).BindSub(query);
        info->columns = NamedColumns(*bound.query, table);
        info->ready = true;
        return bound;
    }
    const size_t anchors = CountAnchors(table);
    if (anchors == 1) {
        bound.query = QueryBinder(context_, nullptr).BindSub(*query.arms.front());
    } else {
        bound.query = QueryBinder(context_, nullptr).BindArms(query, anchors);
    }
    info->columns = NamedColumns(*bound.query, table);
    // What comes around again may always be null.
    for (SourceColumn& column : info->columns) column.nullable = true;
    for (size_t i = anchors; i < query.arms.size(); ++i) {
        BindRecursiveArm(*query.arms[i], *info, bound);
    }
    info->ready = true;
    return bound;
}

void QueryBinder::BindRecursiveArm(const tsql::Query& query, CommonInfo& info, BoundCommon& bound) {
    if (!query.arms.empty()) throw SqlError(252, {info.name}, query.line);
    CheckRecursivePart(query, info.name);
    QueryBinder binder(context_, nullptr);
    info.recursive = &binder;
    info.references = 0;
    std::unique_ptr<BoundQuery> arm = binder.BindSub(query);
    info.recursive = nullptr;
    if (arm->grouped) throw SqlError(467, {info.name}, query.line);
    if (arm->items.size() != info.columns.size()) throw SqlError(205, {}, query.line);
    for (size_t i = 0; i < arm->items.size(); ++i) {
        if (HasWindow(*arm->items[i])) {
            throw SqlError(40517, {QStringLiteral("OVER in a recursive query")}, query.line);
        }
        if (arm->items[i]->untypedNull) {
            arm->items[i] =
                ExpressionBinder::Convert(std::move(arm->items[i]), info.columns[i].type);
        }
        const bool collated = ClassOf(info.columns[i].type) == TypeClass::Text &&
                              arm->items[i]->Collates().id != info.columns[i].collation;
        if (arm->items[i]->type != info.columns[i].type || collated) {
            throw SqlError(240, {info.columns[i].name, info.name}, query.line);
        }
    }
    arm->level =
        "q_level(" + info.reference + ".level," + std::to_string(context_.maxRecursion) + ")";
    bound.recursive.push_back(std::move(arm));
}

std::unique_ptr<BoundSource> QueryBinder::BindCommonTable(CommonInfo& common,
                                                          const tsql::NamedTable& table) {
    if (!common.ready) {
        if (common.recursive != this) throw SqlError(465, {}, table.line);
        if (++common.references > 1) throw SqlError(253, {common.name}, table.line);
    }
    auto bound = std::make_unique<BoundSource>();
    bound->sql = common.storage;
    bound->alias = context_.NextAlias();
    if (!common.ready) common.reference = bound->alias;
    Source source;
    source.name = table.alias.isEmpty() ? table.name.name : table.alias;
    source.storageAlias = bound->alias;
    source.columns = common.columns;
    for (SourceColumn& column : source.columns) column.sql = bound->alias + '.' + column.sql;
    scope_.Add(std::move(source), !table.alias.isEmpty());
    return bound;
}

}  // namespace quarv::localdb::engine
