// Int128: the signed 128-bit integer that exact decimals are computed in: 38 digits and a sign.
#pragma once

namespace quarv::localdb::engine {

__extension__ typedef __int128 Int128;

}  // namespace quarv::localdb::engine
