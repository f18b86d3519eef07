// SessionState: what one session remembers between its statements. Owned by LocalSession; the
// runners of its statements share it.
#pragma once

#include <QString>
#include <map>
#include <string>

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
    bool arithAbort = true;
    bool arithIgnore = false;
    bool cursorCloseOnCommit = false;
    bool implicitTransactions = false;
    bool noExec = false;
    int64_t rowCount = 0;  // SET ROWCOUNT; 0: no limit
    int64_t identityInsertTable = 0;
    int identityInsertDatabase = 0;
    int dateFirst = 7;     // 1 is Monday
    int lockTimeout = -1;  // milliseconds; -1: the server's own limit
    int textSize = 2147483647;
    bool oneState = false;  // REPEATABLE READ and above

    int Bits() const;  // @@OPTIONS
};

class ParseCache;

struct SessionState {
    SessionState(DatabaseList& list, const SystemObjects& system, QString loginName, int spid)
        : databases(list),
          objects(system),
          login(std::move(loginName)),
          id(spid),
          transactions(store, spid),
          temporaries(store, transactions) {
        transactions.SetUndo([this](const auto& undo) { temporaries.Undo(undo); });
    }

    // Makes another database the current one. Raises SqlError 911 or 945 and changes nothing then.
    void ChangeDatabase(const QString& name);
    // The options as they were, where a procedure or the session ends.
    void RestoreOptions(const SessionOptions& before);

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
    int captureLevel = 0;    // @@TRANCOUNT where that began
    PreparedTexts prepared;
    int tries = 0;                    // TRY blocks that are running, in every frame
    const Message* caught = nullptr;  // what the running CATCH block caught
    std::string contextInfo;  // SET CONTEXT_INFO: 128 bytes, or empty where it was never set
    // Never nothing.
    std::shared_ptr<ParseCache> parsed = NewParseCache();

  private:
    static std::shared_ptr<ParseCache> NewParseCache();
};

}  // namespace quarv::localdb::engine
