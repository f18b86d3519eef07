// Token: the byte that opens each part of a reply ([MS-TDS], "Token Definition").
#pragma once

#include <cstdint>

#include "localdb/tds/ByteReader.h"

namespace quarv::localdb::tds {

enum class Token : uint8_t {
    ReturnStatus = 0x79,
    ColMetadata = 0x81,
    Order = 0xA9,
    Error = 0xAA,
    Info = 0xAB,
    ReturnValue = 0xAC,
    LoginAck = 0xAD,
    Row = 0xD1,
    NbcRow = 0xD2,
    EnvChange = 0xE3,
    Done = 0xFD,
    DoneProc = 0xFE,
    DoneInProc = 0xFF,
};

// Takes the token's byte. Raises UnexpectedToken where another one stands there.
inline void ExpectToken(ByteReader& reader, Token token) {
    if (reader.Peek() != static_cast<uint8_t>(token)) reader.Fail(Fault::UnexpectedToken);
    reader.U8();
}

}  // namespace quarv::localdb::tds
