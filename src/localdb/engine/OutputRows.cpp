#include "localdb/engine/OutputRows.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/RowInserter.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TargetTable.h"

namespace quarv::localdb::engine {

namespace {

const std::string Inserted = "inserted", Deleted = "deleted";

Source SourceOf(const TableInfo& table, const std::string& name) {
    Source source;
    source.name = QString::fromStdString(name);
    for (const ColumnInfo& column : table.columns) {
        source.columns.push_back(
            {column.name, column.type, column.nullable, false, name + '.' + column.StorageName()});
    }
    return source;
}

}  // namespace

OutputRows::OutputRows(Frame& frame, BindContext& context, const tsql::OutputClause& clause,
                       const TableInfo& table, Sides sides, const Scope* sources)
    : frame_(frame), context_(context), clause_(clause), table_(table), scope_(sources) {
    if (sides.inserted) scope_.Add(SourceOf(table, Inserted), false);
    if (sides.deleted) scope_.Add(SourceOf(table, Deleted), false);
    for (const tsql::SelectItem& item : clause.items) {
        try {
            BindItem(item);
        } catch (SqlError& error) {
            if (error.What().line == 0) error.SetLine(item.line);
            // An aggregate, which says that it may not stand in WHERE.
            if (error.Number() == 147) throw SqlError(158, {}, item.line);
            throw;
        }
    }
    for (size_t i = 0; sides.inserted && i < table.columns.size(); ++i) {
        if (table.columns[i].stored) continue;
        computed_.emplace_back(i, RowExpression(frame, table, table.columns[i].computedText,
                                                RowExpression::Kind::Value));
    }
    leaves_.resize(2 * table.columns.size() + others_.size());
    row_.resize(items_.size());
    std::vector<SqlType> types;
    for (const BoundPtr& item : items_) types.push_back(item->type);
    spool_ = std::make_unique<RowSpool>(types);
}

void OutputRows::BindItem(const tsql::SelectItem& item) {
    if (item.expression) {
        if (!item.variable.isEmpty()) throw SqlError(102, {QStringLiteral("=")});
        ExpressionBinder binder(context_, scope_);
        BoundPtr value = binder.Value(*item.expression);
        const bool named = item.alias.isEmpty() && value->IsColumn();
        const QString name = named ? static_cast<const BoundColumn&>(*value).Name() : item.alias;
        AddItem(name, std::move(value));
        return;
    }
    if (item.qualifier.name.isEmpty()) throw SqlError(102, {QStringLiteral("*")});
    for (const SourceColumn& column : scope_.Find(item.qualifier).columns) {
        auto value = std::make_unique<BoundColumn>(column.sql, column.name, column.type);
        value->nullable = column.nullable;
        AddItem(column.name, std::move(value));
    }
}

void OutputRows::AddItem(const QString& name, BoundPtr value) {
    PlaceLeaves(*value);
    columns_.push_back({name, value->type, value->nullable, false, !value->IsColumn()});
    items_.push_back(std::move(value));
}

void OutputRows::PlaceLeaves(const BoundExpression& node) {
    if (!node.IsLeaf()) {
        for (const BoundPtr& part : node.parts) PlaceLeaves(*part);
        return;
    }
    if (!node.IsColumn()) throw SqlError(10705);
    node.slot = PlaceOf(static_cast<const BoundColumn&>(node));
}

size_t OutputRows::PlaceOf(const BoundColumn& column) {
    const std::string sql = column.Detail();
    const size_t count = table_.columns.size();
    for (size_t i = 0; i < count; ++i) {
        const std::string name = '.' + table_.columns[i].StorageName();
        if (sql == Inserted + name) return i;
        if (sql == Deleted + name) return count + i;
    }
    for (size_t i = 0; i < others_.size(); ++i) {
        if (others_[i]->Detail() == sql) return 2 * count + i;
    }
    others_.push_back(&column);
    return 2 * count + others_.size() - 1;
}

std::vector<BoundPtr> OutputRows::CopyOthers() const {
    std::vector<BoundPtr> copies;
    for (const BoundColumn* column : others_) {
        auto copy = std::make_unique<BoundColumn>(column->Detail(), column->Name(), column->type);
        copy->computed = column->computed;
        copies.push_back(std::move(copy));
    }
    return copies;
}

void OutputRows::Add(const Row* inserted, const Row* deleted, const Row& others) {
    if (!computed_.empty()) {
        inserted_ = *inserted;
        for (auto& [place, value] : computed_) inserted_[place] = value.Evaluate(inserted_);
        inserted = &inserted_;
    }
    const size_t count = table_.columns.size();
    for (size_t i = 0; i < count; ++i) {
        if (inserted) leaves_[i] = (*inserted)[i].View();
        if (deleted) leaves_[count + i] = (*deleted)[i].View();
    }
    for (size_t i = 0; i < others.size(); ++i) leaves_[2 * count + i] = others[i].View();
    const Evaluation evaluation{leaves_.data(), &arena_, &frame_};
    for (size_t i = 0; i < items_.size(); ++i) row_[i] = items_[i]->Evaluate(evaluation);
    arena_.Reset();
    spool_->Append(row_);
}

void OutputRows::Store(ResultSink& sink) {
    if (!clause_.into) return;
    TargetTable target = TargetTable::Open(*clause_.into, context_, QStringLiteral("OUTPUT INTO"));
    RowInserter inserter(frame_, context_, target.metadata, target.table, clause_.columns);
    inserter.InsertSpool(*spool_, sink);
    inserter.Finish();
    if (target.variable) target.variable->identity = inserter.Identity();
}

void OutputRows::Send(ResultSink& sink) {
    if (clause_.into) return;
    sink.BeginRows(columns_);
    std::vector<Datum> data(items_.size());
    while (spool_->Next(row_)) {
        for (size_t i = 0; i < data.size(); ++i) data[i] = ToDatum(row_[i].View());
        sink.Row(data);
        if (sink.Cancelled()) throw Cancelled();
    }
}

}  // namespace quarv::localdb::engine
