// HelpIndex: sp_helpindex, which sp_help runs too.
#pragma once

#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

// The table's indexes by name; message 15472, with `name` as the caller wrote it, and no result set
// where it has none.
void HelpIndex(engine::SystemCall& call, const engine::TableInfo& table, const QString& name);

}  // namespace quarv::localdb::catalog
