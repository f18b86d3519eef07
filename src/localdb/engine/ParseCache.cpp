#include "localdb/engine/ParseCache.h"

#include "localdb/tsql/BatchParser.h"

namespace quarv::localdb::engine {

ParseCache::Statements ParseCache::Batch(const QString& text) {
    return batches_.Find(text, [](const QString& batch) {
        return std::make_shared<const tsql::StatementList>(tsql::ParseBatch(batch));
    });
}

ParseCache::Expression ParseCache::Value(const QString& text) {
    return values_.Find(
        text, [](const QString& source) { return Expression(tsql::ParseExpressionText(source)); });
}

ParseCache::Expression ParseCache::Condition(const QString& text) {
    return conditions_.Find(
        text, [](const QString& source) { return Expression(tsql::ParseConditionText(source)); });
}

}  // namespace quarv::localdb::engine
