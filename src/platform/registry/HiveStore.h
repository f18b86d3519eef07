// HiveStore: what stands behind one predefined key: its hive and, for the machine-wide one, the
// user's own overlay. Owned by Hives. It knows no handles and no rights of them.
#pragma once

#include <optional>

#include "platform/registry/Change.h"
#include "platform/registry/HiveFile.h"

namespace quarv::registry {

class HiveStore {
  public:
    explicit HiveStore(HiveFile hive);
    // A hive that may be unreadable or unwritable here; `overlay` then takes its place.
    HiveStore(HiveFile hive, HiveFile overlay);

    // Brings the tree up to date; codes as HiveFile::Read. A hive or an overlay that cannot be read
    // counts as empty where there are both.
    ResultCode Read();
    // As of the last Read. Valid until the next call.
    const HiveKey& Root() const;

    // Makes the change in the hive, or in the overlay where the hive may not be written. Codes as
    // HiveFile::Update.
    ResultCode Write(const Change& change);

  private:
    ResultCode WriteBesideOverlay(const Change& change);

    HiveFile hive_;
    std::optional<HiveFile> overlay_;
    HiveKey merged_;
    quint64 hiveGeneration_ = 0;
    quint64 overlayGeneration_ = 0;
};

}  // namespace quarv::registry
