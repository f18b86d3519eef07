// OlderTypes: how clients of older versions get values of types that their version does not have:
// the long types of old for (max) and xml, text for the newer dates and times.
#pragma once

#include "localdb/server/RowEncoder.h"

namespace quarv::localdb::server {

struct OlderForm {
    engine::SqlType type;
    RowEncoder::ValueWriter write = nullptr;  // nothing: as values of `type` are written
};

// The type itself where the client knows it.
OlderForm FormFor(tds::Dialect dialect, const engine::SqlType& type);

}  // namespace quarv::localdb::server
