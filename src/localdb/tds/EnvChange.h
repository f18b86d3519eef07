// EnvChange: a change of the session's surroundings ([MS-TDS], "ENVCHANGE").
#pragma once

#include <QByteArray>
#include <QString>

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct EnvChange {
    enum class Kind : uint8_t {
        Database = 1,
        Language = 2,
        PacketSize = 4,  // both as decimal text
        SqlCollation = 7,
        BeginTransaction = 8,
        CommitTransaction = 9,
        RollbackTransaction = 10,
        ResetAcknowledged = 18,
    };

    Kind kind = Kind::Database;
    // The kinds up to PacketSize carry texts, of at most 255 UTF-16 units; the others carry bytes.
    QString newText;
    QString oldText;
    QByteArray newBytes;
    QByteArray oldBytes;

    bool CarriesText() const { return kind <= Kind::PacketSize; }

    static EnvChange OfText(Kind kind, const QString& now, const QString& before);
    static EnvChange OfBytes(Kind kind, const QByteArray& now, const QByteArray& before);

    void Encode(ByteWriter& writer) const;
    // Raises UnexpectedToken, TokenLength (for a kind that it does not know as well).
    static EnvChange Decode(ByteReader& reader);

    friend bool operator==(const EnvChange&, const EnvChange&) = default;
};

}  // namespace quarv::localdb::tds
