#include "localdb/engine/BoundQuery.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SqlWriter.h"

namespace quarv::localdb::engine {

namespace {

const char* JoinWords(tsql::JoinKind kind) {
    constexpr const char* Words[] = {" JOIN ", " LEFT JOIN ", " RIGHT JOIN ", " FULL JOIN ",
                                     " CROSS JOIN "};
    return Words[static_cast<size_t>(kind)];
}

// An address: equal only to itself.
std::string Identity(const void* object) {
    return std::to_string(reinterpret_cast<uintptr_t>(object));
}

}  // namespace

void BoundSource::Write(SqlWriter& writer) const {
    if (left) {
        left->Write(writer);
        writer.Text(JoinWords(join));
        // The right side of a join may be a join in parentheses.
        if (right->left) writer.Text("(");
        right->Write(writer);
        if (right->left) writer.Text(")");
        if (on) {
            writer.Text(" ON ");
            writer.Expression(*on);
        }
        return;
    }
    if (query) {
        writer.Text("(");
        query->Write(writer);
        writer.Text(")");
    } else {
        writer.Text(sql);
    }
    writer.Text(" AS " + alias);
}

void BoundQuery::WriteItems(SqlWriter& writer) const {
    int number = 0;
    for (const BoundPtr& item : items) {
        if (number > 0) writer.Text(",");
        writer.Collated(*item);
        writer.Text(" AS c" + std::to_string(++number));
    }
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
        if (order.descending) writer.Text(" DESC");
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

void BoundQuery::Write(SqlWriter& writer) const {
    writer.Text(distinct ? "SELECT DISTINCT " : "SELECT ");
    WriteItems(writer);
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
    WriteOrder(writer);
    WriteLimit(writer);
}

BoundSubquery::BoundSubquery(std::unique_ptr<BoundQuery> query) : query_(std::move(query)) {
    type = query_->items.front()->type;
}

BoundSubquery::~BoundSubquery() = default;

std::string BoundSubquery::Detail() const {
    return Identity(this);
}

void BoundSubquery::Write(SqlWriter& writer) const {
    writer.Text("(SELECT q_single(c1) FROM (");
    query_->Write(writer);
    writer.Text("))");
}

BoundExists::BoundExists(std::unique_ptr<BoundQuery> query) : query_(std::move(query)) {
    nullable = false;
}

BoundExists::~BoundExists() = default;

std::string BoundExists::Detail() const {
    return Identity(this);
}

void BoundExists::Write(SqlWriter& writer) const {
    writer.Text("EXISTS (");
    query_->Write(writer);
    writer.Text(")");
}

BoundInQuery::BoundInQuery(BoundPtr operand, std::unique_ptr<BoundQuery> query)
    : query_(std::move(query)) {
    // The operand and the query's column are compared in one type.
    BoundPtr& item = query_->items.front();
    ExpressionBinder::Unify(operand, item);
    parts.push_back(std::move(operand));
}

BoundInQuery::~BoundInQuery() = default;

std::string BoundInQuery::Detail() const {
    return Identity(this);
}

void BoundInQuery::Write(SqlWriter& writer) const {
    writer.Collated(*parts[0]);
    writer.Text(" IN (");
    query_->Write(writer);
    writer.Text(")");
}

}  // namespace quarv::localdb::engine
