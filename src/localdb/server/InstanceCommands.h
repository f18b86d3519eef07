// InstanceCommands: start, stop, info and delete for a user's instances, as the command line offers
// them. Raise ServerError.
#pragma once

#include <QString>

#include "localdb/server/EngineAccess.h"

namespace quarv::localdb::server {

// Returns when the instance serves, whoever started it: of any number of callers at once, exactly
// one makes the process. The sample is made in the instance "quarv".
void StartInstance(const QString& name, const EngineAccess& engine);

// Returns when the process has ended; at once where none runs.
void StopInstance(const QString& name);

// One paragraph about the instance, or about each with an empty name. Shows no secret.
QString DescribeInstances(const QString& name);

// Removes the instance with its databases. Refused while it runs.
void DeleteInstance(const QString& name);

}  // namespace quarv::localdb::server
