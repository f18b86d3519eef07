// CommandLine: the program's verbs and options, from arguments to exit status.
#pragma once

#include <QStringList>

#include "localdb/server/EngineAccess.h"

namespace quarv::localdb::server {

// `arguments` without the program's name. Writes to stdout and stderr; returns the exit status: 0,
// 1 after an error (one line on stderr), 2 after a wrong command line.
int RunCommandLine(const QStringList& arguments, const EngineAccess& engine);

}  // namespace quarv::localdb::server
