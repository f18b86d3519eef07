// SessionTable: the running sessions and their threads. Owned by the listener, whose thread alone
// calls it.
#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <thread>

#include "localdb/server/ClientSession.h"

namespace quarv::localdb::server {

class SessionTable {
  public:
    // `ended` is called on a session's own thread when the session is over.
    explicit SessionTable(std::function<void()> ended) : ended_(std::move(ended)) {}
    // Ends every session.
    ~SessionTable() { StopAll(); }

    // Runs the session on a new thread. False where no thread can be had.
    bool Start(std::unique_ptr<ClientSession> session);
    // Sessions that have not ended yet.
    size_t Count() const { return entries_.size(); }
    // Forgets the sessions that are over.
    void Reap();
    void StopAll();

  private:
    struct Entry {
        std::unique_ptr<ClientSession> session;
        std::thread thread;
        std::atomic<bool> over = false;
    };

    std::function<void()> ended_;
    std::list<Entry> entries_;
};

}  // namespace quarv::localdb::server
