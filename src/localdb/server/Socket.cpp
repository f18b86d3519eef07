#include "localdb/server/Socket.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace quarv::localdb::server {

namespace {

void SetOption(int descriptor, int level, int option, int value) {
    // A socket that is no TCP socket (a pair in a test) lacks some options: nothing is lost.
    (void)::setsockopt(descriptor, level, option, &value, sizeof value);
}

Socket::Result ResultOf(ssize_t count, size_t& moved) {
    if (count > 0) {
        moved = static_cast<size_t>(count);
        return Socket::Result::Done;
    }
    moved = 0;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) {
        return Socket::Result::WouldBlock;
    }
    return Socket::Result::Ended;
}

}  // namespace

Socket::Socket(UniqueFd descriptor) : descriptor_(std::move(descriptor)) {
    const int fd = descriptor_.Get();
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
    SetOption(fd, IPPROTO_TCP, TCP_NODELAY, 1);
    SetOption(fd, SOL_SOCKET, SO_KEEPALIVE, 1);
    SetOption(fd, IPPROTO_TCP, TCP_KEEPIDLE, 30);
    SetOption(fd, IPPROTO_TCP, TCP_KEEPINTVL, 10);
    SetOption(fd, IPPROTO_TCP, TCP_KEEPCNT, 3);
}

Socket::Result Socket::Read(std::span<std::byte> into, size_t& moved) {
    return ResultOf(::recv(descriptor_.Get(), into.data(), into.size(), 0), moved);
}

Socket::Result Socket::Write(std::span<const std::byte> from, size_t& moved) {
    return ResultOf(::send(descriptor_.Get(), from.data(), from.size(), MSG_NOSIGNAL), moved);
}

short Socket::Wait(short events, int timeoutMs) const {
    pollfd entry{descriptor_.Get(), events, 0};
    for (;;) {
        const int count = ::poll(&entry, 1, timeoutMs);
        if (count > 0) return entry.revents;
        if (count == 0) return 0;
        if (errno != EINTR) return POLLERR;
    }
}

void Socket::ShutDown() const {
    ::shutdown(descriptor_.Get(), SHUT_RDWR);
}

void Socket::FinishWriting() const {
    ::shutdown(descriptor_.Get(), SHUT_WR);
}

}  // namespace quarv::localdb::server
