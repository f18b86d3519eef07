#include "localdb/server/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>

#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

// The file could have been deleted, and made anew, between opening and locking it.
bool IsStillAt(const UniqueFd& file, const QByteArray& path) {
    struct stat here {};
    struct stat there {};
    return ::fstat(file.Get(), &here) == 0 && ::stat(path.constData(), &there) == 0 &&
           here.st_ino == there.st_ino && here.st_dev == there.st_dev;
}

}  // namespace

UniqueFd FileLock::TryTake() const {
    const QByteArray path = QFile::encodeName(path_);
    for (;;) {
        UniqueFd file(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        if (!file) {
            throw ServerError(ServerError::InstanceFiles, path_, SystemText(errno));
        }
        if (::flock(file.Get(), LOCK_EX | LOCK_NB) != 0) return {};
        if (IsStillAt(file, path)) return file;
    }
}

bool FileLock::IsHeld() const {
    const UniqueFd file(::open(QFile::encodeName(path_).constData(), O_RDONLY | O_CLOEXEC));
    return file && ::flock(file.Get(), LOCK_SH | LOCK_NB) != 0;
}

bool FileLock::IsOpenIn(qint64 pid) const {
    const QString file = QFileInfo(path_).canonicalFilePath();
    const QDir open(QStringLiteral("/proc/%1/fd").arg(pid));
    const QFileInfoList descriptors = open.entryInfoList(QDir::Files | QDir::System);
    return !file.isEmpty() &&
           std::any_of(descriptors.begin(), descriptors.end(),
                       [&file](const QFileInfo& each) { return each.symLinkTarget() == file; });
}

}  // namespace quarv::localdb::server
