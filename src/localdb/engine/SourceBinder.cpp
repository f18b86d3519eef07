#include "localdb/engine/ParseCache.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

Source SourceFor(const tsql::NamedTable& table, const QString& schema) {
    Source source;
    source.name = table.alias.isEmpty() ? table.name.name : table.alias;
    if (table.alias.isEmpty()) source.schema = schema;
    return source;
}

std::unique_ptr<BoundSource> Named(std::string sql, std::string alias) {
    auto source = std::make_unique<BoundSource>();
    source->sql = std::move(sql);
    source->alias = std::move(alias);
    return source;
}

}  // namespace

std::unique_ptr<BoundQuery> QueryBinder::BindRows(const tsql::Query& query,
                                                  const tsql::NamedTable* target) {
    // What SET and OUTPUT name later may be tables of WITH, too.
    std::vector<BoundCommon> with = BindCommons(query.with);
    result_ = std::make_unique<BoundQuery>();
    result_->with = std::move(with);
    if (target) result_->from = BindSource(*target);
    BindFrom(query);
    if (query.where) {
        ExpressionBinder binder(context_, scope_);
        result_->where = binder.Condition(*query.where);
    }
    BindLimits(query);
    return std::move(result_);
}

void QueryBinder::BindFrom(const tsql::Query& query) {
    for (const tsql::TableSourcePtr& source : query.from) {
        std::unique_ptr<BoundSource> bound = BindSource(*source);
        if (!result_->from) {
            result_->from = std::move(bound);
            continue;
        }
        auto join = std::make_unique<BoundSource>();
        join->join = tsql::JoinKind::Cross;
        join->left = std::move(result_->from);
        join->right = std::move(bound);
        result_->from = std::move(join);
    }
}

std::unique_ptr<BoundSource> QueryBinder::BindSource(const tsql::TableSource& source) {
    try {
        if (&source == target_) return BindChanged(source);
        switch (source.kind) {
            case tsql::TableSourceKind::Table:
                return BindTable(static_cast<const tsql::NamedTable&>(source));
            case tsql::TableSourceKind::Derived:
                return BindDerived(static_cast<const tsql::DerivedTable&>(source), outer_);
            default:
                return BindJoin(static_cast<const tsql::Join&>(source));
        }
    } catch (SqlError& error) {
        if (error.What().line == 0) error.SetLine(source.line);
        throw;
    }
}

std::unique_ptr<BoundSource> QueryBinder::BindTable(const tsql::NamedTable& table) {
    const tsql::ObjectName& name = table.name;
    if (name.schema.isEmpty() && name.database.isEmpty() && name.server.isEmpty()) {
        if (CommonInfo* common = context_.FindCommon(name.name)) {
            return BindCommonTable(*common, table);
        }
    }
    Metadata metadata = context_.MetadataFor(name);
    if (name.isVariable) return BindStored(metadata, *context_.TableVariable(name), table);
    if (const SystemView* view = context_.System().FindView(name.schema, name.name)) {
        return BindSystemView(*view, metadata, table);
    }
    const std::optional<ObjectInfo> object = metadata.Find(name.schema, name.name);
    if (object && object->type == u"V") return BindView(*object, metadata, table);
    if (!object || object->type != u"U") throw SqlError(208, {name.ToText()}, name.line);
    return BindStored(metadata, metadata.LoadTable(*object), table);
}

std::unique_ptr<BoundSource> QueryBinder::BindStored(const Metadata& metadata,
                                                     const TableInfo& info,
                                                     const tsql::NamedTable& table) {
    const std::string alias = context_.NextAlias();
    Source source = SourceFor(table, info.object.schema);
    source.objectId = info.object.id;
    source.storageAlias = alias;
    for (const ColumnInfo& column : info.columns) {
        source.columns.push_back({column.name, column.type, column.nullable, column.identity,
                                  alias + '.' + column.StorageName()});
    }
    BindComputed(info, source);
    scope_.Add(std::move(source), !table.alias.isEmpty());
    return Named(metadata.Prefix() + info.StorageName(), alias);
}

// A computed column that is not stored is computed wherever its name stands.
void QueryBinder::BindComputed(const TableInfo& table, Source& source) {
    Scope scope;
    for (size_t i = 0; i < table.columns.size(); ++i) {
        const ColumnInfo& column = table.columns[i];
        if (column.stored) continue;
        if (scope.IsEmpty()) {
            Source stored = source;
            std::erase_if(stored.columns, [&table](const SourceColumn& c) {
                return table.FindColumn(c.name)->IsComputed();
            });
            scope.Add(std::move(stored), false);
        }
        ExpressionBinder binder(context_, scope);
        source.columns[i].computed = binder.Value(*context_.Parsed().Value(column.computedText));
    }
}

