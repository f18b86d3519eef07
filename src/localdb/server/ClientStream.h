// ClientStream: one logged-in client's connection: whole messages in, packets out, and while a
// request runs a look at what comes in meanwhile (attention, or the end of the connection). Memory
// is bounded: one message in, one packet buffer out; a client that does not read blocks the writer.
#pragma once

#include <array>
#include <optional>

#include "localdb/server/Socket.h"
#include "localdb/tds/MessageReader.h"
#include "localdb/tds/PacketWriter.h"

namespace quarv::localdb::server {

class ClientStream final : public tds::PacketOutput {
  public:
    // `early` are bytes that were read before; at most as many as the input buffer holds.
    ClientStream(Socket socket, std::span<const std::byte> early, size_t largestMessage);

    // Waits for the next whole message. Nothing where the client has gone. Raises ProtocolError.
    std::optional<tds::Message> NextMessage();

    tds::PacketWriter& Writer() { return writer_; }

    // While a request runs: true once the client wants it to stop, or has gone. Cheap enough to be
    // asked for every row; looks at the connection every few milliseconds.
    bool StopWanted();
    // True, once, where an attention came since the last call.
    bool TakeAttention();

    // The connection is of no use any more; whatever is written goes nowhere.
    bool Broken() const { return broken_; }
    void Break() { broken_ = true; }
    // The reply that is being written is the last one.
    void EndAfterReply() { ending_ = true; }
    bool Ending() const { return ending_; }
    // From any thread: wakes whatever waits here and breaks the connection.
    void Interrupt() const { socket_.ShutDown(); }
    // Says to the client that nothing more will come.
    void Finish() const { socket_.FinishWriting(); }

    bool Take(std::span<const std::byte> packets, bool must) override;

  private:
    bool Fill();  // reads what is there; false where nothing came
    void FeedReader();
    void LookAtInput();  // without waiting
    void Send(std::span<const std::byte> packets);

    static constexpr size_t InputSize = size_t{16} * 1024;

    Socket socket_;
    tds::MessageReader reader_;
    tds::PacketWriter writer_;
    std::array<std::byte, InputSize> input_;
    size_t inputBegin_ = 0;
    size_t inputEnd_ = 0;
    bool attention_ = false;
    bool broken_ = false;
    bool ending_ = false;
    long lastLook_ = 0;  // coarse clock ticks
    long lastSend_ = 0;
};

}  // namespace quarv::localdb::server
