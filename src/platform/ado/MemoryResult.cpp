#include "platform/ado/MemoryResult.h"

namespace quarv::ado {

MemoryResult MemoryResult::Rows(QStringList columns, std::vector<Row> rows) {
    MemoryResult result{std::move(columns), std::move(rows), {}};
    const auto width = static_cast<std::size_t>(result.columns.size());
    for (Row& row : result.rows) row.resize(width, Value::Null());
    return result;
}

MemoryResult MemoryResult::Closed() {
    return {};
}

MemoryResult MemoryResult::Fails(const QString& description, int number, int nativeError) {
    return {{}, {}, DataError(number, description, {}, nativeError)};
}

MemoryResult MemoryResult::ThenFails(const QString& description, int number) const {
    MemoryResult result = *this;
    result.error = DataError(number, description);
    return result;
}

}  // namespace quarv::ado
