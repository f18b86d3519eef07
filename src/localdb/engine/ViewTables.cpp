#include "localdb/engine/ViewTables.h"

#include <algorithm>

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/QueryWalker.h"
#include "localdb/tsql/BatchParser.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::engine {

namespace {

using tsql::ObjectName;

bool IsBare(const ObjectName& name) {
    return name.schema.isEmpty() && name.database.isEmpty();
}

bool IsSame(const ObjectName& a, const ObjectName& b) {
    return SameName(a.name, b.name) && SameName(a.schema, b.schema) &&
           SameName(a.database, b.database);
}

// Knows the names that WITH gives, which are no tables.
class TableWalker : public QueryWalker {
  public:
    explicit TableWalker(const tsql::Query& view) {
        for (const tsql::CommonTable& table : view.with) common_.push_back(table.name);
    }

  protected:
    bool IsStored(const ObjectName& name) const {
        const auto isCommon = [&name](const QString& other) { return SameName(other, name.name); };
        return !IsBare(name) || std::none_of(common_.begin(), common_.end(), isCommon);
    }

  private:
    std::vector<QString> common_;
};

class TableCollector : public TableWalker {
  public:
    using TableWalker::TableWalker;
    std::vector<ObjectName> names;

  private:
    void OnTable(const tsql::NamedTable& table) override {
        const auto same = [&table](const ObjectName& name) { return IsSame(name, table.name); };
        const bool known = std::any_of(names.begin(), names.end(), same);
        if (!known && IsStored(table.name)) names.push_back(table.name);
    }
};

class ColumnCollector : public TableWalker {
  public:
    using TableWalker::TableWalker;
    std::vector<ViewColumn> columns;

  private:
    struct Source {
        QString alias;  // or the table's own name
        ObjectName table;
        bool stored = false;
    };
    using Sources = std::vector<Source>;

    void AddSource(Sources& sources, const tsql::TableSource& source) const;
    void Add(const Source& source, size_t scope, const QString& name);
    void Enter(const tsql::Query& query) override;
    void Leave(const tsql::Query&) override { scopes_.pop_back(); }
    void OnColumn(const ObjectName& name) override;
    void OnStar(const tsql::SelectItem& item) override;

    std::vector<Sources> scopes_;
    int reference_ = 0;
};

void ColumnCollector::AddSource(Sources& sources, const tsql::TableSource& source) const {
    if (source.kind == tsql::TableSourceKind::Join) {
        const auto& join = static_cast<const tsql::Join&>(source);
        AddSource(sources, *join.left);
        AddSource(sources, *join.right);
    } else if (source.kind == tsql::TableSourceKind::Derived) {
        sources.push_back({static_cast<const tsql::DerivedTable&>(source).alias, {}, false});
    } else {
        const auto& table = static_cast<const tsql::NamedTable&>(source);
        const QString& alias = table.alias.isEmpty() ? table.name.name : table.alias;
        sources.push_back({alias, table.name, IsStored(table.name)});
    }
}

void ColumnCollector::Enter(const tsql::Query& query) {
    Sources sources;
    for (const tsql::TableSourcePtr& source : query.from) AddSource(sources, *source);
    scopes_.push_back(std::move(sources));
}

void ColumnCollector::Add(const Source& source, size_t scope, const QString& name) {
    if (!source.stored) return;
    const auto depth = static_cast<int>(scopes_.size() - 1 - scope);
    columns.push_back({reference_, depth, source.table, name});
}

// What stands in front of a column is a table's name or its alias, and in front of that a schema.
void ColumnCollector::OnColumn(const ObjectName& name) {
    ++reference_;
    for (size_t scope = scopes_.size(); scope-- > 0;) {
        for (const Source& source : scopes_[scope]) {
            if (name.schema.isEmpty()) {
                Add(source, scope, name.name);
            } else if (SameName(name.schema, source.alias)) {
                Add(source, scope, name.name);
                return;
            }
        }
    }
}

void ColumnCollector::OnStar(const tsql::SelectItem& item) {
    const QString& asked = item.qualifier.name;
    const size_t innermost = scopes_.size() - 1;
    for (const Source& source : scopes_[innermost]) {
        ++reference_;
        if (asked.isEmpty() || SameName(asked, source.alias)) Add(source, innermost, {});
    }
}

template <typename Collector>
Collector Collect(const QString& source) {
    try {
        const tsql::StatementList statements = tsql::ParseBatch(source);
        if (!statements.empty() && statements.front()->type == tsql::StatementType::CreateView) {
            const auto& view = static_cast<const tsql::CreateView&>(*statements.front());
            Collector collector(*view.query);
            collector.Visit(*view.query);
            return collector;
        }
    } catch (const tsql::SyntaxError&) {
        // What cannot be read names nothing.
    }
    return Collector(tsql::Query());
}

}  // namespace

std::vector<ObjectName> TablesOfView(const QString& source) {
    return Collect<TableCollector>(source).names;
}

std::vector<ViewColumn> ColumnsOfView(const QString& source) {
    return Collect<ColumnCollector>(source).columns;
}

}  // namespace quarv::localdb::engine
