#include "localdb/engine/RowChecks.h"

#include "localdb/engine/ConstraintConflict.h"
#include "localdb/engine/ForeignKeyCheck.h"
#include "localdb/engine/ReferenceCheck.h"

namespace quarv::localdb::engine {

struct RowChecks::CheckRule {
    CheckInfo info;
    RowExpression condition;
};

struct RowChecks::ComputedRule {
    size_t place;
    RowExpression value;
};

RowChecks::RowChecks(Frame& frame, Metadata& metadata, const TableInfo& table,
                     const QString& statement)
    : RowChecks(frame, metadata, table, statement,
                statement == u"INSERT"   ? Change::Insert
                : statement == u"DELETE" ? Change::Delete
                                         : Change::Update,
                0) {}

RowChecks::RowChecks(Frame& frame, Metadata& metadata, const TableInfo& table,
                     const QString& statement, Change change, int depth)
    : metadata_(metadata), table_(table), statement_(statement) {
    metadata.LoadConstraints(table_);
    if (change != Change::Delete) AddRules(frame);
    // No row refers to one that is only now being made.
    if (change == Change::Insert) return;
    for (const ForeignKeyInfo& key : table_.references) {
        if (key.disabled) continue;
        references_.push_back(
            std::make_unique<ReferenceCheck>(frame, metadata, table_, key, statement, depth));
    }
}

// What new and changed rows have to keep.
void RowChecks::AddRules(Frame& frame) {
    for (const CheckInfo& check : table_.checks) {
        if (check.disabled) continue;
        checks_.push_back(std::make_unique<CheckRule>(
            CheckRule{check, {frame, table_, check.text, RowExpression::Kind::Condition}}));
    }
    for (size_t i = 0; i < table_.columns.size(); ++i) {
        const ColumnInfo& column = table_.columns[i];
        if (!column.IsComputed() || (!column.stored && checks_.empty())) continue;
        computed_.push_back(std::make_unique<ComputedRule>(
            ComputedRule{i, {frame, table_, column.computedText, RowExpression::Kind::Value}}));
    }
    for (const ForeignKeyInfo& key : table_.foreignKeys) {
        if (key.disabled) continue;
        foreignKeys_.push_back(
            std::make_unique<ForeignKeyCheck>(frame, metadata_, table_, key, statement_));
    }
}

RowChecks::~RowChecks() = default;

bool RowChecks::NeedsRows() const {
    return !computed_.empty() || !checks_.empty() || !foreignKeys_.empty() || !references_.empty();
}

void RowChecks::Complete(Row& row) {
    for (const std::unique_ptr<ComputedRule>& rule : computed_) {
        row[rule->place] = rule->value.Evaluate(row);
    }
}

void RowChecks::Check(const Row& row) {
    for (const std::unique_ptr<CheckRule>& rule : checks_) {
        const SqlValue result = rule->condition.Evaluate(row);
        if (result.IsNull() || result.integer != 0) continue;
        throw CheckConflict(statement_, rule->info, table_, metadata_);
    }
}

void RowChecks::Inserted(const Row& row) {
    for (const std::unique_ptr<ForeignKeyCheck>& key : foreignKeys_) key->Take(row);
}

void RowChecks::Updated(const Row& before, const Row& after) {
    for (const std::unique_ptr<ForeignKeyCheck>& key : foreignKeys_) key->Take(after);
    for (const std::unique_ptr<ReferenceCheck>& key : references_) key->Changed(before, after);
}

void RowChecks::Deleted(const Row& before) {
    for (const std::unique_ptr<ReferenceCheck>& key : references_) key->Removed(before);
}

void RowChecks::Finish() {
    for (const std::unique_ptr<ReferenceCheck>& key : references_) key->Finish();
    for (const std::unique_ptr<ForeignKeyCheck>& key : foreignKeys_) key->Finish();
}

}  // namespace quarv::localdb::engine
