// Aggregate: COUNT, SUM, AVG, MIN, MAX and their kin over the rows of a group or of a window.
#pragma once

#include <optional>

#include "localdb/engine/WindowFunction.h"

namespace quarv::localdb::engine {

enum class AggregateKind : uint8_t {
    Count,
    CountBig,
    CountApproximately,  // which is exact here
    Sum,
    Average,
    Minimum,
    Maximum,
    Deviation,
    DeviationOfAll,
    Variance,
    VarianceOfAll,
    Checksum,
    Joined,  // STRING_AGG
};

// Its first part, where it has one, is the argument; of STRING_AGG, the second is the separator and
// those behind it are what the texts are ordered by.
class BoundAggregate : public BoundExpression {
  public:
    BoundAggregate(AggregateKind kind, bool distinct) : kind_(kind), distinct_(distinct) {}
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    bool IsAggregate() const override { return !over; }
    bool IsWindow() const override { return over.has_value(); }
    std::string Detail() const override;

    std::optional<BoundOver> over;
    std::vector<bool> descending;  // of STRING_AGG's order

  protected:
    Collating FoldCollations() const override;

  private:
    void WriteCall(SqlWriter& writer, const char* name) const;
    void WriteJoined(SqlWriter& writer) const;

    AggregateKind kind_;
    bool distinct_;
};

// In any letter case.
bool IsAggregateName(const QString& name);
// The number of arguments that the aggregate takes.
size_t AggregateArguments(const QString& name);
// `arguments` is empty for COUNT(*). Raises SqlError 102, 8116 or 8117.
std::unique_ptr<BoundAggregate> MakeAggregate(const QString& name, std::vector<BoundPtr> arguments,
                                              bool distinct);

}  // namespace quarv::localdb::engine
