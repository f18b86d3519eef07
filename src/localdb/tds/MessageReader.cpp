#include "localdb/tds/MessageReader.h"

#include <algorithm>
#include <utility>

#include "localdb/tds/ProtocolError.h"

namespace quarv::localdb::tds {

void MessageReader::SetLimits(uint16_t largestPacket, size_t largestMessage) {
    largestPacket_ = largestPacket;
    largestMessage_ = largestMessage;
}

size_t MessageReader::Feed(std::span<const std::byte> bytes) {
    size_t taken = 0;
    while (!complete_ && taken < bytes.size()) {
        const auto rest = bytes.subspan(taken);
        taken += headerHave_ < PacketHeader::Size ? FeedHeader(rest) : FeedBody(rest);
    }
    return taken;
}

size_t MessageReader::FeedHeader(std::span<const std::byte> bytes) {
    const size_t part = std::min(bytes.size(), PacketHeader::Size - headerHave_);
    std::copy_n(bytes.begin(), part, header_.begin() + static_cast<std::ptrdiff_t>(headerHave_));
    headerHave_ += part;
    if (headerHave_ == PacketHeader::Size) BeginPacket();
    return part;
}

void MessageReader::BeginPacket() {
    PacketHeader header;
    try {
        header = PacketHeader::Decode(header_, largestPacket_);
    } catch (const ProtocolError& e) {
        throw ProtocolError(e.What(), total_ + e.Position());
    }
    if (first_) {
        message_.type = header.type;
        first_ = false;
    } else if (header.type != message_.type) {
        throw ProtocolError(Fault::PacketTypeChanged, total_);
    }
    if (header.length > largestMessage_ - std::min(total_, largestMessage_)) {
        throw ProtocolError(Fault::MessageTooLong, total_);
    }
    total_ += header.length;
    message_.status |= header.status;
    bodyMissing_ = header.length - PacketHeader::Size;
    lastPacket_ = header.EndsMessage();
    EndPacketWhenWhole();
}

size_t MessageReader::FeedBody(std::span<const std::byte> bytes) {
    const size_t part = std::min(bytes.size(), bodyMissing_);
    message_.body.insert(message_.body.end(), bytes.begin(),
                         bytes.begin() + static_cast<std::ptrdiff_t>(part));
    bodyMissing_ -= part;
    EndPacketWhenWhole();
    return part;
}

void MessageReader::EndPacketWhenWhole() {
    if (bodyMissing_ > 0) return;
    headerHave_ = 0;
    complete_ = lastPacket_;
}

Message MessageReader::Take() {
    complete_ = false;
    first_ = true;
    total_ = 0;
    return std::exchange(message_, Message{});
}

}  // namespace quarv::localdb::tds
