// The schema rowsets that Connection::OpenSchema gives, by the numbers of the OLE DB programmer's
// reference ("Schema Rowsets").
#pragma once

namespace quarv::ado {

enum class Schema : int {
    Catalogs = 1,     // CATALOG_NAME, DESCRIPTION
    Procedures = 16,  // PROCEDURE_CATALOG, PROCEDURE_SCHEMA, PROCEDURE_NAME, PROCEDURE_TYPE, ...
    Tables = 20,      // TABLE_CATALOG, TABLE_SCHEMA, TABLE_NAME, TABLE_TYPE, ...
};

}  // namespace quarv::ado
