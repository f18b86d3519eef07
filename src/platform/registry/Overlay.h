// Overlay: a hive of one user's own that lies over one which that user may not write. Reads see the
// overlay first; what it marks as deleted is not seen. Pure functions over the two trees.
#pragma once

#include "platform/registry/Change.h"

namespace quarv::registry {

// `base` as it looks through `overlay`: a plain tree without marks.
HiveKey Merge(const HiveKey& base, const HiveKey& overlay);

// Makes the change in the overlay, so that it shows through Merge. False where nothing changed.
bool ApplyToOverlay(const Change& change, const HiveKey& base, HiveKey& overlay);

// After the change was made in the base itself: sees to it that the overlay does not hide it.
// False where the overlay needs no change.
bool Reveal(const Change& change, const HiveKey& base, HiveKey& overlay);

}  // namespace quarv::registry
