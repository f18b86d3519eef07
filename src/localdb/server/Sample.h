// Sample: makes the sample database whole or not at all: in a directory of its own, from where its
// file moves to its place only when every batch has run.
#pragma once

#include "localdb/server/EngineAccess.h"

namespace quarv::localdb::server {

// Opens the data directory, making the sample in it first where the database is missing. Raises
// ServerError Sample, with nothing half made left behind.
std::unique_ptr<engine::Server> OpenWithSample(const EngineAccess& engine,
                                               const QString& dataDirectory);

}  // namespace quarv::localdb::server
