// ReturnValue: the final value of an output parameter ([MS-TDS], "RETURNVALUE").
#pragma once

#include <QString>

#include "localdb/tds/Dialect.h"
#include "localdb/tds/RawValue.h"
#include "localdb/tds/Token.h"

namespace quarv::localdb::tds {

struct ReturnValue {
    uint16_t ordinal = 0;  // of the parameter, 0-based
    QString name;          // with its "@"; empty for a positional parameter
    uint8_t status = 1;    // 1: an output parameter
    uint32_t userType = 0;
    uint16_t flags = 0;
    TypeInfo type;
    RawValue value;

    void Encode(ByteWriter& writer, Dialect dialect = Dialect::V74) const;
    // Raises UnexpectedToken and what reading type and value raises.
    static ReturnValue Decode(ByteReader& reader, Dialect dialect = Dialect::V74);
};

}  // namespace quarv::localdb::tds
