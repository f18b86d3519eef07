// FileLock: the exclusive lock on a lock file, by which programs that write the same hive take
// turns. Held while the object lives. The lock file stays; only the lock on it counts.
#pragma once

#include <QByteArray>
#include <chrono>

#include "base/UniqueFd.h"
#include "platform/registry/ResultCode.h"

namespace quarv::registry {

class FileLock {
  public:
    // Makes the file (mode 0600) where it is missing and waits at most `patience` for the lock;
    // then ERROR_LOCK_VIOLATION. ERROR_ACCESS_DENIED where the file may not be made or opened.
    ResultCode Acquire(const QByteArray& path, std::chrono::milliseconds patience);

  private:
    UniqueFd fd_;
};

}  // namespace quarv::registry
