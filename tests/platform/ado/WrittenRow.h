// The current row of a record set as its WriteRow gives it, for tests.
#pragma once

#include <vector>

#include "platform/ado/Recordset.h"
#include "platform/ado/RowStore.h"

namespace quarv::test {

inline std::vector<Value> WrittenRow(const ado::Recordset& records) {
    const int columns = records.Fields().Count();
    ado::RowStore rows(columns);
    records.WriteRow(rows);
    std::vector<Value> values;
    for (int i = 0; i < columns; ++i) values.push_back(rows.ValueAt(0, i));
    return values;
}

}  // namespace quarv::test
