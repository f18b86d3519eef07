#include "platform/ado/MemoryRecordset.h"

#include <utility>

#include "platform/ado/DataErrors.h"

namespace quarv::ado {

RecordsetPtr MemoryRecordset::First(MemoryResults results, std::shared_ptr<bool> connectionOpen) {
    if (results.empty()) results.push_back(MemoryResult::Closed());
    auto walk = std::make_shared<Walk>();
    walk->results = std::move(results);
    walk->connectionOpen = std::move(connectionOpen);
    return Step(walk);
}

RecordsetPtr MemoryRecordset::Step(const std::shared_ptr<Walk>& walk) {
    if (walk->next == walk->results.size()) return nullptr;
    const MemoryResult& result = walk->results[walk->next++];
    if (result.error && result.columns.isEmpty()) throw DataError(*result.error);
    return RecordsetPtr(new MemoryRecordset(walk));
}

MemoryRecordset::MemoryRecordset(std::shared_ptr<Walk> walk)
    : walk_(std::move(walk)), result_(walk_->next - 1), open_(!Result().columns.isEmpty()) {
    const int count = static_cast<int>(Result().columns.size());
    fields_.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) fields_.emplace_back(*this, i);
}

ObjectState MemoryRecordset::State() const {
    return open_ && *walk_->connectionOpen ? adStateOpen : adStateClosed;
}

bool MemoryRecordset::EOF() const {
    RequireOpen();
    if (row_ < Result().rows.size()) return false;
    RaiseBehindLastRow();
    return true;
}

void MemoryRecordset::MoveNext() {
    if (EOF()) throw MakeDataError(DataErrorCode::NoCurrentRow);
    ++row_;
}

RecordsetPtr MemoryRecordset::NextRecordset() {
    if (!*walk_->connectionOpen) throw MakeDataError(DataErrorCode::InvalidConnection);
    if (handedOn_) throw MakeDataError(DataErrorCode::ObjectClosed);
    // Going on reads the rows that nobody read, and meets what they end in.
    if (std::exchange(open_, false)) RaiseBehindLastRow();
    RecordsetPtr next = Step(walk_);
    handedOn_ = next != nullptr;
    return next;
}

void MemoryRecordset::Close() {
    RequireOpen();
    open_ = false;
    handedOn_ = true;
}

int MemoryRecordset::Count() const {
    return State() == adStateOpen ? static_cast<int>(fields_.size()) : 0;
}

const Field& MemoryRecordset::operator[](int index) const {
    if (index < 0 || index >= Count()) throw MakeDataError(DataErrorCode::ItemNotFound);
    return fields_[static_cast<std::size_t>(index)];
}

const Field& MemoryRecordset::operator[](const QString& name) const {
    for (int i = 0; i < Count(); ++i)
        if (Result().columns[i].compare(name, Qt::CaseInsensitive) == 0) return (*this)[i];
    throw MakeDataError(DataErrorCode::ItemNotFound);
}

void MemoryRecordset::RequireOpen() const {
    if (State() != adStateOpen) throw MakeDataError(DataErrorCode::ObjectClosed);
}

void MemoryRecordset::RaiseBehindLastRow() const {
    if (!Result().error || errorRaised_) return;
    errorRaised_ = true;
    throw DataError(*Result().error);
}

QString MemoryRecordset::MemoryField::Name() const {
    return owner_.Result().columns[index_];
}

quarv::Value MemoryRecordset::MemoryField::Value() const {
    if (owner_.EOF()) throw MakeDataError(DataErrorCode::NoCurrentRow);
    return owner_.Result().rows[owner_.row_][static_cast<std::size_t>(index_)];
}

}  // namespace quarv::ado
