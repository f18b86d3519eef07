#include "localdb/server/SessionTable.h"

#include <system_error>

namespace quarv::localdb::server {

bool SessionTable::Start(std::unique_ptr<ClientSession> session) {
    Entry& entry = entries_.emplace_back();
    entry.session = std::move(session);
    try {
        entry.thread = std::thread([this, &entry] {
            entry.session->Run();
            entry.over = true;
            ended_();
        });
    } catch (const std::system_error&) {
        entries_.pop_back();
        return false;
    }
    return true;
}

void SessionTable::Reap() {
    entries_.remove_if([](Entry& entry) {
        if (!entry.over) return false;
        entry.thread.join();
        return true;
    });
}

void SessionTable::StopAll() {
    for (const Entry& entry : entries_) entry.session->Interrupt();
    for (Entry& entry : entries_) entry.thread.join();
    entries_.clear();
}

}  // namespace quarv::localdb::server
