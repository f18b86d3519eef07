#include "RoundTrips.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

#include "WireClient.h"

namespace quarv::bench {

namespace {

// Listens on a loopback port of the system's choosing, which it stores.
int Listen(int& port) {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(fd, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(fd, 1) != 0 ||
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        throw std::runtime_error("cannot listen");
    }
    port = ntohs(address.sin_port);
    return fd;
}

void Echo(int listener, size_t size) {
    const int fd = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    ::close(listener);
    const int one = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    std::vector<std::byte> bytes(size);
    try {
        for (;;) {
            ReceiveAll(fd, bytes);
            SendAll(fd, bytes);
        }
    } catch (const std::runtime_error&) {
        // The other side has gone.
    }
    ::close(fd);
}

}  // namespace

RoundTrips::RoundTrips(size_t bytes) : bytes_(bytes) {
    int port = 0;
    const int listener = Listen(port);
    echo_ = std::thread(Echo, listener, bytes);
    socket_ = ConnectTo(port);
}

RoundTrips::~RoundTrips() {
    ::close(socket_);
    echo_.join();
}

void RoundTrips::Once() {
    SendAll(socket_, bytes_);
    ReceiveAll(socket_, bytes_);
}

}  // namespace quarv::bench
