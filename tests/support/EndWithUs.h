// EndWithUs: ties a child process to the test that starts it. Where a test dies, a server that
// lives on would keep the runner's pipe open, and the runner would wait for its end.
#pragma once

#include <signal.h>
#include <sys/prctl.h>

#include <QProcess>

namespace quarv {

// To be called before `process` starts. The child ends with the thread that starts it.
inline void EndWithUs(QProcess& process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

}  // namespace quarv
