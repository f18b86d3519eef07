#include "localdb/engine/SessionState.h"

namespace quarv::localdb::engine {

void SessionState::ChangeDatabase(const QString& name) {
    const DatabaseEntry entry = databases.Acquire(name);
    try {
        store.Attach(entry);
    } catch (...) {
        databases.Release(entry.id);
        throw;
    }
    if (database.id != 0) databases.Release(database.id);
    database = entry;
}

}  // namespace quarv::localdb::engine
