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

// What the column is compared with: a literal or a variable; nothing for another condition.
const tsql::Expression* ComparedWith(const tsql::Expression& condition) {
    if (condition.kind != tsql::ExpressionKind::Comparison) return nullptr;
    const auto& comparison = static_cast<const tsql::Comparison&>(condition);
    const tsql::ExpressionKind kind = comparison.right->kind;
    const bool plain =
        comparison.left->kind == tsql::ExpressionKind::Column &&
        (kind == tsql::ExpressionKind::Literal || kind == tsql::ExpressionKind::Variable);
    return plain ? comparison.right.get() : nullptr;
}

// What columns are compared with where all the comparisons must hold. Nothing for another
// condition.
std::optional<std::vector<const tsql::Expression*>> Compared(const tsql::Expression* where) {
    std::vector<const tsql::Expression*> result;
    if (where && where->kind == tsql::ExpressionKind::Junction) {
        const auto& junction = static_cast<const tsql::Junction&>(*where);
        if (!junction.isAnd) return std::nullopt;
        for (const tsql::ExpressionPtr& term : junction.terms) {
            result.push_back(ComparedWith(*term));
        }
    } else if (where) {
        result.push_back(ComparedWith(*where));
    }
    if (std::find(result.begin(), result.end(), nullptr) != result.end()) return std::nullopt;
    return result;
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
    : parsed_(parsed),
      owner_(parsed.Repeated()),
      around_(owner_.running_),
      text_(text),
      shape_(SelectShape::Of(text)) {
    Begin();
}

RepeatedSelects::Batch::Batch(ParseCache& parsed, const QString& text, const QString& declarations)
    : parsed_(parsed),
      owner_(parsed.Repeated()),
      around_(owner_.running_),
      text_(text),
      hasParameters_(true) {
    // No batch that has a shape has a zero in it.
    if (text.size() + declarations.size() < SelectShape::LongestBatch) {
        shape_ = SelectShape{declarations + QChar(u'\0') + text, {}};
    }
    Begin();
}

void RepeatedSelects::Batch::Begin() {
    if (shape_) plan_ = owner_.Find(shape_->key);
    statements_ = plan_ ? plan_->tree : parsed_.Batch(text_);
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
    SqliteStatement statement = store.Prepare(plan_->sql);
    if (!BindValues(statement, frame)) return std::nullopt;
    return statement;
}

// False where a value is not like the known one, such as a number that is too large for an int.
bool RepeatedSelects::Batch::BindValues(SqliteStatement& statement, Frame& frame) const {
    int index = 0;
    for (const Plan::Value& value : plan_->values) {
        ++index;
        if (value.parameter) {
            const VariableTable::Variable& variable = frame.Variables().At(*value.parameter);
            if (variable.type != value.type) return false;
            statement.Bind(index, variable.value.View(), variable.type);
        } else if (hasParameters_) {
            statement.Bind(index, value.literal.View(), value.type);
        } else {
            const BoundPtr bound = BindLiteral(shape_->literals[static_cast<size_t>(index) - 1]);
            if (!IsLike(bound->type, value.type)) return false;
            statement.Bind(index, static_cast<const BoundConstant&>(*bound).Value(), bound->type);
        }
    }
    return true;
}

// The values that were written are the literals and parameters themselves: none was converted.
bool RepeatedSelects::Batch::FindValues(const tsql::Query& query, const SqlWriter& writer,
                                        Frame& frame, std::vector<Plan::Value>& values) const {
    const auto compared = Compared(query.where.get());
    const std::optional<std::vector<SqlType>> types = writer.ValueTypes();
    if (!compared || !types || types->size() != compared->size()) return false;
    if (!hasParameters_ && compared->size() != shape_->literals.size()) return false;
    for (size_t i = 0; i < types->size(); ++i) {
        Plan::Value value;
        if ((*compared)[i]->kind == tsql::ExpressionKind::Variable) {
            const auto& variable = static_cast<const tsql::Variable&>(*(*compared)[i]);
            value.parameter = frame.Variables().Find(variable.name);
            if (!value.parameter) return false;
            value.type = frame.Variables().At(*value.parameter).type;
        } else {
            const BoundPtr bound = BindLiteral(static_cast<const tsql::Literal&>(*(*compared)[i]));
            value.type = bound->type;
            value.literal = static_cast<const BoundConstant&>(*bound).Value();
        }
        if (value.type != (*types)[i]) return false;
        values.push_back(std::move(value));
    }
    return true;
}

void RepeatedSelects::Batch::Learn(Frame& frame, const BoundQuery& bound, const SqlWriter& writer) {
    const auto& query = *static_cast<const tsql::Select&>(OwnStatement()).query;
    const tsql::NamedTable* table = OnlyTable(query);
    // A stored table and no view.
    if (!table || !bound.from || bound.from->query || bound.from->sql.starts_with('(')) return;
    Plan plan;
    if (!FindValues(query, writer, frame, plan.values)) return;
    plan.tree = own_;
    plan.schema = table->name.schema;
    plan.table = table->name.name;
    plan.databaseId = frame.Database().id;
    Store& store = frame.Session().store;
    const std::optional<ObjectInfo> object =
        Metadata(store, frame.Database()).Find(plan.schema, plan.table);
    if (!object || !store.Catalogue().IsChecked(plan.databaseId)) return;
    plan.known = store.Catalogue().FindTable(plan.databaseId, object->id);
    if (!plan.known) return;
    plan.columns = bound.columns;
    plan.sql = writer.Sql();
    owner_.Keep(shape_->key, std::make_shared<const Plan>(std::move(plan)));
}

}  // namespace quarv::localdb::engine
