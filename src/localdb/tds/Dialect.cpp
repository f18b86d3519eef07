#include "localdb/tds/Dialect.h"

#include <array>

namespace quarv::localdb::tds {

namespace {

struct Version {
    uint32_t number;  // as LOGIN7 states it
    Dialect dialect;
};

// The newest first. A client between two of them speaks the older.
constexpr std::array<Version, 5> Versions{{{0x74000004, Dialect::V74},
                                           {0x730B0003, Dialect::V73B},
                                           {0x730A0003, Dialect::V73A},
                                           {0x72090002, Dialect::V72},
                                           {0x71000000, Dialect::V71}}};
// The first revision of 7.1 is answered in an order of its own.
constexpr uint32_t First71 = 0x71000000;
constexpr uint32_t AckOfFirst71 = 0x07010000;

}  // namespace

std::optional<Dialect> DialectOf(uint32_t loginVersion) {
    if (loginVersion > Versions.front().number) return std::nullopt;
    for (const Version& version : Versions) {
        if (loginVersion >= version.number) return version.dialect;
    }
    return std::nullopt;
}

Dialect NearestDialect(uint32_t loginVersion) {
    const bool newer = loginVersion > Versions.front().number;
    return DialectOf(loginVersion).value_or(newer ? Dialect::V74 : Dialect::V71);
}

uint32_t AckVersionOf(uint32_t loginVersion) {
    return loginVersion == First71 ? AckOfFirst71 : loginVersion;
}

}  // namespace quarv::localdb::tds
