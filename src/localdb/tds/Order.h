// Order: the columns by which the rows are sorted ([MS-TDS], "ORDER").
#pragma once

#include <vector>

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct Order {
    std::vector<uint16_t> columns;  // 1-based

    void Encode(ByteWriter& writer) const;
    // Raises UnexpectedToken, TokenLength.
    static Order Decode(ByteReader& reader);
};

}  // namespace quarv::localdb::tds
