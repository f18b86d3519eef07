#include "localdb/engine/ObjectInfo.h"

#include <algorithm>

#include "localdb/engine/Collation.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

bool SameName(const QString& a, const QString& b) {
    // Most names that are compared differ in their first letter or are equal.
    if (a == b) return true;
    return Collation::Compare(ToUtf8(a), ToUtf8(b)) == 0;
}

const ColumnInfo* TableInfo::FindColumn(const QString& name) const {
    const auto found = std::find_if(columns.begin(), columns.end(), [&name](const ColumnInfo& c) {
        return SameName(c.name, name);
    });
    return found != columns.end() ? &*found : nullptr;
}

const ColumnInfo* TableInfo::FindColumn(int id) const {
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [id](const ColumnInfo& c) { return c.id == id; });
    return found != columns.end() ? &*found : nullptr;
}

const IndexInfo* TableInfo::Clustered() const {
    const auto found = std::find_if(indexes.begin(), indexes.end(),
                                    [](const IndexInfo& index) { return index.clustered; });
    return found != indexes.end() ? &*found : nullptr;
}

const IndexInfo* TableInfo::StorageKey() const {
    const auto found = std::find_if(indexes.begin(), indexes.end(),
                                    [](const IndexInfo& index) { return index.storageKey; });
    return found != indexes.end() ? &*found : nullptr;
}

size_t TableInfo::PlaceOf(int columnId) const {
    return static_cast<size_t>(FindColumn(columnId) - columns.data());
}

}  // namespace quarv::localdb::engine
