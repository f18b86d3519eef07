// FileLock: the lock that says "someone serves here". Held for as long as the descriptor that it
// gives is open, over a fork too, and let go by the system when the holder dies.
#pragma once

#include <QString>

#include "base/UniqueFd.h"

namespace quarv::localdb::server {

class FileLock {
  public:
    explicit FileLock(QString path) : path_(std::move(path)) {}

    // Makes the file where it is missing and takes the lock for itself. A closed descriptor where
    // someone else holds it. Raises ServerError InstanceFiles.
    UniqueFd TryTake() const;
    // True while someone holds it for itself. False where the file is missing.
    bool IsHeld() const;
    // True where the process has the file open, as its holder has.
    bool IsOpenIn(qint64 pid) const;

  private:
    QString path_;
};

}  // namespace quarv::localdb::server
