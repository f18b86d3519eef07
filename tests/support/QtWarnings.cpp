#include "support/QtWarnings.h"

#include <algorithm>
#include <cstdio>
#include <mutex>

namespace quarv::test {

namespace {

struct Log {
    std::mutex mutex;
    QStringList allowed;
    QStringList unexpected;
};

Log& TheLog() {
    static Log log;
    return log;
}

void Note(QtMsgType type, const QMessageLogContext&, const QString& message) {
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtDebugMsg || type == QtInfoMsg) return;
    Log& log = TheLog();
    const std::lock_guard lock(log.mutex);
    const bool allowed =
        std::any_of(log.allowed.cbegin(), log.allowed.cend(),
                    [&message](const QString& part) { return message.contains(part); });
    if (!allowed) log.unexpected.append(message);
}

}  // namespace

void AllowQtWarning(const QString& part) {
    Log& log = TheLog();
    const std::lock_guard lock(log.mutex);
    log.allowed.append(part);
}

QStringList TakeUnexpectedQtWarnings() {
    Log& log = TheLog();
    const std::lock_guard lock(log.mutex);
    log.allowed.clear();
    return std::exchange(log.unexpected, {});
}

void CatchQtWarnings() {
    qInstallMessageHandler(Note);
}

}  // namespace quarv::test
