#include "localdb/catalog/SystemCatalog.h"

namespace quarv::localdb::catalog {

std::vector<engine::SystemProcedure> KeyProcedures() {
    return {};
}

}  // namespace quarv::localdb::catalog
