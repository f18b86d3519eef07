// BoundExpression: an expression whose names and types are known. It computes itself from the
// values of its leaves, and writes itself as storage SQL: what the storage can do by itself
// (columns, comparisons, AND, OR) as such, so that its indexes are used; everything else as one
// call that computes here.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "localdb/engine/CollationNames.h"
#include "localdb/engine/SqlType.h"
#include "localdb/engine/SqlValue.h"
#include "localdb/engine/TextArena.h"

namespace quarv::localdb::engine {

class Environment;
class SqlWriter;

// What an expression is computed from.
struct Evaluation {
    const SqlValue* leaves = nullptr;  // by BoundExpression::slot
    TextArena* arena = nullptr;
    const Environment* environment = nullptr;
};

class BoundExpression;
using BoundPtr = std::unique_ptr<BoundExpression>;

class BoundExpression {
  public:
    virtual ~BoundExpression() = default;

    SqlType type;  // of a condition: bit
    bool nullable = true;
    bool untypedNull = false;  // the word NULL, which takes any type
    std::vector<BoundPtr> parts;

    // Conditions give 1, 0 or null for unknown. Raises SqlError.
    virtual SqlValue Evaluate(const Evaluation& evaluation) const = 0;
    // The default writes a call that evaluates this tree over its leaves.
    virtual void Write(SqlWriter& writer) const;
    // A leaf has no value of its own here: the storage brings it.
    virtual bool IsLeaf() const { return false; }
    virtual bool IsAggregate() const { return false; }
    // Computed over a window of rows.
    virtual bool IsWindow() const { return false; }
    virtual bool IsColumn() const { return false; }
    virtual bool IsConstant() const { return false; }
    // Gives another value each time it is asked.
    virtual bool IsVolatile() const { return false; }
    // Without parts of its own changing, the same whenever it is asked ("Deterministic and
    // Nondeterministic Functions").
    virtual bool IsDeterministic() const { return !IsVolatile(); }
    // Computed once for all rows of a query, although it may give another value to the next.
    virtual bool IsOncePerQuery() const { return false; }

    // The collation of its text; of what is no text, the one that it compares its parts by. Asked
    // for when its parts are complete.
    const Collating& Collates() const {
        if (!collating_) collating_ = FoldCollations();
        return *collating_;
    }
    TextOrder Order() const { return Collates().order; }

    // What tells this node from another of its class with equal parts and type.
    virtual std::string Detail() const { return {}; }

    // Of a leaf: its place among the leaves of the call that it stands in.
    mutable size_t slot = 0;

  protected:
    // The default lets the parts that are texts settle it.
    virtual Collating FoldCollations() const;

  private:
    mutable std::optional<Collating> collating_;
};

// True where no leaf and nothing volatile stands in the tree.
bool IsFixed(const BoundExpression& expression);
// The collation of all of them together, as an operation on them needs it.
Collating FoldCollations(std::span<const BoundPtr> parts);
// Raises SqlError 468 where COLLATE clauses, or columns that are compared, contradict each other.
// `operation` is as messages call it.
void CheckCollation(const Collating& collating, QStringView operation, bool compares);
// True where both trees compute the same from the same row.
bool SameExpression(const BoundExpression& a, const BoundExpression& b);

}  // namespace quarv::localdb::engine
