// Log: lines with a time for whoever looks after the server. Never holds a secret: callers pass no
// password, and texts that came from outside are cut and their control characters replaced, so
// that no one can forge a line. Its members may be called from any thread.
#pragma once

#include <QString>
#include <mutex>

#include "base/UniqueFd.h"

namespace quarv::localdb::server {

class Log {
  public:
    // Writes to stderr.
    Log() = default;
    // Appends to the file, which is set aside as ".old" and begun anew at `largest` bytes; what is
    // no regular file is only written to.
    explicit Log(const QString& path, qint64 largest = 1024 * 1024);

    void Write(const QString& text);

  private:
    void Open();
    void Turn();

    std::mutex mutex_;
    QString path_;
    qint64 largest_ = 0;
    qint64 size_ = 0;
    bool turns_ = true;
    UniqueFd file_;
};

}  // namespace quarv::localdb::server
