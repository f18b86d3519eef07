// RepeatedSelects: how to run queries of one table that come again and again with other literals
// ("select * from t where id = 5"): their storage SQL, without reading, binding and writing them
// anew. Kept are only those in which nothing but the bound values follows from the literals:
// columns compared with literals of their own class. Good for as long as the catalogue is
// unchanged. Bounded in number, and in text by SelectShape. Owned by the session's ParseCache.
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
        std::vector<SqlType> types;  // of its values, a literal's each
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
    ~Batch() { owner_.running_ = nullptr; }
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

    ParseCache& parsed_;
    RepeatedSelects& owner_;
    const QString& text_;
    std::optional<SelectShape> shape_;
    std::shared_ptr<const Plan> plan_;
    std::shared_ptr<const tsql::StatementList> statements_, own_;
};

}  // namespace quarv::localdb::engine
