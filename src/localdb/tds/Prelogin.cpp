#include "localdb/tds/Prelogin.h"

#include <utility>
#include <vector>

namespace quarv::localdb::tds {

namespace {

enum Option : uint8_t {
    Version = 0,
    EncryptionOption = 1,
    Instance = 2,
    ThreadId = 3,
    Mars = 4,
    FedAuth = 6,
    Terminator = 0xFF,
};

constexpr size_t EntrySize = 5;

using Data = std::span<const std::byte>;

uint8_t First(Data data) {
    return data.empty() ? 0 : std::to_integer<uint8_t>(data[0]);
}

void Apply(Prelogin& prelogin, uint8_t option, Data data, size_t at) {
    switch (option) {
        case Version: {
            ByteReader reader(data, ByteReader::Ending::Final, at);
            prelogin.version.major = reader.U8();
            prelogin.version.minor = reader.U8();
            prelogin.version.build = reader.U16Big();
            break;
        }
        case EncryptionOption:
            prelogin.encryption = static_cast<Encryption>(First(data) & 3);
            break;
        case Instance:
            prelogin.instance = QByteArray(reinterpret_cast<const char*>(data.data()),
                                           static_cast<qsizetype>(data.size()));
            break;
        case Mars:
            prelogin.mars = First(data) != 0;
            break;
        case FedAuth:
            prelogin.fedAuth = First(data) != 0;
            break;
        default:
            break;
    }
}

QByteArray VersionBytes(const ProgramVersion& version) {
    const char bytes[6] = {static_cast<char>(version.major),
                           static_cast<char>(version.minor),
                           static_cast<char>(version.build >> 8),
                           static_cast<char>(version.build & 0xFF),
                           0,
                           0};
    return QByteArray(bytes, sizeof bytes);
}

}  // namespace

void Prelogin::Encode(ByteWriter& writer) const {
    std::vector<std::pair<uint8_t, QByteArray>> options{
        {Version, VersionBytes(version)},
        {EncryptionOption, QByteArray(1, static_cast<char>(encryption))},
        {Instance, instance.isEmpty() ? QByteArray(1, '\0') : instance},
        {ThreadId, QByteArray()},
        {Mars, QByteArray(1, mars ? '\1' : '\0')},
    };
    if (fedAuth) options.emplace_back(FedAuth, QByteArray(1, *fedAuth ? '\1' : '\0'));

    size_t offset = options.size() * EntrySize + 1;
    for (const auto& [option, data] : options) {
        writer.U8(option);
        writer.U16Big(static_cast<uint16_t>(offset));
        writer.U16Big(static_cast<uint16_t>(data.size()));
        offset += static_cast<size_t>(data.size());
    }
    writer.U8(Terminator);
    for (const auto& [option, data] : options) {
        writer.Bytes(std::as_bytes(std::span(data.data(), static_cast<size_t>(data.size()))));
    }
}

Prelogin Prelogin::Decode(std::span<const std::byte> body) {
    Prelogin prelogin;
    ByteReader reader(body);
    for (;;) {
        const uint8_t option = reader.U8();
        if (option == Terminator) return prelogin;
        const size_t at = reader.Position();
        const size_t offset = reader.U16Big();
        const size_t length = reader.U16Big();
        if (length > 0 && (offset > body.size() || length > body.size() - offset)) {
            throw ProtocolError(Fault::PreloginEntry, at);
        }
        Apply(prelogin, option, length == 0 ? Data{} : body.subspan(offset, length), offset);
    }
}

}  // namespace quarv::localdb::tds
