// AllHeaders: what stands before a batch, a procedure call or a transaction request ([MS-TDS],
// "ALL_HEADERS"). Only the transaction header counts; others are checked for length and skipped.
#pragma once

#include <cstdint>

#include "localdb/tds/ByteReader.h"
#include "localdb/tds/ByteWriter.h"

namespace quarv::localdb::tds {

struct AllHeaders {
    uint64_t transaction = 0;  // descriptor that the server gave out at begin; 0: none
    uint32_t outstanding = 1;  // requests of this connection that are under way

    void Encode(ByteWriter& writer) const;
    // Leaves the reader at the request itself. Raises HeadersLength, Truncated.
    static AllHeaders Decode(ByteReader& reader);
};

}  // namespace quarv::localdb::tds
