// MessageReader: puts messages together out of bytes that arrive in any portions. Holds at most one
// message and at most the given number of bytes; knows nothing of what messages mean.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "localdb/tds/PacketHeader.h"

namespace quarv::localdb::tds {

struct Message {
    PacketType type = PacketType::Batch;
    uint8_t status = 0;  // the status bits of all its packets together
    std::vector<std::byte> body;

    // The client took it back before its end.
    bool Ignored() const { return (status & packet_status::Ignore) != 0; }
};

class MessageReader {
  public:
    // `largestPacket` and `largestMessage` in bytes, packet headers included; for as long as this
    // reader lives or SetLimits is not called.
    MessageReader(uint16_t largestPacket, size_t largestMessage)
        : largestPacket_(largestPacket), largestMessage_(largestMessage) {}

    void SetLimits(uint16_t largestPacket, size_t largestMessage);

    // Takes bytes up to the end of the message that is being put together and returns how many it
    // took; none while a whole message waits to be taken. Raises ProtocolError, with the position
    // within the message, and is of no use afterwards.
    size_t Feed(std::span<const std::byte> bytes);

    bool HasMessage() const { return complete_; }
    // The type of the message that is here or under way, as far as its first header has arrived.
    PacketType Type() const { return message_.type; }
    // Hands over the whole message and begins the next. Only while HasMessage.
    Message Take();

  private:
    size_t FeedHeader(std::span<const std::byte> bytes);
    size_t FeedBody(std::span<const std::byte> bytes);
    void BeginPacket();
    void EndPacketWhenWhole();

    uint16_t largestPacket_;
    size_t largestMessage_;
    std::array<std::byte, PacketHeader::Size> header_{};
    size_t headerHave_ = 0;   // bytes of the current header that are here
    size_t bodyMissing_ = 0;  // bytes of the current packet still to come
    bool lastPacket_ = false;
    bool first_ = true;  // no packet of the message has begun
    bool complete_ = false;
    size_t total_ = 0;  // bytes of the message's packets so far, as their headers announce
    Message message_;
};

}  // namespace quarv::localdb::tds
