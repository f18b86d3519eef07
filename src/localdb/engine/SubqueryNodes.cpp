#include "localdb/engine/SubqueryNodes.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

BoundSubquery::BoundSubquery(std::unique_ptr<BoundQuery> query) : SubqueryNode(std::move(query)) {
    type = query_->items.front()->type;
}

Collating BoundSubquery::FoldCollations() const {
    return query_->items.front()->Collates();
}

void BoundSubquery::Write(SqlWriter& writer) const {
    writer.Text("(SELECT q_single(c1) FROM (");
    query_->Write(writer);
    writer.Text("))");
}

BoundExists::BoundExists(std::unique_ptr<BoundQuery> query) : SubqueryNode(std::move(query)) {
    nullable = false;
}

void BoundExists::Write(SqlWriter& writer) const {
    writer.Text("EXISTS (");
    query_->Write(writer);
    writer.Text(")");
}

BoundInQuery::BoundInQuery(BoundPtr operand, std::unique_ptr<BoundQuery> query)
    : SubqueryNode(std::move(query)) {
    // The operand and the query's column are compared in one type.
    BoundPtr& item = query_->items.front();
    ExpressionBinder::Unify(operand, item);
    parts.push_back(std::move(operand));
    CheckCollation(Collates(), u"equal to", true);
}

Collating BoundInQuery::FoldCollations() const {
    if (ClassOf(parts[0]->type) != TypeClass::Text) return {};
    Collating folded = parts[0]->Collates();
    folded.Meet(query_->items.front()->Collates());
    folded.Settle();
    return folded;
}

void BoundInQuery::Write(SqlWriter& writer) const {
    writer.Collated(*parts[0], Order());
    writer.Text(" IN (");
    query_->Write(writer);
    writer.Text(")");
}

BoundQuantified::BoundQuantified(BoundPtr comparison, std::unique_ptr<BoundQuery> query,
                                 std::string alias, bool all)
    : SubqueryNode(std::move(query)), alias_(std::move(alias)), all_(all) {
    parts.push_back(std::move(comparison));
}

// ALL holds where the opposite holds for none.
void BoundQuantified::Write(SqlWriter& writer) const {
    writer.Text("(SELECT q_any(");
    writer.Expression(*parts[0]);
    writer.Text(all_ ? ") = 0 FROM (" : ") FROM (");
    query_->Write(writer);
    writer.Text(") AS " + alias_ + ")");
}

}  // namespace quarv::localdb::engine
