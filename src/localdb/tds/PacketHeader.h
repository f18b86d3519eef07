// PacketHeader: the eight bytes before every packet ([MS-TDS], "Packet Header"), big-endian.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quarv::localdb::tds {

enum class PacketType : uint8_t {
    Batch = 0x01,
    Rpc = 0x03,
    Reply = 0x04,
    Attention = 0x06,
    Bulk = 0x07,
    Transaction = 0x0E,
    Login7 = 0x10,
    Sspi = 0x11,
    Prelogin = 0x12,
};

// Bits of the status byte.
namespace packet_status {
constexpr uint8_t EndOfMessage = 0x01;
constexpr uint8_t Ignore = 0x02;  // with EndOfMessage: the client takes the message back
constexpr uint8_t ResetConnection = 0x08;
constexpr uint8_t ResetKeepingTransaction = 0x10;
}  // namespace packet_status

struct PacketHeader {
    static constexpr size_t Size = 8;
    static constexpr uint16_t SmallestPacket = 512;
    static constexpr uint16_t LargestPacket = 32767;
    static constexpr uint16_t DefaultPacket = 4096;

    PacketType type = PacketType::Reply;
    uint8_t status = 0;
    uint16_t length = Size;  // bytes of the packet, this header included
    uint16_t spid = 0;
    uint8_t id = 0;

    bool EndsMessage() const { return (status & packet_status::EndOfMessage) != 0; }

    void Encode(std::span<std::byte, Size> out) const;
    // Raises PacketType for a type that TDS does not have and PacketLength for a length below this
    // header's own or above `largest`; positions count from the header.
    static PacketHeader Decode(std::span<const std::byte, Size> bytes, uint16_t largest);
};

}  // namespace quarv::localdb::tds
