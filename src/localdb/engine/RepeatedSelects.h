// RepeatedSelects: how to run queries of one table that come again and again with other literals
// ("select * from t where id = 5") or with other values of their parameters: their storage SQL,
// without reading, binding and writing them anew. Kept are only those in which nothing but the
// bound values follows from these: columns compared with literals and parameters of their own
// class. Good for as long as the catalogue is unchanged. Bounded in number and in text. Owned by
// the session's ParseCache.
#pragma once

#include <list>
#include <unordered_map>

#include "localdb/engine/CatalogueCache.h"
#include "localdb/engine/ResultSink.h"
#include "localdb/engine/SelectShape.h"
#include "localdb/engine/SqliteStatement.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {
struct Query;
}  // namespace quarv::localdb::tsql

namespace quarv::localdb::engine {

struct BoundQuery;
class Frame;
class ParseCache;
class SqlWriter;

class RepeatedSelects {
  public:
    static constexpr size_t Most = 64;

    // How a query runs.
    struct Plan {
        // Of the first batch of this shape: its lines and kinds are those of every one.
        std::shared_ptr<const tsql::StatementList> tree;
        QString schema, table;
        int databaseId = 0;
        // The cache gives out the same one for as long as the catalogue is unchanged.
        CatalogueCache::Table known;
        std::vector<Column> columns;
        std::string sql;
        // What its values come from, in their order.
        struct Value {
            SqlType type;
            std::optional<size_t> parameter;  // else a literal
            OwnedValue literal;               // of a text with parameters: it is in the text
        };
        std::vector<Value> values;
    };

    class Batch;

    // The running batch where `statement` is all of it, else nothing.
    Batch* RunningAs(const tsql::Statement& statement) const;

  private:
    using Entry = std::pair<QString, std::shared_ptr<const Plan>>;

    std::shared_ptr<const Plan> Find(const QString& key);
    void Keep(const QString& key, std::shared_ptr<const Plan> plan);

    std::list<Entry> entries_;  // the last used first
    std::unordered_map<QString, std::list<Entry>::iterator> byKey_;
    Batch* running_ = nullptr;
};

// One batch from its text to its end.
class RepeatedSelects::Batch {
  public:
    // Raises tsql::SyntaxError.
    Batch(ParseCache& parsed, const QString& text);
    // A text with parameters, which its frame declares in the order of their declarations before
    // anything else.
    Batch(ParseCache& parsed, const QString& text, const QString& declarations);
    ~Batch() { owner_.running_ = around_; }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    const tsql::StatementList& Statements() const { return *statements_; }

    // The query ready to run with this batch's literals; nothing where it is not known, or no
    // longer. Inside a statement that reads.
    std::optional<SqliteStatement> Prepare(Frame& frame) const;
    // Behind Prepare.
    const std::vector<Column>& Columns() const { return plan_->columns; }
    // The batch's own tree, with its own literals: to be run where Prepare gave nothing.
    const tsql::Statement& OwnStatement();
    // Keeps a query that was bound and written, if it is of the kind that can be kept.
    void Learn(Frame& frame, const BoundQuery& bound, const SqlWriter& writer);

  private:
    friend class RepeatedSelects;

    void Begin();
    bool BindValues(SqliteStatement& statement, Frame& frame) const;
    bool FindValues(const tsql::Query& query, const SqlWriter& writer, Frame& frame,
                    std::vector<Plan::Value>& values) const;

    ParseCache& parsed_;
    RepeatedSelects& owner_;
    Batch* const around_;
    const QString& text_;
    const bool hasParameters_ = false;
    std::optional<SelectShape> shape_;
    std::shared_ptr<const Plan> plan_;
    std::shared_ptr<const tsql::StatementList> statements_, own_;
};

}  // namespace quarv::localdb::engine
