// HiveStore: what stands behind one predefined key: its hive and, for the machine-wide one, the
// user's own overlay. Owned by Hives. It knows no handles and no rights of them.
#pragma once

#include <optional>
#include <span>

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
    // While held, Read answers as its first call did and brings nothing in, until this object
    // writes. Holds nest: each needs its Release.
    void Hold() { ++holds_; }
    void Release();
    // As of the last Read. Valid until the next call.
    const HiveKey& Root() const;

    // Makes the changes in their order in the hive, or in the overlay where the hive may not be
    // written: a file gets all of them at one stroke or none. Codes as HiveFile::Update.
    ResultCode Write(std::span<const Change> changes);
    ResultCode Write(const Change& change) { return Write(std::span(&change, 1)); }

  private:
    ResultCode ReadFiles();
    // `code` is what the same changes came to in the hive.
    ResultCode FollowInOverlay(std::span<const Change> changes, ResultCode code);

    HiveFile hive_;
    std::optional<HiveFile> overlay_;
    HiveKey merged_;
    quint64 hiveGeneration_ = 0;
    quint64 overlayGeneration_ = 0;
    int holds_ = 0;
    std::optional<ResultCode> held_;  // what Read answers while it is held
};

}  // namespace quarv::registry
