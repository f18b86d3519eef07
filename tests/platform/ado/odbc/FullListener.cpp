#include "platform/ado/odbc/FullListener.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>

#include "platform/ado/odbc/Loopback.h"

namespace quarv::test {

namespace {

constexpr int MostWaiting = 64;
// What is taken on this computer is taken at once, within so many milliseconds.
constexpr int Patience = 200;

}  // namespace

FullListener::FullListener() : listener_(ListenOnLoopback(port_)) {
    listen(listener_.Get(), 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    place.sin_port = htons(static_cast<in_port_t>(port_));
    for (bool taken = true; taken;) {
        if (waiting_.size() == MostWaiting) qFatal("the queue of a listener does not fill");
        waiting_.emplace_back(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        const int fd = waiting_.back().Get();
        connect(fd, reinterpret_cast<sockaddr*>(&place), sizeof place);
        pollfd connecting{fd, POLLOUT, 0};
        taken = poll(&connecting, 1, Patience) == 1;
    }
}

}  // namespace quarv::test
