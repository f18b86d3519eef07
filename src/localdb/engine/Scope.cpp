#include "localdb/engine/Scope.h"

#include <algorithm>

#include "localdb/engine/ObjectInfo.h"
#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

std::unique_ptr<BoundColumn> SourceColumn::Bind() const {
    auto node = std::make_unique<BoundColumn>(sql, name, type);
    node->nullable = nullable;
    node->identity = identity;
    node->collation = collation;
    node->computed = computed;
    return node;
}

void Scope::Add(Source source, bool isAlias) {
    for (const Source& other : sources_) {
        const bool same = SameName(other.name, source.name) &&
                          (isAlias || other.schema.isEmpty() || other.schema == source.schema);
        if (!same) continue;
        if (isAlias) throw SqlError(1011, {source.name});
        throw SqlError(1013, {other.name, source.name});
    }
    sources_.push_back(std::move(source));
}

Scope Scope::From(size_t begin) const {
    Scope part(outer_);
    part.sources_.assign(sources_.begin() + static_cast<ptrdiff_t>(begin), sources_.end());
    return part;
}

void Scope::MakeNullable(size_t begin, size_t end) {
    for (size_t i = begin; i < end; ++i) {
        for (SourceColumn& column : sources_[i].columns) column.nullable = true;
    }
}

bool Scope::Matches(const Source& source, const tsql::ObjectName& name) {
    if (name.schema.isEmpty()) return true;
    if (!SameName(source.name, name.schema)) return false;
    return name.database.isEmpty() || SameName(source.schema, name.database);
}

bool Scope::KnowsSource(const tsql::ObjectName& name) const {
    const bool here = std::any_of(sources_.begin(), sources_.end(),
                                  [&name](const Source& source) { return Matches(source, name); });
    return here || (outer_ && outer_->KnowsSource(name));
}

std::unique_ptr<BoundColumn> Scope::TryResolve(const tsql::ObjectName& name) const {
    const SourceColumn* found = nullptr;
    for (const Source& source : sources_) {
        if (!Matches(source, name)) continue;
        for (const SourceColumn& column : source.columns) {
            if (!SameName(column.name, name.name)) continue;
            if (found) throw SqlError(209, {name.name}, name.line);
            found = &column;
        }
    }
    if (!found) return outer_ ? outer_->TryResolve(name) : nullptr;
    return found->Bind();
}

std::unique_ptr<BoundColumn> Scope::Resolve(const tsql::ObjectName& name) const {
    std::unique_ptr<BoundColumn> node = TryResolve(name);
    if (node) return node;
    if (!name.schema.isEmpty() && !KnowsSource(name)) {
        throw SqlError(4104, {name.ToText()}, name.line);
    }
    throw SqlError(207, {name.name}, name.line);
}

const Source& Scope::Find(const tsql::ObjectName& qualifier) const {
    // "schema.table.*" has the table in `name`; a column's name has it in `schema`.
    tsql::ObjectName name;
    name.schema = qualifier.name;
    name.database = qualifier.schema;
    for (const Source& source : sources_) {
        if (Matches(source, name)) return source;
    }
    throw SqlError(107, {qualifier.ToText()}, qualifier.line);
}

}  // namespace quarv::localdb::engine
