// ParseCache: the trees of the texts that one session runs again and again: batches, statements of
// sp_executesql and prepared ones, procedures and views by their source, defaults and checks. A
// tree follows from its text alone, so none of them grows old. Trees are shared and never changed.
// Owned by the session's state.
#pragma once

#include "localdb/engine/RecentTexts.h"
#include "localdb/engine/RepeatedSelects.h"
#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::engine {

class ParseCache {
  public:
    using Statements = std::shared_ptr<const tsql::StatementList>;
    using Expression = std::shared_ptr<const tsql::Expression>;

    // Each raises tsql::SyntaxError.
    Statements Batch(const QString& text);
    Expression Value(const QString& text);
    Expression Condition(const QString& text);

    RepeatedSelects& Repeated() { return repeated_; }

  private:
    RecentTexts<tsql::StatementList> batches_;
    RecentTexts<tsql::Expression> values_, conditions_;
    RepeatedSelects repeated_;
};

}  // namespace quarv::localdb::engine
