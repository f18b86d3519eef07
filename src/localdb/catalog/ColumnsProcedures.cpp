#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

std::vector<engine::SystemProcedure> ColumnsProcedures() {
    return {};
}

}  // namespace quarv::localdb::catalog
