// RowChecks: what the constraints of one table demand of the rows that a statement inserts, updates
// or deletes. Whoever writes rows makes one of these for the statement and tells it of each row;
// it fills in computed columns, raises where a constraint is broken and carries out the actions of
// foreign keys that refer to the table. Nulls, lengths and unique keys are the writer's business.
// Inside the caller's transaction; borrows everything.
//
//     RowChecks checks(frame, metadata, table, QStringLiteral("UPDATE"));
//     for each row:  checks.Complete(after);   // before it is written
//                    (write it)
//                    checks.Updated(before, after);
//     checks.Finish();
#pragma once

#include <memory>

#include "localdb/engine/Metadata.h"
#include "localdb/engine/RowExpression.h"

namespace quarv::localdb::engine {

class ForeignKeyCheck;
class ReferenceCheck;

class RowChecks {
  public:
    using Row = std::vector<OwnedValue>;  // one value for each of the table's columns

    // `statement` is "INSERT", "UPDATE" or "DELETE".
    RowChecks(Frame& frame, Metadata& metadata, const TableInfo& table, const QString& statement);
    // What the action of a foreign key changes: `statement` is the one that set it off, as messages
    // name it. `depth` counts the actions that led here.
    enum class Change : uint8_t { Insert, Update, Delete };
    RowChecks(Frame& frame, Metadata& metadata, const TableInfo& table, const QString& statement,
              Change change, int depth);
    ~RowChecks();
    RowChecks(const RowChecks&) = delete;
    RowChecks& operator=(const RowChecks&) = delete;

    // Whether Complete, Check and Updated need whole rows, new and as they were: where not, there
    // is nothing for them to do, and a caller need not read what it does not change.
    bool NeedsRows() const;
    // Whether Deleted needs the rows.
    bool NeedsDeletedRows() const { return !references_.empty(); }

    // A new or changed row, all columns but the computed ones filled in: computes those that are
    // stored. Raises what their expressions raise.
    void Complete(Row& row);
    // Raises SqlError 547 where a CHECK is broken. Called once the values have their final types.
    void Check(const Row& row);

    // Called behind each row that was written. Raise SqlError 547.
    void Inserted(const Row& row);
    void Updated(const Row& before, const Row& after);
    void Deleted(const Row& before);
    // Called when all rows are written: what was waiting for the other rows. Raises SqlError 547.
    void Finish();

  private:
    struct CheckRule;
    struct ComputedRule;

    void AddRules(Frame& frame);

    Metadata& metadata_;
    TableInfo table_;  // with its constraints
    const QString statement_;
    std::vector<std::unique_ptr<ComputedRule>> computed_;
    std::vector<std::unique_ptr<CheckRule>> checks_;
    std::vector<std::unique_ptr<ForeignKeyCheck>> foreignKeys_;
    std::vector<std::unique_ptr<ReferenceCheck>> references_;
};

}  // namespace quarv::localdb::engine
