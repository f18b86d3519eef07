// RpcRequest: a procedure call ([MS-TDS], "RPC Request"), by name or by one of the well-known
// numbers, with its parameters as they came.
#pragma once

#include <QString>
#include <span>
#include <vector>

#include "localdb/tds/AllHeaders.h"
#include "localdb/tds/Dialect.h"
#include "localdb/tds/RawValue.h"

namespace quarv::localdb::tds {

struct RpcParameter {
    static constexpr uint8_t Output = 0x01;   // by reference: its final value is to come back
    static constexpr uint8_t Default = 0x02;  // the procedure's own default is asked for

    QString name;  // with its "@"; empty for a positional one
    uint8_t status = 0;
    TypeInfo type;
    RawValue value;
};

struct RpcCall {
    QString name;              // empty for a call by number
    uint16_t procedureId = 0;  // 0 for a call by name
    uint16_t options = 0;
    std::vector<RpcParameter> parameters;
};

struct RpcRequest {
    AllHeaders headers;
    std::vector<RpcCall> calls;  // at least one

    void Encode(ByteWriter& writer, Dialect dialect = Dialect::V74) const;
    // A whole message. Raises ParameterType for a data type that is not served, and whatever the
    // parts raise; the position is that of the type's code.
    static RpcRequest Decode(std::span<const std::byte> body, Dialect dialect = Dialect::V74);
};

// The name behind a well-known number ("sp_executesql" for 10); empty for an unknown one.
QString ProcedureNameOf(uint16_t procedureId);

}  // namespace quarv::localdb::tds
