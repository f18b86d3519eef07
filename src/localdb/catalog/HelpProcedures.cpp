#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

std::vector<engine::SystemProcedure> HelpProcedures() {
    return {};
}

}  // namespace quarv::localdb::catalog
