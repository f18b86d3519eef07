// EngineAccess: how this folder gets at the engine that the program was linked with, and at the
// sample that it carries. Filled in by main.cpp, or by a test with an engine of its own.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "localdb/engine/Server.h"

namespace quarv::localdb::server {

struct EngineAccess {
    // Opens a data directory. Raises Error.
    std::function<std::unique_ptr<engine::Server>(const QString& dataDirectory)> open;
    QString productVersion;     // "16.00.1000"
    QString sampleName;         // the sample's database; empty: there is none
    QStringList sampleBatches;  // what fills it, once it exists
};

}  // namespace quarv::localdb::server
