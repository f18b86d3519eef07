// The schema rowsets that Connection::OpenSchema gives, by the numbers of the OLE DB programmer's
// reference ("Schema Rowsets"), and the table that one may be restricted to.
#pragma once

#include <QString>

namespace quarv::ado {

enum class Schema : int {
    Catalogs = 1,      // CATALOG_NAME, DESCRIPTION
    Indexes = 12,      // a row for each column of each index: INDEX_NAME, COLUMN_NAME, ...
    Procedures = 16,   // PROCEDURE_CATALOG, PROCEDURE_SCHEMA, PROCEDURE_NAME, PROCEDURE_TYPE, ...
    Tables = 20,       // TABLE_CATALOG, TABLE_SCHEMA, TABLE_NAME, TABLE_TYPE, ...
    PrimaryKeys = 28,  // a row for each column of the key: COLUMN_NAME, PK_NAME, ...
};

// What is empty restricts nothing.
struct TableName {
    QString schema;
    QString name;
};

}  // namespace quarv::ado
