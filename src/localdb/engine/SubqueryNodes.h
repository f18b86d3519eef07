// SubqueryNodes: the expressions that contain queries.
#pragma once

#include "localdb/engine/BoundQuery.h"

namespace quarv::localdb::engine {

// What they share: the storage computes them whole. `Base` is BoundExpression or BoundCondition.
template <typename Base>
class SubqueryNode : public Base {
  public:
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[this->slot];
    }
    bool IsLeaf() const override { return true; }
    // An address: two queries are never taken for the same.
    std::string Detail() const override {
        return std::to_string(reinterpret_cast<uintptr_t>(this));
    }

  protected:
    explicit SubqueryNode(std::unique_ptr<BoundQuery> query) : query_(std::move(query)) {}

    std::unique_ptr<BoundQuery> query_;
};

// A query in the place of a value: null without a row; raises SqlError 512 for several.
class BoundSubquery : public SubqueryNode<BoundExpression> {
  public:
    explicit BoundSubquery(std::unique_ptr<BoundQuery> query);
    void Write(SqlWriter& writer) const override;

  protected:
    Collating FoldCollations() const override;
};

class BoundExists : public SubqueryNode<BoundCondition> {
  public:
    explicit BoundExists(std::unique_ptr<BoundQuery> query);
    void Write(SqlWriter& writer) const override;
};

// operand IN (query); the operand is its part.
class BoundInQuery : public SubqueryNode<BoundCondition> {
  public:
    BoundInQuery(BoundPtr operand, std::unique_ptr<BoundQuery> query);
    void Write(SqlWriter& writer) const override;

  protected:
    Collating FoldCollations() const override;
};

// operand sign ANY (query), or ALL. Its part compares the operand with the query's column.
class BoundQuantified : public SubqueryNode<BoundCondition> {
  public:
    // `comparison` is of the sign for ANY, of its opposite for ALL; it knows the query as `alias`.
    BoundQuantified(BoundPtr comparison, std::unique_ptr<BoundQuery> query, std::string alias,
                    bool all);
    void Write(SqlWriter& writer) const override;

  private:
    std::string alias_;
    bool all_;
};

}  // namespace quarv::localdb::engine
