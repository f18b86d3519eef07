#include "localdb/engine/StorageCollations.h"

#include <sqlite3.h>

#include "localdb/engine/Collation.h"
#include "localdb/engine/StoredForm.h"

namespace quarv::localdb::engine {

namespace {

template <int (*Compare)(std::string_view, std::string_view)>
int CompareBytes(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return Compare({static_cast<const char*>(a), static_cast<size_t>(sizeA)},
                   {static_cast<const char*>(b), static_cast<size_t>(sizeB)});
}

}  // namespace

void RegisterCollations(sqlite3* handle) {
    sqlite3_create_collation_v2(handle, "tsql", SQLITE_UTF8, nullptr,
                                CompareBytes<Collation::Compare>, nullptr);
    sqlite3_create_collation_v2(handle, "tsql_offset", SQLITE_UTF8, nullptr,
                                CompareBytes<CompareStoredOffsets>, nullptr);
}

}  // namespace quarv::localdb::engine
