#include "localdb/engine/ObjectInfo.h"

#include <algorithm>

#include "localdb/engine/Collation.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

char16_t Folded(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

}  // namespace

// Where two letters of ASCII differ, whatever stands behind them, so do the names.
bool SameName(const QString& a, const QString& b) {
    const qsizetype shared = std::min(a.size(), b.size());
    bool ascii = true;
    for (qsizetype i = 0; i < shared && ascii; ++i) {
        const char16_t x = a[i].unicode(), y = b[i].unicode();
        ascii = (x | y) < 0x80;
        if (ascii && Folded(x) != Folded(y)) return false;
    }
    if (ascii && a.size() == b.size()) return true;
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

const IndexInfo* TableInfo::FindIndex(const QString& name) const {
    const auto found =
        std::find_if(indexes.begin(), indexes.end(),
                     [&name](const IndexInfo& index) { return SameName(index.name, name); });
    return found != indexes.end() ? &*found : nullptr;
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
