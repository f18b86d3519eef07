// SqlBatch: a batch of statements as text ([MS-TDS], "SQLBatch").
#pragma once

#include <QString>
#include <span>

#include "localdb/tds/AllHeaders.h"
#include "localdb/tds/Dialect.h"

namespace quarv::localdb::tds {

struct SqlBatch {
    AllHeaders headers;
    QString sql;

    void Encode(ByteWriter& writer, Dialect dialect = Dialect::V74) const;
    // A whole message. Raises HeadersLength, TextLength, Truncated.
    static SqlBatch Decode(std::span<const std::byte> body, Dialect dialect = Dialect::V74);
};

}  // namespace quarv::localdb::tds
