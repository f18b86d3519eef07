// ViewColumns: the columns of a view as the catalogue shows them: what its query gives when it
// is made, altered or refreshed.
#pragma once

#include "localdb/engine/BindContext.h"
#include "localdb/tsql/CreateView.h"

namespace quarv::localdb::engine {

// Raises SqlError 4502, 4506, 4511, 8158 and what binding its query raises.
std::vector<ColumnInfo> ViewColumns(BindContext& context, const tsql::CreateView& view);

}  // namespace quarv::localdb::engine
