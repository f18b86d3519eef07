// What a hive file asks of the file system: folders, reading within a bound, replacing at one
// stroke, setting aside. Paths are in the file system's own bytes. It knows no format.
#pragma once

#include <sys/stat.h>

#include <QByteArray>

#include "base/UniqueFd.h"
#include "platform/registry/ResultCode.h"

namespace quarv::registry {

// Makes the folder that holds `path` and what is missing above it, with `mode` (less the umask).
ResultCode MakeFolderOf(const QByteArray& path, mode_t mode);

// At most `limit` bytes from the start of an open file.
ResultCode ReadAtMost(int fd, qint64 limit, QByteArray& bytes);

// Writes `bytes` beside `path`, brings them to the disk and puts them in the place of the file at
// one stroke, mode 0600. A symbolic link stays, and what it points to is replaced. On failure the
// old file is untouched. `fd` then holds the new file open. The caller keeps others from writing.
// ERROR_ACCESS_DENIED where the old file may not be written.
ResultCode ReplaceFile(const QByteArray& path, const QByteArray& bytes, UniqueFd& fd);

// Renames `path` to the first free name "path.damaged-1", "-2", ..., which goes to `aside`.
ResultCode SetAside(const QByteArray& path, QByteArray& aside);

}  // namespace quarv::registry
