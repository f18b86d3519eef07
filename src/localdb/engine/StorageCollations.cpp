#include "localdb/engine/StorageCollations.h"

#include <sqlite3.h>

#include "localdb/engine/Collation.h"
#include "localdb/engine/CollationNames.h"
#include "localdb/engine/StoredForm.h"

namespace quarv::localdb::engine {

namespace {

template <int (*Compare)(std::string_view, std::string_view)>
int CompareBytes(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return Compare({static_cast<const char*>(a), static_cast<size_t>(sizeA)},
                   {static_cast<const char*>(b), static_cast<size_t>(sizeB)});
}

template <TextOrder Order>
int CompareOrdered(std::string_view a, std::string_view b) {
    return Collation::Compare(a, b, Order);
}

template <TextOrder Order>
void RegisterOrder(sqlite3* handle) {
    sqlite3_create_collation_v2(handle, StorageName(Order), SQLITE_UTF8, nullptr,
                                CompareBytes<CompareOrdered<Order>>, nullptr);
}

}  // namespace

void RegisterCollations(sqlite3* handle) {
    sqlite3_create_collation_v2(handle, "tsql", SQLITE_UTF8, nullptr,
                                CompareBytes<Collation::Compare>, nullptr);
    sqlite3_create_collation_v2(handle, "tsql_offset", SQLITE_UTF8, nullptr,
                                CompareBytes<CompareStoredOffsets>, nullptr);
    RegisterOrder<TextOrder::LowerFirst>(handle);
    RegisterOrder<TextOrder::UpperFirst>(handle);
    RegisterOrder<TextOrder::Letters>(handle);
    RegisterOrder<TextOrder::LettersAndCase>(handle);
    RegisterOrder<TextOrder::CodePage>(handle);
    RegisterOrder<TextOrder::CodePoints>(handle);
    RegisterOrder<TextOrder::UnitBytes>(handle);
}

}  // namespace quarv::localdb::engine
