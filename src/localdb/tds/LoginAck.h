// LoginAck: the login has succeeded ([MS-TDS], "LOGINACK").
#pragma once

#include <QString>

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/Prelogin.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct LoginAck {
    uint8_t interface = 1;             // T-SQL
    uint32_t tdsVersion = 0x74000004;  // big-endian on the wire, unlike LOGIN7's
    QString program;
    ProgramVersion version;

    void Encode(ByteWriter& writer) const;
    // Raises UnexpectedToken, TokenLength.
    static LoginAck Decode(ByteReader& reader);

    friend bool operator==(const LoginAck&, const LoginAck&) = default;
};

}  // namespace quarv::localdb::tds
