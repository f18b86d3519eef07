// ServerMessage: an error or a piece of information ([MS-TDS], "ERROR", "INFO"); the severity says
// which of the two tokens it is.
#pragma once

#include <QString>

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/Dialect.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct ServerMessage {
    static constexpr uint8_t FirstErrorSeverity = 11;
    // UTF-16 units of text that the token's length can state; a longer text is cut.
    static constexpr qsizetype LongestText = 30000;

    int32_t number = 0;
    uint8_t state = 1;
    uint8_t severity = 0;
    QString text;
    QString server;
    QString procedure;
    uint32_t line = 0;  // 1-based; 0 where there is none

    bool IsError() const { return severity >= FirstErrorSeverity; }

    void Encode(ByteWriter& writer, Dialect dialect = Dialect::V74) const;
    // Raises UnexpectedToken, TokenLength and what reading raises.
    static ServerMessage Decode(ByteReader& reader, Dialect dialect = Dialect::V74);

    friend bool operator==(const ServerMessage&, const ServerMessage&) = default;
};

}  // namespace quarv::localdb::tds
