#include "platform/registry/FileTools.h"

#include <fcntl.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace quarv::registry {

namespace {

QByteArray FolderOf(const QByteArray& path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 ? path.first(slash) : QByteArray("/");
}

QByteArray WithoutLinks(const QByteArray& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr),
                                                           &std::free);
    return real ? QByteArray(real.get()) : path;
}

ResultCode WriteAll(int fd, const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n =
            ::write(fd, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return CodeOfErrno(errno, ERROR_WRITE_FAULT);
        done += n;
    }
    return ::fsync(fd) == 0 ? ERROR_SUCCESS : CodeOfErrno(errno, ERROR_WRITE_FAULT);
}

// The rename has happened; this only hurries it to the disk, where the file system can.
void SyncFolderOf(const QByteArray& path) {
    const UniqueFd folder(::open(FolderOf(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) ::fsync(folder.Get());
}

int RenameWithoutReplacing(const QByteArray& from, const QByteArray& to) {
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    struct stat there {};  // a file system without the exclusive rename
    if (::lstat(to.constData(), &there) == 0) return EEXIST;
    return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

}  // namespace

ResultCode MakeFolderOf(const QByteArray& path, mode_t mode) {
    const QByteArray folder = FolderOf(path);
    for (qsizetype end = folder.indexOf('/', 1);; end = folder.indexOf('/', end + 1)) {
        const QByteArray part = end < 0 ? folder : folder.first(end);
        struct stat there {};
        if (::stat(part.constData(), &there) != 0 && ::mkdir(part.constData(), mode) != 0 &&
            errno != EEXIST)
            return CodeOfErrno(errno, ERROR_WRITE_FAULT);
        if (end < 0) return ERROR_SUCCESS;
    }
}

ResultCode ReadAtMost(int fd, qint64 limit, QByteArray& bytes) {
    char block[65536];
    bytes.clear();
    while (bytes.size() < limit) {
        const ssize_t n = ::read(fd, block, sizeof block);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return CodeOfErrno(errno, ERROR_READ_FAULT);
        if (n == 0) break;
        bytes.append(block, n);
    }
    bytes.truncate(limit);
    return ERROR_SUCCESS;
}

ResultCode ReplaceFile(const QByteArray& path, const QByteArray& bytes, UniqueFd& fd) {
    const QByteArray target = WithoutLinks(path);
    struct stat old {};
    if (::stat(target.constData(), &old) == 0 &&
        ::faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0)
        return CodeOfErrno(errno, ERROR_WRITE_FAULT);
    const QByteArray temporary = target + ".new";  // one that a crash left behind goes first
    if (::unlink(temporary.constData()) != 0 && errno != ENOENT)
        return CodeOfErrno(errno, ERROR_WRITE_FAULT);
    constexpr int Flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    UniqueFd written(::open(temporary.constData(), Flags, 0600));
    if (!written) return CodeOfErrno(errno, ERROR_WRITE_FAULT);
    ResultCode code = WriteAll(written.Get(), bytes);
    if (code == ERROR_SUCCESS && (::fchmod(written.Get(), 0600) != 0 ||
                                  ::rename(temporary.constData(), target.constData()) != 0))
        code = CodeOfErrno(errno, ERROR_WRITE_FAULT);
    if (code != ERROR_SUCCESS) {
        ::unlink(temporary.constData());
        return code;
    }
    SyncFolderOf(target);
    fd = std::move(written);
    return ERROR_SUCCESS;
}

ResultCode SetAside(const QByteArray& path, QByteArray& aside) {
    constexpr int MaxAside = 1000;
    for (int i = 1; i <= MaxAside; ++i) {
        aside = path + ".damaged-" + QByteArray::number(i);
        const int error = RenameWithoutReplacing(path, aside);
        if (error == 0) {
            SyncFolderOf(path);
            return ERROR_SUCCESS;
        }
        if (error != EEXIST && error != ENOTEMPTY) return CodeOfErrno(error, ERROR_WRITE_FAULT);
    }
    return ERROR_ACCESS_DENIED;
}

}  // namespace quarv::registry
