#include "localdb/tds/PacketWriter.h"

#include <algorithm>

namespace quarv::localdb::tds {

namespace {

// Several packets go out in one call where rows come fast; a few dozen KiB make that call's cost
// vanish beside the copying.
constexpr size_t GatheredBytes = 32 * 1024;

}  // namespace

PacketWriter::PacketWriter(PacketOutput& output, uint16_t packetSize, uint16_t spid)
    : output_(output), packetSize_(0), spid_(spid) {
    SetPacketSize(packetSize);
}

void PacketWriter::SetPacketSize(uint16_t packetSize) {
    packetSize_ = std::clamp(packetSize, PacketHeader::SmallestPacket, PacketHeader::LargestPacket);
    const size_t packets = std::max<size_t>(1, GatheredBytes / packetSize_);
    buffer_.resize(packets * packetSize_);
    OpenPacket(0);
}

void PacketWriter::OpenPacket(size_t at) {
    packetBegin_ = at;
    next_ = buffer_.data() + at + PacketHeader::Size;
    end_ = buffer_.data() + at + packetSize_;
}

void PacketWriter::ClosePacket(uint8_t status) {
    PacketHeader header;
    header.status = status;
    header.length = static_cast<uint16_t>(next_ - (buffer_.data() + packetBegin_));
    header.spid = spid_;
    header.id = packetId_++;
    header.Encode(std::span<std::byte, PacketHeader::Size>(buffer_.data() + packetBegin_,
                                                           PacketHeader::Size));
}

void PacketWriter::MakeRoom() {
    ClosePacket(0);
    const size_t finished = packetBegin_ + packetSize_;
    const bool full = finished + packetSize_ > buffer_.size();
    const bool taken = output_.Take({buffer_.data(), finished}, full);
    OpenPacket(taken || full ? 0 : finished);
}

void PacketWriter::SendNow() {
    if (next_ > buffer_.data() + packetBegin_ + PacketHeader::Size) {
        ClosePacket(0);
        packetBegin_ = static_cast<size_t>(next_ - buffer_.data());
    }
    if (packetBegin_ > 0) output_.Take({buffer_.data(), packetBegin_}, true);
    OpenPacket(0);
}

void PacketWriter::EndMessage() {
    ClosePacket(packet_status::EndOfMessage);
    const size_t finished = static_cast<size_t>(next_ - buffer_.data());
    output_.Take({buffer_.data(), finished}, true);
    packetId_ = 1;
    OpenPacket(0);
}

}  // namespace quarv::localdb::tds
