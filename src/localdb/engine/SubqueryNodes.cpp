#include "localdb/engine/SubqueryNodes.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

// An address: equal only to itself.
std::string Identity(const void* object) {
    return std::to_string(reinterpret_cast<uintptr_t>(object));
}

}  // namespace

BoundSubquery::BoundSubquery(std::unique_ptr<BoundQuery> query) : query_(std::move(query)) {
    type = query_->items.front()->type;
}

BoundSubquery::~BoundSubquery() = default;

std::string BoundSubquery::Detail() const {
    return Identity(this);
}

Collating BoundSubquery::FoldCollations() const {
    return query_->items.front()->Collates();
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
    CheckCollation(Collates(), u"equal to", true);
}

Collating BoundInQuery::FoldCollations() const {
    if (ClassOf(parts[0]->type) != TypeClass::Text) return {};
    Collating folded = parts[0]->Collates();
    folded.Meet(query_->items.front()->Collates());
    folded.Settle();
    return folded;
}

BoundInQuery::~BoundInQuery() = default;

std::string BoundInQuery::Detail() const {
    return Identity(this);
}

void BoundInQuery::Write(SqlWriter& writer) const {
    writer.Collated(*parts[0], Order());
    writer.Text(" IN (");
    query_->Write(writer);
    writer.Text(")");
}

BoundQuantified::BoundQuantified(BoundPtr comparison, std::unique_ptr<BoundQuery> query,
                                 std::string alias, bool all)
    : query_(std::move(query)), alias_(std::move(alias)), all_(all) {
    parts.push_back(std::move(comparison));
}

BoundQuantified::~BoundQuantified() = default;

std::string BoundQuantified::Detail() const {
    return Identity(this);
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
