// Socket: a connected, non-blocking stream socket with the few calls that are made on it. Knows
// nothing of what travels over it.
#pragma once

#include <cstddef>
#include <span>

#include "base/UniqueFd.h"

namespace quarv::localdb::server {

class Socket {
  public:
    Socket() = default;
    // Takes a connected socket and makes it non-blocking, quick (no Nagle) and kept alive.
    explicit Socket(UniqueFd descriptor);

    enum class Result {
        Done,        // some bytes went
        WouldBlock,  // none can go now
        Ended,       // the peer has gone, or the connection is broken
    };

    // `moved` receives the number of bytes, at least 1 where the result is Done.
    Result Read(std::span<std::byte> into, size_t& moved);
    Result Write(std::span<const std::byte> from, size_t& moved);

    // Waits until `events` (of poll) or an error are there, at most `timeoutMs` (-1: no limit), and
    // returns the events; 0 at the end of the time.
    short Wait(short events, int timeoutMs) const;

    // Ends both directions and thereby wakes whoever waits on this socket. From any thread, as long
    // as the object lives.
    void ShutDown() const;
    // Says to the peer that nothing more will come.
    void FinishWriting() const;

    int Descriptor() const { return descriptor_.Get(); }

  private:
    UniqueFd descriptor_;
};

}  // namespace quarv::localdb::server
