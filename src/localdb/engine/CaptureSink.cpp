#include "localdb/engine/CaptureSink.h"

#include "localdb/engine/StoredForm.h"

namespace quarv::localdb::engine {

void CaptureSink::BeginRows(std::span<const Column> columns) {
    std::vector<SqlType> types;
    for (const Column& column : columns) types.push_back(column.type);
    sets_.push_back(std::make_unique<RowSpool>(std::move(types)));
    row_.resize(columns.size());
}

void CaptureSink::Row(std::span<const Datum> row) {
    const std::vector<SqlType>& types = sets_.back()->Types();
    for (size_t i = 0; i < row.size(); ++i) row_[i] = FromDatum(row[i], types[i]);
    sets_.back()->Append(row_);
}

}  // namespace quarv::localdb::engine
