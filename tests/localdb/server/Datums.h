// Values as the engine hands them over, for tests of what the wire makes of them.
#pragma once

#include <string_view>

#include "localdb/engine/Datum.h"

namespace quarv::localdb::server {

inline engine::Datum Whole(int64_t value) {
    engine::Datum datum;
    datum.null = false;
    datum.integer = value;
    return datum;
}

inline engine::Datum Offset(int64_t ticks, int16_t minutes) {
    engine::Datum datum = Whole(ticks);
    datum.offsetMinutes = minutes;
    return datum;
}

// Borrows the text.
inline engine::Datum Text(std::string_view text) {
    engine::Datum datum;
    datum.null = false;
    datum.text = text;
    return datum;
}

}  // namespace quarv::localdb::server
