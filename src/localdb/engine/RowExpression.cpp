#include "localdb/engine/RowExpression.h"

#include <algorithm>

#include "localdb/engine/ParseCache.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/VariableTable.h"

namespace quarv::localdb::engine {

namespace {

Source ColumnsOf(const TableInfo& table, bool computedToo) {
    Source source;
    source.name = table.object.name;
    source.schema = table.object.schema;
    size_t place = 0;
    for (const ColumnInfo& column : table.columns) {
        const std::string name = std::to_string(place++);
        if (column.IsComputed() && !computedToo) continue;
        SourceColumn entry;
        entry.name = column.name;
        entry.type = column.type;
        entry.nullable = column.nullable;
        entry.sql = name;
        source.columns.push_back(std::move(entry));
    }
    return source;
}

bool IsSteady(const BoundExpression& node) {
    return node.IsDeterministic() &&
           std::all_of(node.parts.begin(), node.parts.end(),
                       [](const BoundPtr& part) { return IsSteady(*part); });
}

}  // namespace

RowExpression::RowExpression(Frame& frame, const TableInfo& table, const tsql::Expression& tree,
                             Kind kind)
    : frame_(frame), leaves_(table.columns.size()) {
    Bind(table, tree, kind);
}

RowExpression::RowExpression(Frame& frame, const TableInfo& table, const QString& text, Kind kind)
    : frame_(frame), leaves_(table.columns.size()) {
    ParseCache& parsed = *frame.Session().parsed;
    const ParseCache::Expression tree =
        kind == Kind::Condition ? parsed.Condition(text) : parsed.Value(text);
    Bind(table, *tree, kind);
}

void RowExpression::Bind(const TableInfo& table, const tsql::Expression& tree, Kind kind) {
    const SessionState& session = frame_.Session();
    const VariableTable noVariables;
    BindContext context(frame_.Session().store, session.databases, frame_.Database(),
                        session.objects, noVariables, *session.parsed);
    Scope scope;
    scope.Add(ColumnsOf(table, kind == Kind::Condition), false);
    ExpressionBinder binder(context, scope);
    try {
        root_ = kind == Kind::Condition ? binder.Condition(tree) : binder.Value(tree);
    } catch (const SqlError& error) {
        const QString name = error.What().text.section(u'\'', 1, 1);
        const ColumnInfo* column = error.Number() == 207 ? table.FindColumn(name) : nullptr;
        if (!column) throw;
        throw SqlError(1759, {column->name, table.object.name}, error.What().line);
    }
    AssignSlots(*root_);
}

void RowExpression::AssignSlots(const BoundExpression& node) {
    if (!node.IsLeaf()) {
        for (const BoundPtr& part : node.parts) AssignSlots(*part);
        return;
    }
    if (!node.IsColumn()) throw SqlError(1046);
    node.slot = std::stoul(node.Detail());
    columns_.insert(node.slot);
}

SqlValue RowExpression::Evaluate(const std::vector<OwnedValue>& row) {
    arena_.Reset();
    for (const size_t place : columns_) leaves_[place] = row[place].View();
    const Evaluation evaluation{leaves_.data(), &arena_, &frame_};
    return root_->Evaluate(evaluation);
}

bool RowExpression::IsNullable() const {
    // What is computed may overflow; a column alone cannot.
    return root_->nullable || !(root_->IsColumn() || root_->IsConstant());
}

bool RowExpression::IsDeterministic() const {
    return IsSteady(*root_);
}

void RowExpression::ConvertTo(const SqlType& type) {
    root_ = ExpressionBinder::Convert(std::move(root_), type);
}

}  // namespace quarv::localdb::engine
