#include "platform/ado/odbc/StoredResult.h"

#include <algorithm>
#include <cstring>

namespace quarv::ado::odbc {

namespace {

constexpr std::size_t BlockSize = 1024 * 1024;

// UTF-16 is read where it lies, so every cell begins at an even offset.
std::size_t Padded(std::size_t size) {
    return size + size % 2;
}

}  // namespace

StoredResult::StoredResult(Result& source, bool onRow)
    : columns_(source.Columns()), cells_(columns_.size()) {
    try {
        if (onRow) Append(source);
        while (source.Fetch()) Append(source);
    } catch (const DataError& error) {
        error_ = error;
    }
    building_ = {};
    if (onRow && !blocks_.empty()) FindCells();
}

void StoredResult::Append(Result& source) {
    building_.clear();
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Cell cell = source.Read(i);
        const auto* length = reinterpret_cast<const char*>(&cell.length);
        building_.insert(building_.end(), length, length + sizeof cell.length);
        if (!cell.IsNull()) building_.insert(building_.end(), cell.data, cell.data + cell.length);
        building_.resize(Padded(building_.size()));
    }
    if (blocks_.empty() ||
        blocks_.back().bytes.capacity() - blocks_.back().bytes.size() < building_.size()) {
        blocks_.emplace_back();
        blocks_.back().bytes.reserve(std::max(BlockSize, building_.size()));
    }
    std::vector<char>& bytes = blocks_.back().bytes;
    bytes.insert(bytes.end(), building_.begin(), building_.end());
}

bool StoredResult::Fetch() {
    if (!blocks_.empty() && at_ == blocks_.front().bytes.size()) {
        blocks_.pop_front();
        at_ = 0;
    }
    if (!blocks_.empty()) {
        FindCells();
        return true;
    }
    if (error_) {
        const DataError error = *error_;
        error_.reset();
        throw error;
    }
    return false;
}

Cell StoredResult::Read(std::size_t column) {
    return cells_[column];
}

void StoredResult::FindCells() {
    const char* data = blocks_.front().bytes.data();
    for (Cell& cell : cells_) {
        std::memcpy(&cell.length, data + at_, sizeof cell.length);
        at_ += sizeof cell.length;
        cell.data = cell.IsNull() ? nullptr : data + at_;
        if (!cell.IsNull()) at_ += Padded(static_cast<std::size_t>(cell.length));
    }
}

}  // namespace quarv::ado::odbc
