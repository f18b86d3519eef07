// Listener: accepts connections, brings them through the login on one thread without ever blocking,
// and gives each admitted client a session with a thread of its own. However many connect and say
// nothing, each costs a socket and a few hundred bytes, and for a limited time.
#pragma once

#include <list>

#include "localdb/server/ListenAddress.h"
#include "localdb/server/PendingLogin.h"
#include "localdb/server/SessionTable.h"

namespace quarv::localdb::server {

class Listener {
  public:
    // Listens at once. The references must outlive it. Raises ServerError.
    Listener(ListenAddress where, const Settings& settings, engine::Server& engine, Log& log);

    // Where it listens, with the port that it got.
    const ListenAddress& Where() const { return where_; }

    // Serves until Stop is called or the idle time is over, then ends all sessions. `ending` is
    // called between the two, when no one can connect any more.
    void Run(const std::function<void()>& ending = [] {});
    // From any thread and from a signal handler.
    void Stop() noexcept;

  private:
    using Clock = PendingLogin::Clock;

    void AcceptAll();
    void Accept(Socket socket);
    void AdvancePending(const std::vector<short>& events);
    void Admit(PendingLogin& login);
    void CloseLate(Clock::time_point now);
    bool IdleIsOver(Clock::time_point now) const;
    int MillisecondsToWait(Clock::time_point now) const;
    std::vector<short> WaitForEvents();
    void Wake() noexcept;

    ListenAddress where_;
    const Settings& settings_;
    engine::Server& engine_;
    Log& log_;
    UniqueFd socket_;
    UniqueFd event_;
    std::atomic<bool> stopping_ = false;
    Clock::time_point lastUse_ = Clock::now();
    std::list<PendingLogin> pending_;  // the oldest first
    SessionTable sessions_;
};

}  // namespace quarv::localdb::server
