// ColumnRows: result sets shaped like the server's catalogue view of columns, for the tests of this
// folder.
#pragma once

#include "platform/ado/MemoryResult.h"

namespace quarv {

struct ColumnRow {
    QString name;
    QString dataType;
    Value length = Value::Null();
    Value domain = Value::Null();
    Value nullable = u"NO";
    Value defaultValue = Value::Null();
};

inline ado::MemoryResult ColumnRows(const std::vector<ColumnRow>& columns) {
    std::vector<ado::MemoryResult::Row> rows;
    for (const ColumnRow& c : columns)
        rows.push_back({c.name, c.defaultValue, c.nullable, c.dataType, c.length, c.domain});
    return ado::MemoryResult::Rows({"COLUMN_NAME", "COLUMN_DEFAULT", "IS_NULLABLE", "DATA_TYPE",
                                    "CHARACTER_MAXIMUM_LENGTH", "DOMAIN_NAME"},
                                   std::move(rows));
}

}  // namespace quarv