std::unique_ptr<BoundSource> QueryBinder::BindSystemView(const SystemView& view, Metadata& metadata,
                                                         const tsql::NamedTable& table) {
    const std::string alias = context_.NextAlias();
    Source source = SourceFor(table, view.schema);
    int number = 0;
    for (const Column& column : view.columns) {
        source.columns.push_back({column.name, column.type, column.nullable, false,
                                  alias + ".v" + std::to_string(++number)});
    }
    scope_.Add(std::move(source), !table.alias.isEmpty());
    return Named(
        '(' +
            FillInDatabase(view.sql, metadata.Prefix(), metadata.Database(), context_.Databases()) +
            ')',
        alias);
}

void QueryBinder::AddQuerySource(const BoundQuery& query, const std::vector<QString>& names,
                                 const tsql::NamedTable* table, const QString& alias,
                                 const std::string& storageAlias) {
    Source source;
    source.name = alias;
    if (table) source = SourceFor(*table, QStringLiteral("dbo"));
    if (names.size() > query.columns.size()) throw SqlError(8159, {source.name});
    if (!names.empty() && names.size() < query.columns.size()) throw SqlError(8158, {source.name});
    for (size_t i = 0; i < query.columns.size(); ++i) {
        const Column& column = query.columns[i];
        const QString& name = names.empty() ? column.name : names[i];
        if (name.isEmpty()) throw SqlError(8155, {QString::number(i + 1), source.name});
        for (const SourceColumn& other : source.columns) {
            if (SameName(other.name, name)) throw SqlError(8156, {name, source.name});
        }
        source.columns.push_back({name, column.type, column.nullable, false,
                                  storageAlias + ".c" + std::to_string(i + 1),
                                  query.items[i]->Collates().id});
    }
    scope_.Add(std::move(source), !table || !table->alias.isEmpty());
}

std::unique_ptr<BoundSource> QueryBinder::BindView(const ObjectInfo& view, Metadata& metadata,
                                                   const tsql::NamedTable& table) {
    const BindContext::InView inView(context_, metadata.Database());
    const ParseCache::Statements statements = context_.Parsed().Batch(view.definition);
    const auto& definition = static_cast<const tsql::CreateView&>(*statements->front());
    auto bound = std::make_unique<BoundSource>();
    QueryBinder binder(context_, nullptr);
    bound->query = binder.BindSub(*definition.query);
    bound->alias = context_.NextAlias();
    // As many columns as it had when it was made or refreshed, whatever its "*" has become.
    const size_t count = metadata.LoadTable(view).columns.size();
    std::vector<Column>& columns = bound->query->columns;
    if (columns.size() < count) throw SqlError(4502, {view.name});
    columns.resize(count);
    AddQuerySource(*bound->query, definition.columns, &table, {}, bound->alias);
    return bound;
}

std::unique_ptr<BoundSource> QueryBinder::BindDerived(const tsql::DerivedTable& table,
                                                      const Scope* around) {
    if (table.function) return BindFunctionTable(table, around);
    auto bound = std::make_unique<BoundSource>();
    QueryBinder binder(context_, around);
    bound->query =
        table.query ? binder.BindSub(*table.query) : binder.BindRowsOfValues(table, around);
    bound->alias = context_.NextAlias();
    bound->width = bound->query->items.size();
    AddQuerySource(*bound->query, table.columns, nullptr, table.alias, bound->alias);
    return bound;
}

std::unique_ptr<BoundSource> QueryBinder::BindJoin(const tsql::Join& join) {
    auto bound = std::make_unique<BoundSource>();
    bound->join = join.join;
    const size_t begin = scope_.Sources().size();
    bound->left = BindSource(*join.left);
    const size_t middle = scope_.Sources().size();
    const bool apply =
        join.join == tsql::JoinKind::CrossApply || join.join == tsql::JoinKind::OuterApply;
    if (apply && join.right->kind == tsql::TableSourceKind::Derived) {
        const Scope around = scope_.From(begin);
        bound->right = BindDerived(static_cast<const tsql::DerivedTable&>(*join.right), &around);
    } else {
        bound->right = BindSource(*join.right);
    }
    const size_t end = scope_.Sources().size();
    const bool full = join.join == tsql::JoinKind::Full;
    if (full || join.join == tsql::JoinKind::Right) scope_.MakeNullable(begin, middle);
    const bool left = join.join == tsql::JoinKind::Left || join.join == tsql::JoinKind::OuterApply;
    if (full || left) scope_.MakeNullable(middle, end);
    if (join.on) {
        ExpressionBinder binder(context_, scope_);
        bound->on = binder.Condition(*join.on);
    }
    return bound;
}

}  // namespace quarv::localdb::engine
