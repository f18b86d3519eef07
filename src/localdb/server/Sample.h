// Sample: makes the sample database whole or not at all. A mark in the data directory says that it
// is being made; whoever finds the mark finds half a database and begins anew.
#pragma once

#include "localdb/server/EngineAccess.h"

namespace quarv::localdb::server {

// Opens the data directory and makes the sample where the database is missing or half made; before
// any client can see it. Raises ServerError Sample, with nothing half made left behind.
std::unique_ptr<engine::Server> OpenWithSample(const EngineAccess& engine,
                                               const QString& dataDirectory);

}  // namespace quarv::localdb::server
