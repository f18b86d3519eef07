#include "grid/GridPartCache.h"

namespace quarv {

// At the program's end Qt may have ended some of them already: only the numbers are sure.
GridPartCache::~GridPartCache() {
    for (const Kept& kept : order_) QAccessible::deleteAccessibleInterface(kept.id);
    DeleteRetired();
}

GridPartAccess* GridPartCache::Find(int row, int column) {
    const auto found = places_.find({row, column});
    if (found == places_.end()) return nullptr;
    order_.splice(order_.begin(), order_, found->second);
    return found->second->part;
}

GridPartAccess* GridPartCache::Keep(std::unique_ptr<GridPartAccess> part) {
    if (order_.size() >= Most) EndOldest();
    GridPartAccess* kept = part.release();
    const QAccessible::Id id = QAccessible::registerAccessibleInterface(kept);
    const Place place(kept->Row(), kept->Column());
    order_.push_front({place, kept, id});
    places_[place] = order_.begin();
    return kept;
}

void GridPartCache::EndOldest() {
    const Kept oldest = order_.back();
    places_.erase(oldest.place);
    order_.pop_back();
    QAccessible::deleteAccessibleInterface(oldest.id);
}

void GridPartCache::RetireAll() {
    for (const Kept& kept : order_) {
        kept.part->Retire();
        retired_.push_back(kept.id);
    }
    places_.clear();
    order_.clear();
}

void GridPartCache::DeleteRetired() {
    for (const QAccessible::Id id : std::exchange(retired_, {}))
        QAccessible::deleteAccessibleInterface(id);
}

}  // namespace quarv
