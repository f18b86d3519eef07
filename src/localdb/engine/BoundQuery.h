// BoundQuery: a query whose sources, columns and types are known. It writes itself as storage SQL.
#pragma once

#include <optional>

#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/ResultSink.h"
#include "localdb/tsql/Query.h"

namespace quarv::localdb::engine {

struct BoundQuery;

struct BoundSource {
    // One of: a storage table, a table of WITH or a catalogue view's SQL; a query; queries with
    // set operators between them; rows of values; packed rows; first, last and step of a series of
    // numbers; a join.
    std::string sql;
    std::unique_ptr<BoundQuery> query;
    std::vector<std::unique_ptr<BoundQuery>> arms;
    std::vector<tsql::SetOperator> operators;
    std::vector<std::vector<BoundPtr>> rows;
    BoundPtr packed;
    std::vector<BoundPtr> series;
    bool signedByOrder = false;  // the step counts down where the series does
    std::unique_ptr<BoundSource> left, right;
    tsql::JoinKind join = tsql::JoinKind::Inner;
    BoundPtr on;
    std::string alias;
    size_t width = 0;  // the number of its columns; of all but storage tables and joins

    void Write(SqlWriter& writer) const;

  private:
    void WriteJoin(SqlWriter& writer) const;
    void WriteApply(SqlWriter& writer) const;
    void WriteContent(SqlWriter& writer) const;
    void WriteArms(SqlWriter& writer, size_t count) const;
    void WriteRows(SqlWriter& writer) const;
    void WriteSeries(SqlWriter& writer) const;
};

struct BoundOrder {
    BoundPtr expression;  // or
    size_t ordinal = 0;   // the number of an item, 1-based
    bool descending = false;
};

// A table of WITH: its query, and where it refers to itself, the queries that do.
struct BoundCommon {
    std::string name;  // "w1", "w2", ...
    std::unique_ptr<BoundQuery> query;
    std::vector<std::unique_ptr<BoundQuery>> recursive;

    void Write(SqlWriter& writer) const;
};

struct BoundQuery {
    std::vector<BoundCommon> with;
    std::vector<Column> columns;
    std::vector<BoundPtr> items;  // one for each column
    // Where the query assigns: the variable of each item.
    std::vector<size_t> assigned;
    // Written instead of the items, where `asLeaves`: what the items are computed from.
    std::vector<const BoundExpression*> leaves;
    bool asLeaves = false;
    std::unique_ptr<BoundSource> from;  // or nothing
    BoundPtr where, having;             // or nothing
    std::vector<BoundPtr> groupBy;
    std::vector<BoundOrder> orderBy;
    BoundPtr top, offset, fetch;  // bigint, or nothing; a percentage is float
    bool topPercent = false, topTies = false;
    bool distinct = false;
    bool grouped = false;
    // Of a query that refers to its own WITH table: one more column, how deep it is.
    std::string level;

    // The result columns are named "c1", "c2", ...
    void Write(SqlWriter& writer) const;
    // True where it is no arm of a set operation as it stands.
    bool NeedsWrapping() const { return top || offset || !orderBy.empty() || IsBareGroup(); }

  private:
    bool IsBareGroup() const;
    void WriteItems(SqlWriter& writer) const;
    void WriteBody(SqlWriter& writer, bool withOrder) const;
    void WriteShare(SqlWriter& writer) const;
    void WriteShareOrder(SqlWriter& writer) const;
    void WriteOrder(SqlWriter& writer) const;
    void WriteLimit(SqlWriter& writer) const;
};

// "WITH w1 AS (...), ... ", or nothing.
void WriteWith(SqlWriter& writer, const std::vector<BoundCommon>& tables);
// "c1,c2,..." up to `count`, for the list of a query around another.
std::string ColumnList(size_t count);

}  // namespace quarv::localdb::engine
