// Done: the end of a statement (DONE), of a statement within a procedure (DONEINPROC) or of the
// procedure (DONEPROC) ([MS-TDS], "DONE").
#pragma once

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/Dialect.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct Done {
    // Bits of the status.
    static constexpr uint16_t More = 0x0001;
    static constexpr uint16_t Error = 0x0002;
    static constexpr uint16_t InTransaction = 0x0004;
    static constexpr uint16_t Count = 0x0010;  // `count` is valid
    static constexpr uint16_t Attention = 0x0020;

    Token kind = Token::Done;  // or DoneProc, DoneInProc
    uint16_t status = 0;
    uint16_t command = 0;
    uint64_t count = 0;

    void Encode(ByteWriter& writer, Dialect dialect = Dialect::V74) const;
    static Done Decode(ByteReader& reader, Dialect dialect = Dialect::V74);

    friend bool operator==(const Done&, const Done&) = default;
};

}  // namespace quarv::localdb::tds
