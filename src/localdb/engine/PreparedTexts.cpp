#include "localdb/engine/PreparedTexts.h"

#include "localdb/engine/SqlError.h"

namespace quarv::localdb::engine {

int64_t PreparedTexts::Keep(PreparedText text) {
    if (texts_.size() >= Most || text.Units() > MostUnits - units_) throw SqlError(8623);
    units_ += text.Units();
    texts_[++last_] = std::move(text);
    return last_;
}

const PreparedText* PreparedTexts::Find(int64_t handle) const {
    const auto found = texts_.find(handle);
    return found == texts_.end() ? nullptr : &found->second;
}

void PreparedTexts::Forget(int64_t handle) {
    const auto found = texts_.find(handle);
    if (found == texts_.end()) return;
    units_ -= found->second.Units();
    texts_.erase(found);
}

void PreparedTexts::Clear() {
    texts_.clear();
    units_ = 0;
}

}  // namespace quarv::localdb::engine
