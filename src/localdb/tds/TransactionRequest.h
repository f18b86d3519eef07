// TransactionRequest: begin, commit, roll back or save without a batch ([MS-TDS], "Transaction
// Manager Request").
#pragma once

#include <QString>
#include <span>

#include "localdb/tds/AllHeaders.h"

namespace quarv::localdb::tds {

struct TransactionRequest {
    enum class Kind : uint16_t { Begin = 5, Commit = 7, Rollback = 8, Save = 9 };

    AllHeaders headers;
    Kind kind = Kind::Begin;
    uint8_t isolation = 0;    // of the transaction that begins; 0: as it is
    QString name;             // of the transaction that ends or begins, or of the savepoint
    bool beginsNext = false;  // Commit, Rollback: the next transaction begins at once
    uint8_t nextIsolation = 0;
    QString nextName;

    void Encode(ByteWriter& writer) const;
    // A whole message. Raises TransactionKind for a request that is none of the four.
    static TransactionRequest Decode(std::span<const std::byte> body);
};

}  // namespace quarv::localdb::tds
