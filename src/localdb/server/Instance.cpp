#include "localdb/server/Instance.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <cerrno>
#include <utility>

#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

constexpr qint64 LargestState = 4096;

// The base directory rule of the desktops: a relative path is to be ignored.
QString DataHome() {
    const QString set = qEnvironmentVariable("XDG_DATA_HOME");
    if (QDir::isAbsolutePath(set)) return set;
    return QDir::homePath() + QStringLiteral("/.local/share");
}

QString InstancesDirectory() {
    return DataHome() + QStringLiteral("/quarv/localdb");
}

bool WriteAll(int descriptor, const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        done += count;
    }
    return true;
}

}  // namespace

Instance::Instance(QString name, QString directory)
    : name_(std::move(name)), directory_(std::move(directory)) {}

Instance Instance::Named(const QString& name) {
    static const QRegularExpression Valid(QStringLiteral("\\A[a-z0-9_-]{1,64}\\z"));
    const QString lower = name.toLower();
    if (!Valid.match(lower).hasMatch()) throw ServerError(ServerError::InstanceName, name);
    return {lower, InstancesDirectory() + u'/' + lower};
}

QStringList Instance::All() {
    return QDir(InstancesDirectory()).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

bool Instance::Exists() const {
    return QDir(directory_).exists();
}

void Instance::MakeDirectory() const {
    const QByteArray path = QFile::encodeName(directory_);
    const bool made = QDir().mkpath(InstancesDirectory()) &&
                      (::mkdir(path.constData(), 0700) == 0 || errno == EEXIST);
    // An existing directory may have been made with wider rights.
    if (!made || ::chmod(path.constData(), 0700) != 0) {
        throw ServerError(ServerError::InstanceFiles, directory_, SystemText(errno));
    }
}

std::optional<InstanceState> Instance::ReadState() const {
    QFile file(StateFile());
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return InstanceState::Parse(file.read(LargestState));
}

void Instance::WriteState(const InstanceState& state) const {
    const QByteArray path = QFile::encodeName(StateFile());
    const QByteArray fresh = path + ".new";
    const auto fail = [this] {
        throw ServerError(ServerError::InstanceFiles, StateFile(), SystemText(errno));
    };
    ::unlink(fresh.constData());
    const UniqueFd file(::open(fresh.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file) fail();
    if (!WriteAll(file.Get(), state.ToBytes()) || ::fsync(file.Get()) != 0) fail();
    if (::rename(fresh.constData(), path.constData()) != 0) fail();
}

void Instance::RemoveState() const {
    ::unlink(QFile::encodeName(StateFile()).constData());
}

std::optional<InstanceState> Instance::RunningState() const {
    if (!Lock().IsHeld()) return std::nullopt;
    auto state = ReadState();
    // A state that a killed server left behind may still be there while the next one starts, and
    // its process number may be another program's by now.
    if (state && !Lock().IsOpenIn(state->pid)) state.reset();
    return state;
}

}  // namespace quarv::localdb::server
