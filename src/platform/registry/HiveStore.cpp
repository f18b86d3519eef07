#include "platform/registry/HiveStore.h"

#include "platform/registry/Overlay.h"

namespace quarv::registry {

HiveStore::HiveStore(HiveFile hive) : hive_(std::move(hive)) {}

HiveStore::HiveStore(HiveFile hive, HiveFile overlay)
    : hive_(std::move(hive)), overlay_(std::move(overlay)) {}

ResultCode HiveStore::Read() {
    const ResultCode code = hive_.Read();
    if (!overlay_) return code;
    overlay_->Read();
    const bool current =
        hiveGeneration_ == hive_.Generation() && overlayGeneration_ == overlay_->Generation();
    if (!current && !overlay_->Root().IsBare()) merged_ = Merge(hive_.Root(), overlay_->Root());
    hiveGeneration_ = hive_.Generation();
    overlayGeneration_ = overlay_->Generation();
    return ERROR_SUCCESS;
}

const HiveKey& HiveStore::Root() const {
    return overlay_ && !overlay_->Root().IsBare() ? merged_ : hive_.Root();
}

ResultCode HiveStore::Write(const Change& change) {
    if (overlay_) return WriteBesideOverlay(change);
    return hive_.Update([&](HiveKey& root) { return Apply(change, root); });
}

ResultCode HiveStore::WriteBesideOverlay(const Change& change) {
    const ResultCode code = hive_.Update([&](HiveKey& root) { return Apply(change, root); });
    if (code == ERROR_ACCESS_DENIED) {
        hive_.Read();
        return overlay_->Update(
            [&](HiveKey& root) { return ApplyToOverlay(change, hive_.Root(), root); });
    }
    overlay_->Read();
    if (code != ERROR_SUCCESS || overlay_->Root().IsBare()) return code;
    return overlay_->Update([&](HiveKey& root) { return Reveal(change, hive_.Root(), root); });
}

}  // namespace quarv::registry
