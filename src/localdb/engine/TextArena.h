// TextArena: memory for the texts that one row's expressions make. Reset makes it empty and keeps
// what it got from the system, so that a long result allocates only in its first rows.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace quarv::localdb::engine {

class TextArena {
  public:
    // Bytes that live until Reset.
    char* Allocate(size_t size);
    std::string_view Keep(std::string_view text);
    void Reset();

  private:
    static constexpr size_t BlockSize = 64 * 1024;
    struct Block {
        std::unique_ptr<char[]> bytes;
        size_t size = 0;
    };
    std::vector<Block> blocks_;
    size_t current_ = 0;
    size_t used_ = 0;
};

}  // namespace quarv::localdb::engine
