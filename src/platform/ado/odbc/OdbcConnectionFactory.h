// The way in to the ODBC implementation: the only header of this folder that a program needs.
#pragma once

#include "platform/ado/Connection.h"

namespace quarv::ado::odbc {

// Closed connections over the ODBC driver manager. `localServer` is the path of the embedded
// server's program, started for data sources "(localdb)\name"; empty: beside the running program.
ConnectionFactory OdbcConnectionFactory(const QString& localServer = {});

// Loads the driver for SQL Server for good, so that the first connection need not. Where that
// fails, connecting will tell.
void LoadDriver();

}  // namespace quarv::ado::odbc
