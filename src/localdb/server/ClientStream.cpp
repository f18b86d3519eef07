#include "localdb/server/ClientStream.h"

#include <poll.h>
#include <time.h>

#include <algorithm>
#include <utility>

#include "localdb/tds/ProtocolError.h"

namespace quarv::localdb::server {

namespace {

// Nanoseconds of the coarse clock: a few milliseconds fine, and far cheaper than the exact one.
long CoarseNow() {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec * 1'000'000'000L + now.tv_nsec;
}

}  // namespace

ClientStream::ClientStream(Socket socket, std::span<const std::byte> early, size_t largestMessage)
    : socket_(std::move(socket)),
      reader_(tds::PacketHeader::LargestPacket, largestMessage),
      writer_(*this, tds::PacketHeader::DefaultPacket, 0) {
    inputEnd_ = std::min(early.size(), input_.size());
    std::copy_n(early.begin(), inputEnd_, input_.begin());
}

bool ClientStream::Fill() {
    size_t count = 0;
    const Socket::Result result = socket_.Read(input_, count);
    inputBegin_ = 0;
    inputEnd_ = count;
    if (result == Socket::Result::Ended) broken_ = true;
    return result == Socket::Result::Done;
}

void ClientStream::FeedReader() {
    inputBegin_ += reader_.Feed(std::span(input_).subspan(inputBegin_, inputEnd_ - inputBegin_));
}

std::optional<tds::Message> ClientStream::NextMessage() {
    while (!broken_) {
        FeedReader();
        if (reader_.HasMessage()) return reader_.Take();
        if (!Fill() && !broken_) socket_.Wait(POLLIN, -1);
    }
    return std::nullopt;
}

void ClientStream::LookAtInput() {
    try {
        while (!broken_) {
            FeedReader();
            if (reader_.HasMessage()) {
                // Whatever else came waits for its turn, and so does all that follows it.
                if (reader_.Type() != tds::PacketType::Attention) return;
                reader_.Take();
                attention_ = true;
                continue;
            }
            if (!Fill()) return;
        }
    } catch (const tds::ProtocolError&) {
        broken_ = true;
    }
}

bool ClientStream::StopWanted() {
    if (broken_ || attention_) return true;
    const long now = CoarseNow();
    if (now == lastLook_) return false;
    lastLook_ = now;
    LookAtInput();
    if (!broken_ && (socket_.Wait(POLLRDHUP, 0) & (POLLERR | POLLHUP | POLLNVAL)) != 0) {
        broken_ = true;
    }
    return broken_ || attention_;
}

bool ClientStream::TakeAttention() {
    return std::exchange(attention_, false);
}

bool ClientStream::Take(std::span<const std::byte> packets, bool must) {
    if (broken_) return true;
    // Rows that come fast are gathered; rows that come slowly leave with their packet.
    const long now = CoarseNow();
    if (!must && now == lastSend_) return false;
    lastSend_ = now;
    Send(packets);
    return true;
}

void ClientStream::Send(std::span<const std::byte> packets) {
    while (!packets.empty() && !broken_) {
        size_t count = 0;
        switch (socket_.Write(packets, count)) {
            case Socket::Result::Done:
                packets = packets.subspan(count);
                break;
            case Socket::Result::Ended:
                broken_ = true;
                break;
            case Socket::Result::WouldBlock: {
                // An attention must be seen while the client still has rows to read.
                const bool wantsInput = !reader_.HasMessage();
                const short events =
                    socket_.Wait(static_cast<short>(POLLOUT | (wantsInput ? POLLIN : 0)), -1);
                if ((events & (POLLIN | POLLERR | POLLHUP)) != 0) LookAtInput();
                break;
            }
        }
    }
}

}  // namespace quarv::localdb::server
