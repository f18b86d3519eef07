// Aggregate: COUNT, COUNT_BIG, SUM, AVG, MIN and MAX over the rows of a group.
#pragma once

#include "localdb/engine/BoundExpression.h"

namespace quarv::localdb::engine {

enum class AggregateKind : uint8_t { Count, CountBig, Sum, Average, Minimum, Maximum };

// Its part, where it has one, is the argument.
class BoundAggregate : public BoundExpression {
  public:
    BoundAggregate(AggregateKind kind, bool distinct) : kind_(kind), distinct_(distinct) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    bool IsAggregate() const override { return true; }
    std::string Detail() const override;

  private:
    void WriteArgument(SqlWriter& writer) const;

    AggregateKind kind_;
    bool distinct_;
};

// In any letter case.
bool IsAggregateName(const QString& name);
// `argument` is nothing for COUNT(*). Raises SqlError 102 or 8117.
BoundPtr MakeAggregate(const QString& name, BoundPtr argument, bool distinct);

}  // namespace quarv::localdb::engine
