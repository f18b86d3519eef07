// DetachedProcess: runs a function in a process of its own that outlives this one: no terminal, no
// inherited files but one. Only for a process that has started no thread.
#pragma once

#include <QString>
#include <functional>

namespace quarv::localdb::server {

// Returns when the new process has called its `ready`, with an empty text; or, where `work` ended
// or raised before that, with the reason. `keep` is the one descriptor that stays open in it, for
// its whole life. `timeoutMs` limits the wait, not the process.
QString RunDetached(int keep, int timeoutMs,
                    const std::function<void(const std::function<void()>& ready)>& work);

}  // namespace quarv::localdb::server
