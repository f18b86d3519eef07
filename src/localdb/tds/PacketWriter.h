// PacketWriter: cuts a reply into packets, headers included, in one buffer of fixed size that it
// hands on whenever a packet is full. Its owner supplies the way out and its back pressure.
#pragma once

#include <vector>

#include "localdb/tds/ByteWriter.h"
#include "localdb/tds/PacketHeader.h"

namespace quarv::localdb::tds {

class PacketOutput {
  public:
    virtual ~PacketOutput() = default;

    // Finished packets, all not yet taken. With `must` false it may return false to be asked again
    // after the next packet; with `must` true (end of a message, or the buffer is full) it takes
    // them in any case. May block: that is the back pressure.
    virtual bool Take(std::span<const std::byte> packets, bool must) = 0;
};

class PacketWriter final : public ByteWriter {
  public:
    // `output` must outlive it. `packetSize` in bytes, header included.
    PacketWriter(PacketOutput& output, uint16_t packetSize, uint16_t spid);

    // For the messages that follow; only between messages.
    void SetPacketSize(uint16_t packetSize);
    uint16_t PacketSize() const { return packetSize_; }
    // The session number in the header of the packets that follow.
    void SetSpid(uint16_t spid) { spid_ = spid; }

    // Sends what is written so far, in a packet that may be shorter than the others.
    void SendNow();
    // Ends the message with its last packet, which may be empty, and sends everything.
    void EndMessage();

  protected:
    void MakeRoom() override;

  private:
    void OpenPacket(size_t at);
    void ClosePacket(uint8_t status);

    PacketOutput& output_;
    uint16_t packetSize_;
    uint16_t spid_;
    uint8_t packetId_ = 1;
    size_t packetBegin_ = 0;  // offset of the open packet's header; what lies before is finished
    std::vector<std::byte> buffer_;
};

}  // namespace quarv::localdb::tds
