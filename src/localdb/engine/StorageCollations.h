// StorageCollations: the orders that the storage asks this server for: "tsql" of texts, those
// of the other collations ("tsql_lower", ...) and "tsql_offset" of datetimeoffsets. Every
// connection to a database file needs them.
#pragma once

struct sqlite3;

namespace quarv::localdb::engine {

void RegisterCollations(sqlite3* handle);

}  // namespace quarv::localdb::engine
