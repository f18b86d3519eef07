#include "localdb/server/DetachedProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QByteArray>
#include <algorithm>
#include <cerrno>
#include <exception>

#include "base/Error.h"
#include "base/UniqueFd.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

// What the new process writes when it is ready; anything else is a reason.
constexpr char Ready = '+';

void Say(int descriptor, const QByteArray& text) {
    (void)!::write(descriptor, text.constData(), static_cast<size_t>(text.size()));
}

// Leaves 0, 1 and 2 on /dev/null and closes all else but the two.
void ForgetFiles(int first, int second) {
    const int null = ::open("/dev/null", O_RDWR);
    for (int standard = 0; standard <= 2; ++standard) ::dup2(null, standard);
    const auto low = static_cast<unsigned>(std::min(first, second));
    const auto high = static_cast<unsigned>(std::max(first, second));
    if (low > 3) ::close_range(3, low - 1, 0);
    if (high > low + 1) ::close_range(low + 1, high - 1, 0);
    ::close_range(high + 1, ~0u, 0);
}

[[noreturn]] void RunChild(int keep, int report,
                           const std::function<void(const std::function<void()>&)>& work) {
    ::setsid();
    ::umask(077);
    (void)!::chdir("/");
    ForgetFiles(keep, report);
    int status = 0;
    try {
        work([report] {
            Say(report, QByteArray(1, Ready));
            ::close(report);
        });
    } catch (const Error& error) {
        Say(report, error.Description().toUtf8());
        status = 1;
    } catch (const std::exception& error) {
        Say(report, error.what());
        status = 1;
    }
    ::_exit(status);
}

QString WaitForReport(int descriptor, int timeoutMs) {
    QByteArray text;
    pollfd entry{descriptor, POLLIN, 0};
    for (;;) {
        const int count = ::poll(&entry, 1, timeoutMs);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return QStringLiteral("it takes too long");
        char buffer[512];
        const ssize_t got = ::read(descriptor, buffer, sizeof buffer);
        if (got > 0) text.append(buffer, got);
        if (!text.isEmpty() && text.front() == Ready) return {};
        if (got <= 0) break;
    }
    return text.isEmpty() ? QStringLiteral("it ended without a word") : QString::fromUtf8(text);
}

}  // namespace

QString RunDetached(int keep, int timeoutMs,
                    const std::function<void(const std::function<void()>&)>& work) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return SystemText(errno);
    const UniqueFd from(ends[0]);
    UniqueFd to(ends[1]);
    const pid_t child = ::fork();
    if (child < 0) return SystemText(errno);
    if (child == 0) RunChild(keep, to.Get(), work);
    to.Reset();
    return WaitForReport(from.Get(), timeoutMs);
}

}  // namespace quarv::localdb::server
