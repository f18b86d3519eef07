// Runs a function in a forked child, so that limits, identities and locks stay its own.
#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace quarv::registry {

inline pid_t StartChild(const std::function<int()>& body) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(body());
    return child;
}

// The child's exit status; -1 where it did not end by itself.
inline int WaitForChild(pid_t child) {
    int status = 0;
    if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

inline int RunInChild(const std::function<int()>& body) {
    return WaitForChild(StartChild(body));
}

constexpr uid_t OrdinaryUser = 65534;

// In a child: root becomes a user whom permissions hold back; any other user is one already.
inline bool BecomeOrdinaryUser(uid_t user = OrdinaryUser) {
    if (::geteuid() != 0) return true;
    return ::setgroups(0, nullptr) == 0 && ::setgid(user) == 0 && ::setuid(user) == 0;
}

}  // namespace quarv::registry
