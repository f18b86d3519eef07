#include "localdb/engine/SessionState.h"

#include "localdb/engine/ParseCache.h"

namespace quarv::localdb::engine {

int SessionOptions::Bits() const {
    // Always on: ANSI_WARNINGS (8), ANSI_PADDING (16), ANSI_NULLS (32), QUOTED_IDENTIFIER (256),
    // ANSI_NULL_DFLT_ON (1024) and CONCAT_NULL_YIELDS_NULL (4096).
    constexpr int Fixed = 8 | 16 | 32 | 256 | 1024 | 4096;
    return Fixed | (implicitTransactions ? 2 : 0) | (cursorCloseOnCommit ? 4 : 0) |
           (arithAbort ? 64 : 0) | (arithIgnore ? 128 : 0) | (noCount ? 512 : 0) |
           (xactAbort ? 16384 : 0);
}

void SessionState::RestoreOptions(const SessionOptions& before) {
    if (options.lockTimeout != before.lockTimeout) store.SetLockTimeout(before.lockTimeout);
    if (options.oneState != before.oneState) transactions.SetOneState(before.oneState);
    options = before;
}

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

std::shared_ptr<ParseCache> SessionState::NewParseCache() {
    return std::make_shared<ParseCache>();
}

}  // namespace quarv::localdb::engine
