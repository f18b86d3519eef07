// What a stranger may send: the listener's own way through prelogin and login, over a socket.
#include <sys/socket.h>

#include <array>

#include "localdb/server/PendingLogin.h"

namespace {

using namespace quarv::localdb::server;

Settings FuzzSettings() {
    Settings settings;
    settings.account = Account(QStringLiteral("tester"), QStringLiteral("right"));
    settings.serverName = QStringLiteral("here");
    settings.version = {16, 0, 1000};
    return settings;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Settings settings = FuzzSettings();
    static Log log(QStringLiteral("/dev/null"));
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return 0;
    Socket peer{quarv::UniqueFd(ends[0])};
    PendingLogin login(Socket(quarv::UniqueFd(ends[1])), settings, log);
    auto rest = std::as_bytes(std::span(data, size));
    auto outcome = PendingLogin::Outcome::Waiting;
    std::array<std::byte, 8192> replies;
    while (outcome == PendingLogin::Outcome::Waiting && !rest.empty()) {
        size_t sent = 0;
        if (peer.Write(rest.first(std::min<size_t>(rest.size(), 4096)), sent) ==
            Socket::Result::Ended) {
            break;
        }
        rest = rest.subspan(sent);
        outcome = login.Advance();
        size_t received = 0;
        while (peer.Read(replies, received) == Socket::Result::Done) {
        }
    }
    return 0;
}
