#include "localdb/engine/ChangeQuery.h"

#include "localdb/engine/SqlError.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

using tsql::TableSourceKind;

// The sources of FROM that are no joins themselves, from left to right.
void Collect(const tsql::TableSource& source, std::vector<const tsql::TableSource*>& found) {
    if (source.kind != TableSourceKind::Join) {
        found.push_back(&source);
        return;
    }
    const auto& join = static_cast<const tsql::Join&>(source);
    Collect(*join.left, found);
    Collect(*join.right, found);
}

QString ExposedName(const tsql::TableSource& source) {
    if (source.kind == TableSourceKind::Derived) {
        return static_cast<const tsql::DerivedTable&>(source).alias;
    }
    if (source.kind != TableSourceKind::Table) return {};
    const auto& table = static_cast<const tsql::NamedTable&>(source);
    return table.alias.isEmpty() ? table.name.name : table.alias;
}

const tsql::NamedTable* AsTable(const tsql::TableSource& source) {
    return source.kind == TableSourceKind::Table ? static_cast<const tsql::NamedTable*>(&source)
                                                 : nullptr;
}

// Whether both names mean the same object, without a look into the catalogue.
bool SameObject(const tsql::ObjectName& a, const tsql::ObjectName& b) {
    const auto schema = [](const tsql::ObjectName& name) {
        return name.schema.isEmpty() ? QStringLiteral("dbo") : name.schema;
    };
    return SameName(a.name, b.name) && SameName(schema(a), schema(b)) &&
           SameName(a.database, b.database) && a.isVariable == b.isVariable;
}

// The source of FROM that the target means: an alias comes before a table's own name. Nothing where
// none is meant: the target then stands beside the sources. Raises SqlError 8154.
const tsql::TableSource* FindTarget(const tsql::ObjectName& target, const tsql::Query& rows) {
    std::vector<const tsql::TableSource*> sources;
    for (const tsql::TableSourcePtr& source : rows.from) Collect(*source, sources);
    for (const tsql::TableSource* source : sources) {
        const tsql::NamedTable* table = AsTable(*source);
        const bool own = table && table->alias.isEmpty();
        if (own ? SameObject(table->name, target)
                : target.schema.isEmpty() && SameName(ExposedName(*source), target.name)) {
            return source;
        }
    }
    const tsql::TableSource* found = nullptr;
    for (const tsql::TableSource* source : sources) {
        const tsql::NamedTable* table = AsTable(*source);
        if (!table || !SameObject(table->name, target)) continue;
        if (found) throw SqlError(8154, {target.ToText()}, target.line);
        found = source;
    }
    return found;
}

// What the statement changes: a source of FROM, or the target by itself.
const tsql::TableSource& SourceOf(const tsql::NamedTable& target, const tsql::Query& rows) {
    const tsql::TableSource* listed = FindTarget(target.name, rows);
    if (!listed) return target;
    if (listed->kind == TableSourceKind::Derived &&
        static_cast<const tsql::DerivedTable&>(*listed).function) {
        throw SqlError(208, {target.name.ToText()}, target.line);
    }
    return *listed;
}

}  // namespace

ChangeQuery::ChangeQuery(BindContext& context, const tsql::NamedTable& target,
                         const tsql::Query& rows, const QString& verb)
    : binder_(context, nullptr),
      path_(SourceOf(target, rows), rows.with, context, verb),
      target_(TargetTable::Open(path_.Table(), context, verb)) {
    changed_.source = &SourceOf(target, rows);
    changed_.path = &path_;
    FindKey();
    binder_.SetChanged(changed_, 0);
    query_ = binder_.BindRows(rows, changed_.source == &target ? &target : nullptr);
    AddKey();
}

tsql::ObjectName ChangeQuery::TargetName(const tsql::NamedTable& target, const tsql::Query& rows,
                                         BindContext& context, const QString& verb) {
    return TargetPath(SourceOf(target, rows), rows.with, context, verb).Table();
}

const ColumnInfo* ChangeQuery::FindColumn(const QString& name) const {
    if (IsTable()) return target_.table.FindColumn(name);
    const std::vector<SourceColumn>& columns = TargetSource().columns;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (!SameName(columns[i].name, name)) continue;
        if (!changed_.places[i]) throw SqlError(4406, {changed_.Name()});
        return &target_.table.columns[*changed_.places[i]];
    }
    return nullptr;
}

void ChangeQuery::FindKey() {
    if (const IndexInfo* key = TableStorage::StorageKey(target_.table)) {
        for (const IndexInfo::Key& part : key->keys) {
            const ColumnInfo& column = *target_.table.FindColumn(part.columnId);
            changed_.keyNames.push_back(column.StorageName());
            changed_.keyTypes.push_back(column.type);
        }
    } else {
        changed_.keyNames.emplace_back("rowid");
        changed_.keyTypes.push_back(MakeType(TypeKind::BigInt));
    }
}

void ChangeQuery::AddKey() {
    for (size_t i = 0; i < changed_.keySql.size(); ++i) {
        const std::string& sql = changed_.keySql[i];
        const SqlType& type = changed_.keyTypes[i];
        Add(std::make_unique<BoundColumn>(sql, QString(), type));
        if (!IsJoin()) continue;
        query_->groupBy.push_back(std::make_unique<BoundColumn>(sql, QString(), type));
    }
    if (IsJoin()) RequireKey();
}

// On the far side of an outer join the target may be missing.
void ChangeQuery::RequireKey() {
    auto present = std::make_unique<BoundIsNull>(true);
    present->parts.push_back(std::make_unique<BoundColumn>(changed_.keySql.front(), QString(),
                                                           changed_.keyTypes.front()));
    if (!query_->where) {
        query_->where = std::move(present);
        return;
    }
    auto both = std::make_unique<BoundJunction>(true);
    both->parts.push_back(std::move(query_->where));
    both->parts.push_back(std::move(present));
    query_->where = std::move(both);
}

size_t ChangeQuery::Add(BoundPtr item) {
    query_->items.push_back(std::move(item));
    return query_->items.size() - 1;
}

size_t ChangeQuery::AddOld(size_t column) {
    return Add(changed_.base[column].Bind());
}

std::string ChangeQuery::KeyCondition(int first) const {
    std::string sql;
    for (const std::string& name : changed_.keyNames) {
        sql += (sql.empty() ? " WHERE " : " AND ") + name + " = ?" + std::to_string(first++);
    }
    return sql;
}

SqliteStatement ChangeQuery::Prepare(const Environment& environment, Store& store, int64_t limit) {
    if (limit > 0 && !query_->top) {
        query_->top =
            std::make_unique<BoundConstant>(SqlValue::Integer(limit), MakeType(TypeKind::BigInt));
    }
    writer_ = std::make_unique<SqlWriter>(environment);
    writer_->Text("WITH m AS MATERIALIZED (");
    query_->Write(*writer_);
    writer_->Text(") SELECT * FROM m");
    return writer_->Prepare(store);
}

}  // namespace quarv::localdb::engine
