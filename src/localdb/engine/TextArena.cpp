#include "localdb/engine/TextArena.h"

#include <algorithm>
#include <cstring>

namespace quarv::localdb::engine {

namespace {

constexpr size_t FirstBlock = 1024;

}  // namespace

char* TextArena::Allocate(size_t size) {
    while (current_ < blocks_.size() && used_ + size > blocks_[current_].size) {
        ++current_;
        used_ = 0;
    }
    if (current_ == blocks_.size()) {
        // Most statements keep a few words and are over.
        const size_t bytes = std::max(size, blocks_.empty() ? FirstBlock : BlockSize);
        blocks_.push_back({std::make_unique_for_overwrite<char[]>(bytes), bytes});
    }
    char* place = blocks_[current_].bytes.get() + used_;
    used_ += size;
    return place;
}

std::string_view TextArena::Keep(std::string_view text) {
    char* place = Allocate(text.size());
    if (!text.empty()) std::memcpy(place, text.data(), text.size());
    return {place, text.size()};
}

void TextArena::Reset() {
    // A block for one giant text is not kept for the rows that follow.
    std::erase_if(blocks_, [](const Block& block) { return block.size > 16 * BlockSize; });
    current_ = 0;
    used_ = 0;
}

}  // namespace quarv::localdb::engine
