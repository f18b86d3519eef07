// SubqueryNodes: the expressions that contain queries.
#pragma once

#include "localdb/engine/BoundQuery.h"

namespace quarv::localdb::engine {

// A query in the place of a value: null without a row; raises SqlError 512 for several.
class BoundSubquery : public BoundExpression {
  public:
    explicit BoundSubquery(std::unique_ptr<BoundQuery> query);
    ~BoundSubquery() override;
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    // Two queries are never taken for the same.
    std::string Detail() const override;

  protected:
    Collating FoldCollations() const override;

  private:
    std::unique_ptr<BoundQuery> query_;
};

class BoundExists : public BoundCondition {
  public:
    explicit BoundExists(std::unique_ptr<BoundQuery> query);
    ~BoundExists() override;
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    std::string Detail() const override;

  private:
    std::unique_ptr<BoundQuery> query_;
};

// operand IN (query); the operand is its part.
class BoundInQuery : public BoundCondition {
  public:
    BoundInQuery(BoundPtr operand, std::unique_ptr<BoundQuery> query);
    ~BoundInQuery() override;
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    std::string Detail() const override;

  protected:
    Collating FoldCollations() const override;

  private:
    std::unique_ptr<BoundQuery> query_;
};

// operand sign ANY (query), or ALL. Its part compares the operand with the query's column.
class BoundQuantified : public BoundCondition {
  public:
    // `comparison` is of the sign for ANY, of its opposite for ALL; it knows the query as `alias`.
    BoundQuantified(BoundPtr comparison, std::unique_ptr<BoundQuery> query, std::string alias,
                    bool all);
    ~BoundQuantified() override;
    SqlValue Evaluate(const Evaluation& evaluation) const override {
        return evaluation.leaves[slot];
    }
    void Write(SqlWriter& writer) const override;
    bool IsLeaf() const override { return true; }
    std::string Detail() const override;

  private:
    std::unique_ptr<BoundQuery> query_;
    std::string alias_;
    bool all_;
};

}  // namespace quarv::localdb::engine
