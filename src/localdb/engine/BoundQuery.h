// BoundQuery: a query whose sources, columns and types are known, and the expressions that contain
// queries. It writes itself as storage SQL.
#pragma once

#include <optional>

#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/ResultSink.h"
#include "localdb/tsql/Query.h"

namespace quarv::localdb::engine {

struct BoundQuery;

struct BoundSource {
    // One of: a storage table or a catalogue view's SQL; a query; a join.
    std::string sql;
    std::unique_ptr<BoundQuery> query;
    std::unique_ptr<BoundSource> left, right;
    tsql::JoinKind join = tsql::JoinKind::Inner;
    BoundPtr on;
    std::string alias;

    void Write(SqlWriter& writer) const;
};

struct BoundOrder {
    BoundPtr expression;  // or
    size_t ordinal = 0;   // the number of an item, 1-based
    bool descending = false;
};

struct BoundQuery {
    std::vector<Column> columns;
    std::vector<BoundPtr> items;  // one for each column
    // Where the query assigns: the variable of each item.
    std::vector<size_t> assigned;
    std::unique_ptr<BoundSource> from;  // or nothing
    BoundPtr where, having;             // or nothing
    std::vector<BoundPtr> groupBy;
    std::vector<BoundOrder> orderBy;
    BoundPtr top, offset, fetch;  // bigint, or nothing
    bool distinct = false;
    bool grouped = false;

    // The result columns are named "c1", "c2", ...
    void Write(SqlWriter& writer) const;

  private:
    void WriteItems(SqlWriter& writer) const;
    void WriteOrder(SqlWriter& writer) const;
    void WriteLimit(SqlWriter& writer) const;
};

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

  private:
    std::unique_ptr<BoundQuery> query_;
};

}  // namespace quarv::localdb::engine
