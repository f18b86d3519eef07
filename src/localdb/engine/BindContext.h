// BindContext: what binding a statement needs to know: the session's databases and catalogue, the
// declared variables, the system's own views. One per statement; borrows everything.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "localdb/engine/Metadata.h"
#include "localdb/engine/Scope.h"
#include "localdb/engine/SystemObjects.h"
#include "localdb/tsql/ObjectName.h"

namespace quarv::localdb::engine {

class ParseCache;
class VariableTable;

// A table of WITH while the query around it is bound.
struct CommonInfo {
    QString name;
    std::string storage;                // "w1"
    std::vector<SourceColumn> columns;  // sql: "c1", "c2", ... without a source in front
    // Where the part that refers to the table itself is bound: who may, and how often it did.
    const void* recursive = nullptr;
    bool ready = false;
    int references = 0;
    std::string reference;  // the alias of that source
};

class BindContext {
  public:
    static constexpr int MaxViewDepth = 32;

    BindContext(Store& store, const DatabaseList& databases, const DatabaseEntry& current,
                const SystemObjects& system, const VariableTable& variables, ParseCache& parsed);

    // The catalogue of the database that the name means. Raises SqlError 208 where there is no such
    // database, 40515 for another server.
    Metadata MetadataFor(const tsql::ObjectName& name);
    // Raises SqlError 1087 where no table variable of that name is declared.
    const std::shared_ptr<TableInfo>& TableVariable(const tsql::ObjectName& name) const;
    Metadata CurrentMetadata() { return Metadata(store_, current_); }

    const SystemObjects& System() const { return system_; }
    const VariableTable& Variables() const { return variables_; }
    const DatabaseList& Databases() const { return databases_; }
    ParseCache& Parsed() const { return parsed_; }

    // A name for the next row source: "s1", "s2", ...
    std::string NextAlias() { return "s" + std::to_string(++aliases_); }
    // The tables of WITH that names can mean, the innermost query's last.
    CommonInfo* FindCommon(const QString& name) const;
    std::vector<std::shared_ptr<CommonInfo>>& Commons() { return commons_; }
    class CommonsAround;
    int maxRecursion = 100;  // OPTION (MAXRECURSION n); 0: no limit

    // One view inside another; raises SqlError 217 beyond MaxViewDepth. While it lives, names mean
    // what they mean in `database`.
    class InView;

  private:
    Store& store_;
    const DatabaseList& databases_;
    DatabaseEntry current_;
    const SystemObjects& system_;
    const VariableTable& variables_;
    ParseCache& parsed_;
    int aliases_ = 0;
    int viewDepth_ = 0;
    std::vector<std::shared_ptr<CommonInfo>> commons_;
};

// Takes away, at its end, the tables of WITH that were added while it lived.
class BindContext::CommonsAround {
  public:
    explicit CommonsAround(BindContext& context)
        : context_(context), before_(context.commons_.size()) {}
    ~CommonsAround() { context_.commons_.resize(before_); }
    CommonsAround(const CommonsAround&) = delete;
    CommonsAround& operator=(const CommonsAround&) = delete;

  private:
    BindContext& context_;
    size_t before_;
};

class BindContext::InView {
  public:
    InView(BindContext& context, const DatabaseEntry& database);
    ~InView();
    InView(const InView&) = delete;
    InView& operator=(const InView&) = delete;

  private:
    BindContext& context_;
    DatabaseEntry before_;
    std::vector<std::shared_ptr<CommonInfo>> commons_;  // hidden from the view
};

}  // namespace quarv::localdb::engine
