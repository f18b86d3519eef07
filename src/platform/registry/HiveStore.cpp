#include "platform/registry/HiveStore.h"

#include "platform/registry/Overlay.h"

namespace quarv::registry {

namespace {

// True where one of them had to change something; the others are made all the same.
template <typename Make>
bool MakeAll(std::span<const Change> changes, const Make& make) {
    bool changed = false;
    for (const Change& change : changes) changed = make(change) || changed;
    return changed;
}

}  // namespace

HiveStore::HiveStore(HiveFile hive) : hive_(std::move(hive)) {}

HiveStore::HiveStore(HiveFile hive, HiveFile overlay)
    : hive_(std::move(hive)), overlay_(std::move(overlay)) {}

ResultCode HiveStore::Read() {
    if (holds_ == 0) return ReadFiles();
    if (!held_) held_ = ReadFiles();
    return *held_;
}

void HiveStore::Release() {
    if (--holds_ == 0) held_.reset();
}

ResultCode HiveStore::ReadFiles() {
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

ResultCode HiveStore::Write(std::span<const Change> changes) {
    held_.reset();
    const ResultCode code = hive_.Update([&](HiveKey& root) {
        return MakeAll(changes, [&](const Change& change) { return Apply(change, root); });
    });
    return overlay_ ? FollowInOverlay(changes, code) : code;
}

ResultCode HiveStore::FollowInOverlay(std::span<const Change> changes, ResultCode code) {
    if (code == ERROR_ACCESS_DENIED) {
        hive_.Read();
        return overlay_->Update([&](HiveKey& root) {
            return MakeAll(changes, [&](const Change& change) {
                return ApplyToOverlay(change, hive_.Root(), root);
            });
        });
    }
    overlay_->Read();
    if (code != ERROR_SUCCESS || overlay_->Root().IsBare()) return code;
    return overlay_->Update([&](HiveKey& root) {
        return MakeAll(changes,
                       [&](const Change& change) { return Reveal(change, hive_.Root(), root); });
    });
}

}  // namespace quarv::registry
