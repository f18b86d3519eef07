#include "platform/registry/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>

namespace quarv::registry {

namespace {

// False where somebody removed or replaced the lock file: its lock then keeps nobody out.
bool IsStillAt(const QByteArray& path, int fd) {
    struct stat named {
    }, held{};
    return ::stat(path.constData(), &named) == 0 && ::fstat(fd, &held) == 0 &&
           named.st_dev == held.st_dev && named.st_ino == held.st_ino;
}

}  // namespace

ResultCode FileLock::Acquire(const QByteArray& path, std::chrono::milliseconds patience) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + patience;
    for (;;) {
        if (!fd_) {
            constexpr int Flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
            fd_ = UniqueFd(::open(path.constData(), Flags, 0600));
            if (!fd_) return CodeOfErrno(errno, ERROR_WRITE_FAULT);
        }
        if (::flock(fd_.Get(), LOCK_EX | LOCK_NB) == 0) {
            if (IsStillAt(path, fd_.Get())) return ERROR_SUCCESS;
            fd_.Reset();
        } else if (errno != EWOULDBLOCK && errno != EINTR) {
            return CodeOfErrno(errno, ERROR_LOCK_VIOLATION);
        }
        if (Clock::now() >= deadline) return ERROR_LOCK_VIOLATION;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

}  // namespace quarv::registry
