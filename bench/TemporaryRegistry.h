// TemporaryRegistry: an empty registry of its own for a bench's windows, gone with this object.
#pragma once

#include <QTemporaryDir>

#include "db/Registry.h"

namespace quarv::bench {

struct TemporaryRegistry {
    QTemporaryDir home;
    registry::Hives hives{{.user = home.path().toUtf8() + "/user",
                           .machine = home.path().toUtf8() + "/machine",
                           .overlay = home.path().toUtf8() + "/overlay"}};
    Registry registry{hives};
};

}  // namespace quarv::bench
