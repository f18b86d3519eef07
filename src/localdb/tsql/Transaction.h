// Transaction: BEGIN, COMMIT, ROLLBACK and SAVE TRANSACTION.
#pragma once

#include <QString>

#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

enum class TransactionVerb : uint8_t { Begin, Commit, Rollback, Save };

struct Transaction : Statement {
    Transaction() : Statement(StatementType::Transaction) {}
    TransactionVerb verb = TransactionVerb::Begin;
    QString name;      // of the transaction or savepoint; empty: none
    QString variable;  // the one that holds the name, else empty
};

// COMMIT, ROLLBACK and SAVE.
StatementPtr ParseTransaction(TokenReader& reader);
// BEGIN TRANSACTION; the word BEGIN was taken.
StatementPtr ParseBeginTransaction(TokenReader& reader);

}  // namespace quarv::localdb::tsql
