#include "platform/ado/odbc/LocalInstance.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QStandardPaths>
#include <cerrno>

#include "base/UniqueFd.h"
#include "platform/ado/ConnectProblems.h"
#include "platform/ado/ServerAddress.h"

namespace quarv::ado::odbc {

namespace {

constexpr qint64 LargestStateFile = 64 * 1024;

UniqueFd OpenToRead(const QString& path) {
    return UniqueFd(open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
}

QString DataFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

// A file that others can read or that someone else wrote proves nothing about who answers.
QByteArray ReadPrivateFile(const QString& path) {
    const UniqueFd file = OpenToRead(path);
    struct stat about {};
    if (!file || fstat(file.Get(), &about) != 0) return {};
    if (!S_ISREG(about.st_mode) || about.st_uid != geteuid() || (about.st_mode & 077) != 0 ||
        about.st_size > LargestStateFile)
        return {};
    QByteArray text(static_cast<qsizetype>(about.st_size), 0);
    const ssize_t got = read(file.Get(), text.data(), static_cast<std::size_t>(text.size()));
    text.resize(std::max<ssize_t>(got, 0));
    return text;
}

bool IsLoopback(const QString& address) {
    const QByteArray text = address.toLatin1();
    in_addr v4{};
    in6_addr v6{};
    if (inet_pton(AF_INET, text.constData(), &v4) == 1) return ntohl(v4.s_addr) >> 24 == 127;
    return inet_pton(AF_INET6, text.constData(), &v6) == 1 && IN6_IS_ADDR_LOOPBACK(&v6);
}

// The last line that says something, without what would break a sentence and without the
// `beginnings`, which say what ours says already.
QString Reason(const QByteArray& output, const QStringList& beginnings) {
    const QStringList lines =
        QString::fromUtf8(output.right(4096)).split(u'\n', Qt::SkipEmptyParts);
    QString reason = lines.isEmpty() ? QString() : lines.last().simplified();
    for (const QString& beginning : beginnings)
        if (reason.startsWith(beginning)) reason.remove(0, beginning.size());
    if (reason.isEmpty()) reason = QStringLiteral("it gave no reason");
    if (!reason.endsWith(u'.')) reason += u'.';
    return reason;
}

}  // namespace

LocalInstance::LocalInstance(const QString& name, const QString& program)
    : name_(ServerAddress::Parse(QStringLiteral("(localdb)\\") + name).localInstance),
      program_(program),
      folder_(DataFolder() + QStringLiteral("/quarv/localdb/") + name_) {
    if (program_.isEmpty())
        program_ = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path() +
                   QStringLiteral("/quarv-localdb");
}

LocalInstance::Access LocalInstance::Reach(int timeout) const {
    if (IsServed())
        if (const auto access = ReadState()) return *access;
    Start(timeout);
    if (const auto access = ReadState()) return *access;
    throw MakeConnectError(ConnectProblem::LocalServerUnreadable, {name_, File("state")});
}

// The server holds its lock as long as it serves, so the lock, not a process number, tells.
bool LocalInstance::IsServed() const {
    const UniqueFd lock = OpenToRead(File("lock"));
    return lock && flock(lock.Get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

QString LocalInstance::File(const char* name) const {
    return folder_ + u'/' + QLatin1String(name);
}

void LocalInstance::Start(int timeout) const {
    const QFileInfo program(program_);
    if (!program.isFile() || !program.isExecutable())
        throw MakeConnectError(ConnectProblem::LocalServerMissing, {program_});
    const auto fail = [this](const QString& reason) {
        throw MakeConnectError(ConnectProblem::LocalServerFailed, {name_, reason, File("log")});
    };
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program_, {QStringLiteral("start"), name_});
    if (!process.waitForStarted(timeout > 0 ? timeout : -1)) fail(process.errorString());
    if (!process.waitForFinished(timeout > 0 ? timeout : -1)) {
        process.kill();
        process.waitForFinished(1000);
        fail(QStringLiteral("it was not ready within %1.").arg(InSeconds((timeout + 999) / 1000)));
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        fail(Reason(process.readAllStandardError(),
                    {program.fileName() + QStringLiteral(": "),
                     QStringLiteral("the instance \"%1\" did not start: ").arg(name_)}));
}

std::optional<LocalInstance::Access> LocalInstance::ReadState() const {
    QHash<QByteArray, QString> entries;
    for (const QByteArray& line : ReadPrivateFile(File("state")).split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals > 0) entries.insert(line.left(equals), QString::fromUtf8(line.mid(equals + 1)));
    }
    Access access;
    access.host = entries.value("address");
    access.port = entries.value("port").toInt();
    access.user = entries.value("user");
    access.secret = entries.value("secret");
    const bool usable = entries.value("version") == QStringLiteral("1") &&
                        IsLoopback(access.host) && access.port > 0 && access.port <= 65535 &&
                        !access.user.isEmpty() && !access.secret.isEmpty();
    return usable ? std::optional(access) : std::nullopt;
}

}  // namespace quarv::ado::odbc
