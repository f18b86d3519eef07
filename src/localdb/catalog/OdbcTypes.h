// OdbcTypes: how the data types look to ODBC: their codes, their sizes as ODBC counts them, and the
// columns that sp_columns and sp_sproc_columns show for a typed thing. Constant tables.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "localdb/engine/ResultSink.h"

namespace quarv::localdb::catalog {

// "ODBC Programmer's Reference", "Appendix D: Data Types".
struct OdbcType {
    engine::TypeKind kind;
    int code2;      // the type's code for ODBC 2
    int code3;      // and for ODBC 3
    int longCode;   // of the (max) form; 0 where there is none
    int sqlType;    // SQL_DATA_TYPE
    int subcode;    // SQL_DATETIME_SUB; 0: none
    int precision;  // 0: as declared
    int length;     // bytes of the transferred form; 0: depends on the declaration
    int scale;      // -1: none or as declared
    int wireType;   // SS_DATA_TYPE where it may not be null
    int wireTypeN;  // and where it may

    int Code(int64_t odbcVersion) const { return odbcVersion >= 3 ? code3 : code2; }
};

class OdbcTypes {
  public:
    // The types that can be stored.
    static std::span<const OdbcType> All();

    // "WITH m(number, ...) AS (VALUES ...) ": the table for storage SQL; m.number is what
    // q_type_number gives.
    static std::string Relation(int64_t odbcVersion);

    // DATA_TYPE to SS_DATA_TYPE, as sp_columns has them.
    static void AddColumns(std::vector<engine::Column>& columns);
    // What belongs to the thing and not to its type.
    struct Source {
        const char* typeName;
        const char* defaultText;
        const char* ordinal;
    };
    // The expressions for AddColumns; "c" with "type" and "nullable" is the thing, "m" the table.
    static std::string Expressions(const Source& source);

    // Single expressions of those, over "c.type" and "m".
    static const char* const DataType;
    static const char* const Precision;
    static const char* const Length;
    static const char* const Scale;
};

}  // namespace quarv::localdb::catalog
