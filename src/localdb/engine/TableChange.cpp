#include "localdb/engine/TableChange.h"

#include "localdb/engine/ExpressionBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/tsql/BatchParser.h"

namespace quarv::localdb::engine {

void TableChange::StoreComputed(TableInfo& after) {
    bool more = false;
    for (const ColumnInfo& column : after.columns) {
        const ColumnInfo* old = before_.FindColumn(column.id);
        more = more || (column.IsComputed() && column.stored && (!old || !old->stored));
    }
    if (!more) return;
    // An index that is only now being made comes behind.
    TableInfo known = after;
    known.indexes = before_.indexes;
    Rebuild(known);
    for (const ColumnInfo& column : after.columns) metadata_.UpdateColumn(after.object.id, column);
}

// What a computed column can be computed from.
Source TableChange::StoredColumns() const {
    Source source;
    source.name = before_.object.name;
    for (const ColumnInfo& column : before_.columns) {
        if (column.IsComputed()) continue;
        SourceColumn entry;
        entry.name = column.name;
        entry.type = column.type;
        entry.nullable = column.nullable;
        entry.sql = column.StorageName();
        source.columns.push_back(std::move(entry));
    }
    return source;
}

void TableChange::Rebuild(TableInfo& after, Values given) {
    Scope scope;
    scope.Add(StoredColumns(), false);
    BindContext context = frame_.NewContext();
    ExpressionBinder binder(context, scope);
    std::vector<BoundPtr> values;
    SqlWriter writer(frame_);
    for (const ColumnInfo& column : after.columns) {
        if (!column.stored) continue;
        const ColumnInfo* old = before_.FindColumn(column.id);
        const auto found = given.find(column.id);
        BoundPtr value;
        if (found != given.end()) {
            value = std::move(found->second);
        } else if (old && old->stored) {
            value = std::make_unique<BoundColumn>(old->StorageName(), old->name, old->type);
        } else if (column.IsComputed()) {
            value = binder.Value(*tsql::ParseExpressionText(column.computedText));
        } else {
            value = std::make_unique<BoundConstant>(SqlValue(), column.type);
        }
        value = ExpressionBinder::Convert(std::move(value), column.type);
        if (!values.empty()) writer.Text(", ");
        writer.Expression(*value);
        values.push_back(std::move(value));
    }
    TableStorage(frame_.Session().store, metadata_).Rebuild(before_, after, writer);
    for (const IndexInfo& index : after.indexes) {
        metadata_.SetStorageKey(after.object.id, index.id, index.storageKey);
    }
}

}  // namespace quarv::localdb::engine
