// HiveFile: one hive on disk and its tree in memory, kept in step with what other programs write.
// Owned by a HiveStore. Writes are read-modify-write under a lock; a damaged file is set aside
// under another name before anything takes its place. It knows no keys by name and no rights.
#pragma once

#include <sys/stat.h>

#include <functional>

#include "platform/registry/FileLock.h"
#include "platform/registry/HiveText.h"

namespace quarv::registry {

// Takes one line for the log, without a line break.
using Report = std::function<void(const QString&)>;

class HiveFile {
  public:
    // How long a write waits for another program's to end.
    static constexpr std::chrono::milliseconds LockPatience{2000};

    // `path` is absolute, in the file system's bytes; folders are made with `folderMode`.
    HiveFile(QByteArray path, HiveKind kind, mode_t folderMode, Report report);

    // Brings the tree up to date. Success, with an empty tree, also where there is no file or a
    // damaged one; ERROR_ACCESS_DENIED or ERROR_READ_FAULT where it cannot be read,
    // ERROR_NOT_SUPPORTED for a later version of the format.
    ResultCode Read();
    // As of the last Read or Update; empty where that failed.
    const HiveKey& Root() const { return root_; }
    // Another number whenever the tree may have changed.
    quint64 Generation() const { return generation_; }

    // Runs `change` on the tree as it is on disk, under the lock, and writes the tree where it
    // answers true. On failure nothing has changed, on disk or in the tree; besides the codes of
    // Read: ERROR_LOCK_VIOLATION, ERROR_DISK_FULL, ERROR_NOT_ENOUGH_QUOTA, ERROR_WRITE_FAULT.
    ResultCode Update(const std::function<bool(HiveKey&)>& change);

  private:
    enum class State : quint8 { Unknown, Missing, Good, Damaged, Unreadable, Unsupported };

    void Refresh();
    void Load();
    void Parse(const QByteArray& bytes);
    void Become(State state, ResultCode code = ERROR_SUCCESS);
    bool IsUnchanged(const struct stat& now) const;
    ResultCode PutAside();
    ResultCode Save();
    QString Name() const;

    const QByteArray path_;
    const HiveKind kind_;
    const mode_t folderMode_;
    const Report report_;

    State state_ = State::Unknown;
    ResultCode code_ = ERROR_SUCCESS;  // of Unreadable
    HiveKey root_;
    quint64 generation_ = 0;
    struct stat stamp_ {};
    // The file of `stamp_`, kept open so that no other file can come by its number.
    UniqueFd fd_;
    QString problem_;  // of Damaged
};

}  // namespace quarv::registry
