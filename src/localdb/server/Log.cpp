#include "localdb/server/Log.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QFile>
#include <cstdio>

namespace quarv::localdb::server {

namespace {

constexpr qsizetype LongestLine = 500;

QString OneLine(QString text) {
    text.truncate(LongestLine);
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator) {
            c = u'?';
        }
    }
    return text;
}

}  // namespace

Log::Log(const QString& path, qint64 largest) : path_(path), largest_(largest) {
    Open();
}

void Log::Open() {
    file_ = UniqueFd(::open(QFile::encodeName(path_).constData(),
                            O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    struct stat info {};
    const bool known = file_ && ::fstat(file_.Get(), &info) == 0;
    size_ = known ? info.st_size : 0;
    // A device or a pipe must stay where it is.
    turns_ = !known || S_ISREG(info.st_mode);
}

void Log::Turn() {
    const QByteArray now = QFile::encodeName(path_);
    const QByteArray old = QFile::encodeName(path_ + QStringLiteral(".old"));
    (void)::rename(now.constData(), old.constData());
    Open();
}

void Log::Write(const QString& text) {
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
    const QByteArray line = (time + u' ' + OneLine(text) + u'\n').toUtf8();
    const std::lock_guard lock(mutex_);
    if (path_.isEmpty()) {
        std::fputs(line.constData(), stderr);
        return;
    }
    if (turns_ && size_ + line.size() > largest_) Turn();
    if (!file_) return;
    const ssize_t written =
        ::write(file_.Get(), line.constData(), static_cast<size_t>(line.size()));
    if (written > 0) size_ += written;
}

}  // namespace quarv::localdb::server
