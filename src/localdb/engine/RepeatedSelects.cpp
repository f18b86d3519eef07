#include "localdb/engine/RepeatedSelects.h"

#include <algorithm>

#include "localdb/engine/BoundQuery.h"
#include "localdb/engine/Frame.h"
#include "localdb/engine/LiteralValue.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/tsql/Select.h"

namespace quarv::localdb::engine {

namespace {

bool IsColumnAndLiteral(const tsql::Expression& condition) {
    if (condition.kind != tsql::ExpressionKind::Comparison) return false;
    const auto& comparison = static_cast<const tsql::Comparison&>(condition);
    return comparison.left->kind == tsql::ExpressionKind::Column &&
           comparison.right->kind == tsql::ExpressionKind::Literal;
}

// How many columns are compared with literals, all of which must hold; 0 for another condition.
size_t CountComparisons(const tsql::Expression* where) {
    if (!where) return 0;
    if (where->kind != tsql::ExpressionKind::Junction) return IsColumnAndLiteral(*where) ? 1 : 0;
    const auto& junction = static_cast<const tsql::Junction&>(*where);
    const bool plain = junction.isAnd && std::all_of(junction.terms.begin(), junction.terms.end(),
                                                     [](const tsql::ExpressionPtr& term) {
                                                         return IsColumnAndLiteral(*term);
                                                     });
    return plain ? junction.terms.size() : 0;
}

bool IsPlainItem(const tsql::SelectItem& item) {
    if (!item.variable.isEmpty()) return false;
    return !item.expression || item.expression->kind == tsql::ExpressionKind::Column;
}

// The one table of a query that has nothing but items, a table and a condition; else nothing.
const tsql::NamedTable* OnlyTable(const tsql::Query& query) {
    const bool plain = query.with.empty() && query.arms.empty() && !query.distinct && !query.top &&
                       !query.into && query.from.size() == 1 && query.groupBy.empty() &&
                       query.groupingSets.empty() && !query.having && query.orderBy.empty() &&
                       !query.offset && !query.fetch;
    if (!plain || query.from.front()->kind != tsql::TableSourceKind::Table) return nullptr;
    const auto& table = static_cast<const tsql::NamedTable&>(*query.from.front());
    const tsql::ObjectName& name = table.name;
    const bool here = name.database.isEmpty() && name.server.isEmpty() && !name.isVariable &&
                      !name.name.startsWith(u'#');
    return here && std::all_of(query.items.begin(), query.items.end(), IsPlainItem) ? &table
                                                                                    : nullptr;
}

// A literal of the same kind is bound the same way. The longest texts are of another type.
bool IsLike(const SqlType& type, const SqlType& known) {
    return type.kind == known.kind &&
           (type.length == SqlType::Max) == (known.length == SqlType::Max);
}

// The literals as they stand; nothing where one is not like the known one, such as a number that
// is too large for an int.
std::optional<std::vector<BoundPtr>> BindLiterals(const std::vector<tsql::Literal>& literals,
                                                  const std::vector<SqlType>& types) {
    std::vector<BoundPtr> values;
    for (size_t i = 0; i < literals.size(); ++i) {
        values.push_back(BindLiteral(literals[i]));
        if (!IsLike(values.back()->type, types[i])) return std::nullopt;
    }
    return values;
}

}  // namespace

RepeatedSelects::Batch* RepeatedSelects::RunningAs(const tsql::Statement& statement) const {
    const bool is = running_ && running_->shape_ && running_->statements_->size() == 1 &&
                    running_->statements_->front().get() == &statement;
    return is ? running_ : nullptr;
}

std::shared_ptr<const RepeatedSelects::Plan> RepeatedSelects::Find(const QString& key) {
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->second;
}

void RepeatedSelects::Keep(const QString& key, std::shared_ptr<const Plan> plan) {
    const auto found = byKey_.find(key);
    if (found != byKey_.end()) {
        found->second->second = std::move(plan);
        return;
    }
    entries_.emplace_front(key, std::move(plan));
    byKey_.emplace(key, entries_.begin());
    if (entries_.size() <= Most) return;
    byKey_.erase(entries_.back().first);
    entries_.pop_back();
}

RepeatedSelects::Batch::Batch(ParseCache& parsed, const QString& text)
    : parsed_(parsed), owner_(parsed.Repeated()), text_(text), shape_(SelectShape::Of(text)) {
    if (shape_) plan_ = owner_.Find(shape_->key);
    statements_ = plan_ ? plan_->tree : parsed.Batch(text);
    if (!plan_) own_ = statements_;
    owner_.running_ = this;
}

const tsql::Statement& RepeatedSelects::Batch::OwnStatement() {
    if (!own_) own_ = parsed_.Batch(text_);
    return *own_->front();
}

std::optional<SqliteStatement> RepeatedSelects::Batch::Prepare(Frame& frame) const {
    if (!plan_ || plan_->databaseId != frame.Database().id) return std::nullopt;
    Store& store = frame.Session().store;
    Metadata metadata(store, frame.Database());
    const std::optional<ObjectInfo> object = metadata.Find(plan_->schema, plan_->table);
    if (!object || !store.Catalogue().IsChecked(plan_->databaseId)) return std::nullopt;
    if (store.Catalogue().FindTable(plan_->databaseId, object->id) != plan_->known) {
        return std::nullopt;
    }
    const auto values = BindLiterals(shape_->literals, plan_->types);
    if (!values) return std::nullopt;
    SqliteStatement statement = store.Prepare(plan_->sql);
    int index = 0;
    for (const BoundPtr& value : *values) {
        const auto& constant = static_cast<const BoundConstant&>(*value);
        statement.Bind(++index, constant.Value(), constant.type);
    }
    return statement;
}

void RepeatedSelects::Batch::Learn(Frame& frame, const BoundQuery& bound, const SqlWriter& writer) {
    const auto& query = *static_cast<const tsql::Select&>(OwnStatement()).query;
    const tsql::NamedTable* table = OnlyTable(query);
    const size_t count = shape_->literals.size();
    if (!table || CountComparisons(query.where.get()) != count) return;
    // A stored table and no view; values that are the literals themselves.
    if (!bound.from || bound.from->query || bound.from->sql.starts_with('(')) return;
    const std::optional<std::vector<SqlType>> types = writer.ValueTypes();
    if (!types || types->size() != count) return;
    for (size_t i = 0; i < count; ++i) {
        if (BindLiteral(shape_->literals[i])->type != (*types)[i]) return;
    }
    Store& store = frame.Session().store;
    Metadata metadata(store, frame.Database());
    const std::optional<ObjectInfo> object = metadata.Find(table->name.schema, table->name.name);
    if (!object) return;
    const int database = frame.Database().id;
    if (!store.Catalogue().IsChecked(database)) return;
    CatalogueCache::Table known = store.Catalogue().FindTable(database, object->id);
    if (!known) return;
    owner_.Keep(shape_->key, std::make_shared<const Plan>(
                                 Plan{own_, table->name.schema, table->name.name, database,
                                      std::move(known), bound.columns, writer.Sql(), *types}));
}

}  // namespace quarv::localdb::engine
