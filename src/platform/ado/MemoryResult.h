// MemoryResult: one scripted result of a statement: rows, a result without rows, or an error. Made
// by whoever writes a MemoryScript; no driver is involved.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "base/DataError.h"
#include "base/Value.h"

namespace quarv::ado {

struct MemoryResult {
    using Row = std::vector<Value>;

    QStringList columns;  // names; none means a result without rows
    std::vector<Row> rows;
    // Raised in place of the result or, where there are columns, once `rows` have been read or are
    // passed over.
    std::optional<DataError> error;

    // A rowset: MemoryResult::Rows({"id", "name"}, {{1, u"one"}, {2, Value::Null()}}). A row
    // shorter than the columns is filled with nulls.
    static MemoryResult Rows(QStringList columns, std::vector<Row> rows = {});
    // What a statement without rows gives.
    static MemoryResult Closed();
    // The statement fails; `number` as DataError::Number counts.
    static MemoryResult Fails(const QString& description, int number = -2147217900,
                              int nativeError = 0);

    // The same rowset, whose reading fails behind its last row.
    MemoryResult ThenFails(const QString& description, int number = -2147467259) const;
};

using MemoryResults = std::vector<MemoryResult>;

}  // namespace quarv::ado
