// Dialect: the version of the protocol that a client speaks, as far as versions differ in what goes
// over the wire ([MS-TDS], "LOGINACK", TDSVersion). Codecs that differ take one; the newest is
// their default.
#pragma once

#include <cstdint>
#include <optional>

namespace quarv::localdb::tds {

// In order of age. What each brought:
enum class Dialect : uint8_t {
    V71,   // the oldest that is served
    V72,   // headers before requests, 32-bit lines and user types, 64-bit counts, (max) types, xml
    V73A,  // date, time, datetime2, datetimeoffset
    V73B,  // rows with a bitmap of their nulls
    V74,
};

// What a client speaks that states `loginVersion` in LOGIN7; nothing for one that is not served.
std::optional<Dialect> DialectOf(uint32_t loginVersion);
// The same, and the nearest one for a version that is not served: what its refusal is written in.
Dialect NearestDialect(uint32_t loginVersion);
// The version that LOGINACK answers, as its big-endian number.
uint32_t AckVersionOf(uint32_t loginVersion);

}  // namespace quarv::localdb::tds
