#include "support/QtWarnings.h"

#include <algorithm>
#include <cstdio>
#include <mutex>

namespace quarv::test {

namespace {

// What the offscreen platform and a bare environment say of themselves.
constexpr const char16_t* Harmless[] = {
    u"This plugin does not support",
    u"XDG_RUNTIME_DIR",
};

bool IsHarmless(const QString& message) {
    return std::any_of(std::begin(Harmless), std::end(Harmless), [&message](const char16_t* part) {
        return message.contains(QString::fromUtf16(part));
    });
}

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
    if (type == QtDebugMsg || type == QtInfoMsg || IsHarmless(message)) return;
    std::fprintf(stderr, "%s\n", qPrintable(message));
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
