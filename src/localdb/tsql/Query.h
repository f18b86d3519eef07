// Query: the tree of a SELECT: what, from where, under which condition, in which order. Used by the
// SELECT statement, by views and by whatever takes its rows from a query.
#pragma once

#include "localdb/tsql/Expression.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct SelectItem {
    ExpressionPtr expression;  // nothing for "*"
    QString alias;             // empty: the expression's own name, if it has one
    ObjectName qualifier;      // of "t.*"; its name is empty for "*"
    QString variable;          // "@x" of "@x = expression", else empty
    int line = 0;
};

enum class TableSourceKind : uint8_t { Table, Derived, Join };

struct TableSource {
    const TableSourceKind kind;
    int line = 0;

    virtual ~TableSource();

  protected:
    explicit TableSource(TableSourceKind k) : kind(k) {}
};

using TableSourcePtr = std::unique_ptr<TableSource>;

struct NamedTable : TableSource {
    NamedTable() : TableSource(TableSourceKind::Table) {}
    ObjectName name;
    QString alias;  // empty: none
};

struct DerivedTable : TableSource {
    DerivedTable() : TableSource(TableSourceKind::Derived) {}
    std::unique_ptr<Query> query;
    QString alias;
    std::vector<QString> columns;  // empty: the query's own names
};

enum class JoinKind : uint8_t { Inner, Left, Right, Full, Cross };

struct Join : TableSource {
    Join() : TableSource(TableSourceKind::Join) {}
    JoinKind join = JoinKind::Inner;
    TableSourcePtr left, right;
    ExpressionPtr on;  // nothing for a cross join
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

struct Query {
    static constexpr size_t MaxItems = 4096;

    bool distinct = false;
    ExpressionPtr top;  // or nothing
    std::vector<SelectItem> items;
    std::unique_ptr<ObjectName> into;  // the new table of SELECT INTO, or nothing
    std::vector<TableSourcePtr> from;  // several: a cross join
    ExpressionPtr where;
    ExpressionList groupBy;
    ExpressionPtr having;
    std::vector<OrderItem> orderBy;
    ExpressionPtr offset, fetch;  // or nothing
    int line = 0;
};

// Reads a query up to its end, ORDER BY included.
std::unique_ptr<Query> ParseQuery(TokenReader& reader);

}  // namespace quarv::localdb::tsql
