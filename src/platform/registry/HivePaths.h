// HivePaths: where the hive files lie, after the XDG Base Directory Specification.
#pragma once

#include <QByteArray>

namespace quarv::registry {

// Absolute paths in the file system's bytes.
struct HivePaths {
    QByteArray user;     // of HKEY_CURRENT_USER
    QByteArray machine;  // of HKEY_LOCAL_MACHINE
    QByteArray overlay;  // the user's own, over `machine`

    // `user` and `overlay` under $XDG_CONFIG_HOME (default ~/.config), `machine` under the first
    // of $XDG_CONFIG_DIRS (default /etc/xdg); a relative path there counts as unset.
    static HivePaths FromEnvironment();
};

}  // namespace quarv::registry
