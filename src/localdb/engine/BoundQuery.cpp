#include "localdb/engine/BoundQuery.h"

#include <algorithm>

#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

std::string Name(char letter, size_t number) {
    return letter + std::to_string(number);
}

bool HasAggregate(const BoundExpression& expression) {
    return expression.IsAggregate() ||
           std::any_of(expression.parts.begin(), expression.parts.end(),
                       [](const BoundPtr& part) { return HasAggregate(*part); });
}

// The direction is always said; what stands in front may be empty.
void WriteDirection(SqlWriter& writer, const BoundOrder& order) {
    if (order.descending) writer.Text(" DESC");
}

}  // namespace

std::string ColumnList(size_t count) {
    std::string list;
    for (size_t i = 1; i <= count; ++i) list += (i > 1 ? ",c" : "c") + std::to_string(i);
    return list;
}

void WriteWith(SqlWriter& writer, const std::vector<BoundCommon>& tables) {
    const char* separator = "WITH RECURSIVE ";
    for (const BoundCommon& table : tables) {
        writer.Text(separator);
        table.Write(writer);
        separator = ", ";
    }
    if (!tables.empty()) writer.Text(" ");
}

void BoundCommon::Write(SqlWriter& writer) const {
    writer.Text(name);
    if (!recursive.empty()) writer.Text("(" + ColumnList(query->items.size()) + ",level)");
    writer.Text(" AS (");
    if (!recursive.empty()) writer.Text("SELECT *,0 FROM (");
    query->Write(writer);
    if (!recursive.empty()) writer.Text(")");
    for (const std::unique_ptr<BoundQuery>& arm : recursive) {
        writer.Text(" UNION ALL ");
        arm->Write(writer);
    }
    writer.Text(")");
}

bool BoundQuery::IsBareGroup() const {
    return grouped && groupBy.empty() &&
           std::none_of(items.begin(), items.end(),
                        [](const BoundPtr& item) { return HasAggregate(*item); });
}

void BoundQuery::WriteItems(SqlWriter& writer) const {
    size_t number = 0;
    const auto write = [&writer, &number](const BoundExpression& item) {
        if (number > 0) writer.Text(",");
        writer.Collated(item);
        writer.Text(" AS " + Name('c', ++number));
    };
    if (asLeaves) {
        for (const BoundExpression* leaf : leaves) write(*leaf);
        if (leaves.empty()) writer.Text("1");
    } else {
        for (const BoundPtr& item : items) write(*item);
    }
    if (!level.empty()) writer.Text("," + level);
}

void BoundQuery::WriteOrder(SqlWriter& writer) const {
    const char* separator = " ORDER BY ";
    for (const BoundOrder& order : orderBy) {
        writer.Text(separator);
        if (order.expression) {
            writer.Collated(*order.expression);
        } else {
            writer.Text(std::to_string(order.ordinal));
        }
        WriteDirection(writer, order);
        separator = ",";
    }
}

void BoundQuery::WriteLimit(SqlWriter& writer) const {
    if (top) {
        writer.Text(" LIMIT ");
        writer.Expression(*top);
    }
    if (!offset) return;
    writer.Text(" LIMIT ");
    if (fetch) {
        writer.Expression(*fetch);
    } else {
        writer.Text("-1");
    }
    writer.Text(" OFFSET ");
    writer.Expression(*offset);
}

// SELECT up to HAVING; `withOrder` adds what the rows are ordered by as columns "o1", "o2", ...
void BoundQuery::WriteBody(SqlWriter& writer, bool withOrder) const {
    writer.Text(distinct ? "SELECT DISTINCT " : "SELECT ");
    WriteItems(writer);
    // The storage takes a query for one group only where an aggregate stands in its list.
    if (IsBareGroup()) writer.Text(",count(*)");
    for (size_t i = 0; withOrder && i < orderBy.size(); ++i) {
        if (!orderBy[i].expression) continue;
        writer.Text(",");
        writer.Collated(*orderBy[i].expression);
        writer.Text(" AS " + Name('o', i + 1));
    }
    if (from) {
        writer.Text(" FROM ");
        from->Write(writer);
    }
    if (where) {
        writer.Text(" WHERE ");
        writer.Expression(*where);
    }
    const char* separator = " GROUP BY ";
    for (const BoundPtr& group : groupBy) {
        writer.Text(separator);
        // A bound value would be read as the number of a result column.
        writer.Collated(*group);
        separator = ",";
    }
    if (having) {
        writer.Text(" HAVING ");
        writer.Expression(*having);
    }
}

void BoundQuery::WriteShareOrder(SqlWriter& writer) const {
    const char* separator = "ORDER BY ";
    for (size_t i = 0; i < orderBy.size(); ++i) {
        const BoundOrder& order = orderBy[i];
        const BoundExpression& key =
            order.expression ? *order.expression : *items[order.ordinal - 1];
        writer.Text(separator);
        writer.Text(order.expression ? Name('o', i + 1) : Name('c', order.ordinal));
        if (ClassOf(key.type) == TypeClass::Text) {
            writer.Text(std::string(" COLLATE ") + StorageName(key.Order()));
        }
        WriteDirection(writer, order);
        separator = ",";
    }
}

// TOP with PERCENT or WITH TIES: each row knows its place and how many rows there are.
void BoundQuery::WriteShare(SqlWriter& writer) const {
    writer.Text("SELECT " + ColumnList(items.size()) + " FROM (SELECT *,");
    writer.Text(topTies ? "rank() OVER (" : "row_number() OVER (");
    WriteShareOrder(writer);
    writer.Text(") AS k,row_number() OVER (");
    WriteShareOrder(writer);
    writer.Text(") AS r,count(*) OVER () AS n FROM (");
    WriteBody(writer, true);
    writer.Text(")) WHERE ");
    writer.Text(topPercent ? "(k - 1) * 100.0 < n * " : "k <= ");
    writer.Expression(*top);
    writer.Text(" ORDER BY r");
}

void BoundQuery::Write(SqlWriter& writer) const {
    WriteWith(writer, with);
    if (topPercent || topTies) {
        WriteShare(writer);
        return;
    }
    const bool bare = IsBareGroup();
    if (bare) writer.Text("SELECT " + ColumnList(items.size()) + " FROM (");
    WriteBody(writer, false);
    WriteOrder(writer);
    WriteLimit(writer);
    if (bare) writer.Text(")");
}

}  // namespace quarv::localdb::engine
