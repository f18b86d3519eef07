// Login7: the client's login record ([MS-TDS], "LOGIN7"): who it is, what it wants to open. Every
// offset and length in it is checked against the record before it is followed.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <span>

#include "localdb/tds/ByteWriter.h"

namespace quarv::localdb::tds {

// Versions of the protocol as LOGIN7 states them.
namespace tds_version {
constexpr uint32_t V70 = 0x70000000;
constexpr uint32_t V72 = 0x72090002;
constexpr uint32_t V73A = 0x730A0003;
constexpr uint32_t V74 = 0x74000004;
}  // namespace tds_version

struct Login7 {
    uint32_t tdsVersion = tds_version::V74;
    uint32_t packetSize = 4096;  // bytes, as the client wishes it; 0: the server's default
    uint32_t clientVersion = 0;
    uint32_t clientPid = 0;
    uint32_t connectionId = 0;
    uint8_t flags1 = 0;
    uint8_t flags2 = 0;
    uint8_t typeFlags = 0;
    uint8_t flags3 = 0;
    int32_t timeZone = 0;
    uint32_t lcid = 0;
    QString hostName;
    QString userName;
    QString password;  // in clear; never logged
    QString appName;
    QString serverName;
    QString libraryName;
    QString language;
    QString database;
    QString attachFile;
    QString newPassword;
    QByteArray sspi;
    QByteArray features;  // the feature list with its terminator, as it came; empty without one

    static constexpr uint8_t IntegratedSecurity = 0x80;  // of flags2
    static constexpr uint8_t HasExtension = 0x10;        // of flags3

    bool Integrated() const { return (flags2 & IntegratedSecurity) != 0; }

    void Encode(ByteWriter& writer) const;
    // A whole message. Raises LoginLength, LoginField, LoginExtension, Truncated.
    static Login7 Decode(std::span<const std::byte> body);
};

}  // namespace quarv::localdb::tds
