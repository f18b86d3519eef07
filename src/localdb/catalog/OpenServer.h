// OpenServer: the engine with the whole system catalogue, as the program and the tests open it.
#pragma once

#include "localdb/engine/Server.h"

namespace quarv::localdb::catalog {

// As engine::Server::Open. The caller owns the server.
std::unique_ptr<engine::Server> OpenServer(const QString& dataDirectory);

}  // namespace quarv::localdb::catalog
