#include "platform/registry/HivePaths.h"

#include <pwd.h>
#include <unistd.h>

#include <QList>

namespace quarv::registry {

namespace {

QByteArray HomeFolder() {
    const QByteArray home = qgetenv("HOME");
    if (home.startsWith('/')) return home;
    const passwd* account = ::getpwuid(::getuid());
    return account != nullptr ? QByteArray(account->pw_dir) : QByteArray("/");
}

}  // namespace

HivePaths HivePaths::FromEnvironment() {
    QByteArray own = qgetenv("XDG_CONFIG_HOME");
    if (!own.startsWith('/')) own = HomeFolder() + "/.config";
    QByteArray shared = qgetenv("XDG_CONFIG_DIRS").split(':').first();
    if (!shared.startsWith('/')) shared = "/etc/xdg";
    return {.user = own + "/quarv/user.hive",
            .machine = shared + "/quarv/machine.hive",
            .overlay = own + "/quarv/machine-overlay.hive"};
}

}  // namespace quarv::registry
