#include "localdb/server/Listener.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

// Connections taken between two looks at the others.
constexpr int AcceptsAtOnce = 64;
// After the system refused a connection for want of descriptors or memory.
constexpr int RetryMilliseconds = 100;

}  // namespace

Listener::Listener(ListenAddress where, const Settings& settings, engine::Server& engine, Log& log)
    : where_(std::move(where)),
      settings_(settings),
      engine_(engine),
      log_(log),
      socket_(where_.Listen()),
      event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      sessions_([this] { Wake(); }) {
    if (!event_) {
        throw ServerError(ServerError::System, QStringLiteral("eventfd"), SystemText(errno));
    }
}

void Listener::Stop() noexcept {
    stopping_ = true;
    Wake();
}

void Listener::Wake() noexcept {
    const uint64_t one = 1;
    (void)!::write(event_.Get(), &one, sizeof one);
}

void Listener::Run(const std::function<void()>& ending) {
    while (!stopping_) {
        const std::vector<short> events = WaitForEvents();
        const Clock::time_point now = Clock::now();
        if (sessions_.Count() > 0) lastUse_ = now;
        sessions_.Reap();
        AdvancePending(events);
        CloseLate(now);
        AcceptAll();
        if (IdleIsOver(now)) {
            log_.Write(QStringLiteral("idle: ending"));
            break;
        }
    }
    socket_.Reset();
    ending();
    pending_.clear();
    sessions_.StopAll();
}

// The events of the pending logins, in their order.
std::vector<short> Listener::WaitForEvents() {
    std::vector<pollfd> entries;
    entries.reserve(pending_.size() + 2);
    entries.push_back({event_.Get(), POLLIN, 0});
    entries.push_back({socket_.Get(), POLLIN, 0});
    for (const PendingLogin& login : pending_) entries.push_back({login.Descriptor(), POLLIN, 0});
    const int count = ::poll(entries.data(), entries.size(), MillisecondsToWait(Clock::now()));
    std::vector<short> events(pending_.size(), 0);
    if (count <= 0) return events;
    if (entries[0].revents != 0) {
        uint64_t woken = 0;
        (void)!::read(event_.Get(), &woken, sizeof woken);
    }
    for (size_t i = 0; i < events.size(); ++i) events[i] = entries[i + 2].revents;
    return events;
}

int Listener::MillisecondsToWait(Clock::time_point now) const {
    Clock::time_point next = Clock::time_point::max();
    if (!pending_.empty()) next = pending_.front().Deadline();
    if (settings_.idleTime.count() > 0 && sessions_.Count() == 0) {
        next = std::min(next, lastUse_ + settings_.idleTime);
    }
    if (next == Clock::time_point::max()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - now).count();
    return static_cast<int>(std::clamp<long>(left, 0, 3'600'000));
}

void Listener::AdvancePending(const std::vector<short>& events) {
    auto login = pending_.begin();
    for (const short event : events) {
        const PendingLogin::Outcome outcome =
            event == 0 ? PendingLogin::Outcome::Waiting : login->Advance();
        if (outcome == PendingLogin::Outcome::Waiting) {
            ++login;
            continue;
        }
        if (outcome == PendingLogin::Outcome::Admitted) Admit(*login);
        login = pending_.erase(login);
    }
}

void Listener::Admit(PendingLogin& login) {
    if (sessions_.Count() >= settings_.largestSessions) {
        login.RefuseAsFull();
        return;
    }
    auto session = std::make_unique<ClientSession>(login.TakeSocket(), login.Early(), login.Login(),
                                                   settings_, engine_, log_);
    if (!sessions_.Start(std::move(session))) {
        log_.Write(QStringLiteral("login: refused: no thread to be had"));
    }
}

void Listener::CloseLate(Clock::time_point now) {
    while (!pending_.empty() && pending_.front().Deadline() <= now) pending_.pop_front();
}

bool Listener::IdleIsOver(Clock::time_point now) const {
    return settings_.idleTime.count() > 0 && sessions_.Count() == 0 &&
           now - lastUse_ >= settings_.idleTime;
}

void Listener::AcceptAll() {
    for (int i = 0; i < AcceptsAtOnce; ++i) {
        UniqueFd connection(::accept4(socket_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (connection) {
            Accept(Socket(std::move(connection)));
            continue;
        }
        if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
            // Without a descriptor to spare nothing can be accepted: the longest silent one goes.
            if (!pending_.empty()) {
                pending_.pop_front();
                continue;
            }
            ::poll(nullptr, 0, RetryMilliseconds);
        }
        return;
    }
}

void Listener::Accept(Socket socket) {
    lastUse_ = Clock::now();
    if (pending_.size() >= settings_.largestPending) pending_.pop_front();
    pending_.emplace_back(std::move(socket), settings_, log_);
}

}  // namespace quarv::localdb::server
