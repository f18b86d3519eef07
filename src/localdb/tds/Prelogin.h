// Prelogin: the first message of each side ([MS-TDS], "PRELOGIN"): a table of options and their
// data. Options that this server does not know are passed over, as the protocol asks.
#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <span>

#include "localdb/tds/ByteReader.h"
#include "localdb/tds/ByteWriter.h"

namespace quarv::localdb::tds {

enum class Encryption : uint8_t { Off = 0, On = 1, NotSupported = 2, Required = 3 };

// A program's version as PRELOGIN and LOGINACK carry it.
struct ProgramVersion {
    uint8_t major = 0;
    uint8_t minor = 0;
    uint16_t build = 0;

    friend bool operator==(const ProgramVersion&, const ProgramVersion&) = default;
};

struct Prelogin {
    ProgramVersion version;
    Encryption encryption = Encryption::NotSupported;
    QByteArray instance;          // with its NUL, as it came; empty where none was sent
    bool mars = false;            // several results at once on one connection
    std::optional<bool> fedAuth;  // absent: not part of the message

    void Encode(ByteWriter& writer) const;
    // A whole message. Raises PreloginEntry, Truncated.
    static Prelogin Decode(std::span<const std::byte> body);
};

}  // namespace quarv::localdb::tds
