#include "platform/registry/HiveFile.h"

#include <fcntl.h>

#include <QFile>
#include <cerrno>

#include "platform/registry/FileTools.h"

namespace quarv::registry {

HiveFile::HiveFile(QByteArray path, HiveKind kind, mode_t folderMode, Report report)
    : path_(std::move(path)), kind_(kind), folderMode_(folderMode), report_(std::move(report)) {}

QString HiveFile::Name() const {
    return QFile::decodeName(path_);
}

ResultCode HiveFile::Read() {
    const State before = state_;
    const quint64 generation = generation_;
    Refresh();
    const bool isNews = before != state_ || generation != generation_;
    if (state_ == State::Damaged && isNews) {
        FileLock lock;
        ResultCode code = lock.Acquire(path_ + ".lock", LockPatience);
        if (code == ERROR_SUCCESS) {
            Refresh();  // another program may have set it aside meanwhile
            if (state_ == State::Damaged) code = PutAside();
        }
        if (code != ERROR_SUCCESS)
            report_(QStringLiteral("%1 is damaged and left as it is (%2; not set aside: %3)")
                        .arg(Name(), problem_, ResultText(code)));
    }
    if (state_ == State::Unsupported) return ERROR_NOT_SUPPORTED;
    return state_ == State::Unreadable ? code_ : ERROR_SUCCESS;
}

ResultCode HiveFile::Update(const std::function<bool(HiveKey&)>& change) {
    ResultCode code = MakeFolderOf(path_, folderMode_);
    if (code != ERROR_SUCCESS) return code;
    FileLock lock;
    code = lock.Acquire(path_ + ".lock", LockPatience);
    if (code != ERROR_SUCCESS) return code;
    Refresh();
    if (state_ == State::Damaged) code = PutAside();
    if (state_ == State::Unreadable) code = code_;
    if (state_ == State::Unsupported) code = ERROR_NOT_SUPPORTED;
    if (code != ERROR_SUCCESS) return code;
    if (!change(root_)) return ERROR_SUCCESS;
    code = Save();
    if (code != ERROR_SUCCESS) Become(State::Unknown);  // the next look reads the old file again
    return code;
}

ResultCode HiveFile::Save() {
    QByteArray text;
    ResultCode code = WriteHive(root_, text);
    if (code != ERROR_SUCCESS) return code;
    code = ReplaceFile(path_, text, fd_);
    if (code != ERROR_SUCCESS) return code;
    state_ = State::Good;
    ++generation_;
    if (::fstat(fd_.Get(), &stamp_) != 0) Become(State::Unknown);
    return ERROR_SUCCESS;
}

ResultCode HiveFile::PutAside() {
    QByteArray aside;
    const ResultCode code = SetAside(path_, aside);
    if (code != ERROR_SUCCESS) return code;
    report_(QStringLiteral("%1 is damaged (%2) and was set aside as %3")
                .arg(Name(), problem_, QFile::decodeName(aside)));
    Become(State::Missing);
    return ERROR_SUCCESS;
}

void HiveFile::Become(State state, ResultCode code) {
    state_ = state;
    code_ = code;
    root_ = HiveKey();
    ++generation_;
    fd_.Reset();
}

bool HiveFile::IsUnchanged(const struct stat& now) const {
    const auto same = [](const timespec& a, const timespec& b) {
        return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
    };
    return now.st_dev == stamp_.st_dev && now.st_ino == stamp_.st_ino &&
           now.st_size == stamp_.st_size && same(now.st_mtim, stamp_.st_mtim) &&
           same(now.st_ctim, stamp_.st_ctim);
}

void HiveFile::Refresh() {
    struct stat now {};
    if (::stat(path_.constData(), &now) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        const ResultCode code = missing ? ERROR_SUCCESS : CodeOfErrno(errno, ERROR_READ_FAULT);
        const State state = missing ? State::Missing : State::Unreadable;
        if (state_ != state || code_ != code) Become(state, code);
        return;
    }
    const bool known =
        state_ == State::Good || state_ == State::Damaged || state_ == State::Unsupported;
    if (known && IsUnchanged(now)) return;
    stamp_ = now;
    Load();
}

void HiveFile::Load() {
    Become(State::Damaged);
    if (!S_ISREG(stamp_.st_mode)) {
        problem_ = QStringLiteral("it is no file");
        return;
    }
    // Not to be held up by what may have come into its place since the look at it.
    fd_ = UniqueFd(::open(path_.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd_ || ::fstat(fd_.Get(), &stamp_) != 0) {
        Become(State::Unreadable, CodeOfErrno(errno, ERROR_READ_FAULT));
        return;
    }
    QByteArray bytes;
    const ResultCode code = ReadAtMost(fd_.Get(), MaxHiveBytes + 1, bytes);
    if (code == ERROR_SUCCESS)
        Parse(bytes);
    else
        Become(State::Unreadable, code);
}

void HiveFile::Parse(const QByteArray& bytes) {
    ParsedHive hive = ParseHive(bytes, kind_);
    switch (hive.outcome) {
        case ParsedHive::Outcome::Good:
            state_ = State::Good;
            root_ = std::move(hive.root);
            return;
        case ParsedHive::Outcome::Damaged:
            problem_ = QStringLiteral("line %1: %2").arg(hive.line).arg(hive.problem);
            return;
        case ParsedHive::Outcome::Unsupported:
            state_ = State::Unsupported;
            return;
    }
}

}  // namespace quarv::registry
