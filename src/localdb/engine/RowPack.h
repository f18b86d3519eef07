// RowPack: rows as one value and back. What an apply computes for a row of its left side is packed
// by q_pack(c1, c2, ...) and read again as the table q_unpack(packed), whose columns are "c1",
// "c2", ...: so the storage joins with a query that depends on the row.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quarv::localdb::engine {

class Store;

// Makes packed rows value by value.
class RowPacker {
  public:
    explicit RowPacker(int columns) : bytes_(1, static_cast<char>(columns)) {}
    // Raise SqlError 8623 where the rows grow too many.
    void Add(std::string_view text);
    void Add(int64_t integer);
    const std::string& Bytes() const { return bytes_; }

  private:
    void Append(int type, int64_t number);

    std::string bytes_;
};

void RegisterRowPack(Store& store);

}  // namespace quarv::localdb::engine
