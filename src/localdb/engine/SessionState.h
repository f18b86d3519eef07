// SessionState: what one session remembers between its statements. Owned by LocalSession; the
// runners of its statements share it.
#pragma once

#include <QString>
#include <map>

#include "localdb/engine/PreparedTexts.h"
#include "localdb/engine/RandomNumbers.h"
#include "localdb/engine/ResultSink.h"
#include "localdb/engine/Store.h"
#include "localdb/engine/SystemObjects.h"
#include "localdb/engine/TemporaryTables.h"
#include "localdb/engine/Transactions.h"

namespace quarv::localdb::engine {

struct SessionOptions {
    bool noCount = false;
    bool xactAbort = false;
    int64_t rowCount = 0;  // SET ROWCOUNT; 0: no limit
    int64_t identityInsertTable = 0;
    int identityInsertDatabase = 0;
};

struct SessionState {
    SessionState(DatabaseList& list, const SystemObjects& system, QString loginName, int spid)
        : databases(list),
          objects(system),
          login(std::move(loginName)),
          id(spid),
          transactions(store),
          temporaries(store, transactions) {
        transactions.SetUndo([this](const auto& undo) { temporaries.Undo(undo); });
    }

    // Makes another database the current one. Raises SqlError 911 or 945 and changes nothing then.
    void ChangeDatabase(const QString& name);

    DatabaseList& databases;
    const SystemObjects& objects;
    const QString login;
    const int id;
    QString hostName;  // what the client calls its machine
    QString appName;   // and itself
    Store store;
    Transactions transactions;
    TemporaryTables temporaries;
    DatabaseEntry database;  // the current one
    SessionOptions options;
    int64_t rowCount = 0;             // @@ROWCOUNT
    int error = 0;                    // @@ERROR
    std::optional<int64_t> identity;  // @@IDENTITY
    int nestLevel = 0;
    RandomNumbers random;    // RAND
    bool capturing = false;  // INSERT ... EXECUTE takes what is sent
    PreparedTexts prepared;
};

}  // namespace quarv::localdb::engine
