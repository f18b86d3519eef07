// ProcessMemory: what this process has come to hold since the object was made, as the kernel counts
// resident memory, in MiB. Raises std::runtime_error where the kernel does not tell.
#pragma once

#include <QByteArray>
#include <QFile>
#include <cstdio>
#include <stdexcept>

namespace quarv::bench {

class ProcessMemory {
  public:
    ProcessMemory() {
        // Lets the peak begin anew at what is resident now.
        QFile file(QStringLiteral("/proc/self/clear_refs"));
        if (file.open(QIODevice::WriteOnly)) file.write("5");
        before_ = MiB("VmRSS:");
    }

    double Growth() const { return MiB("VmRSS:") - before_; }
    // At its highest.
    double PeakGrowth() const { return MiB("VmHWM:") - before_; }

  private:
    static double MiB(const char* name) {
        QFile file(QStringLiteral("/proc/self/status"));
        if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no /proc/self/status");
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith(name))
                return line.simplified().split(' ').value(1).toDouble() / 1024;
        throw std::runtime_error("no such line in /proc/self/status");
    }

    double before_ = 0;
};

// Prints the line of a bench that measures memory; true where it keeps the limit.
inline bool ReportMemory(const char* name, double grown, double limit) {
    std::printf("%s %.2f %.2f %.2f\n", name, grown, grown, limit);
    std::fflush(stdout);
    return grown <= limit;
}

}  // namespace quarv::bench
