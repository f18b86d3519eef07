// ReturnStatus: what a procedure's RETURN gave ([MS-TDS], "RETURNSTATUS").
#pragma once

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct ReturnStatus {
    int32_t value = 0;

    void Encode(ByteWriter& writer) const;
    static ReturnStatus Decode(ByteReader& reader);
};

}  // namespace quarv::localdb::tds
