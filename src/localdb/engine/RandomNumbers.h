// RandomNumbers: the numbers of RAND, one row of them a session. Not for secrets.
#pragma once

#include <cstdint>
#include <optional>

namespace quarv::localdb::engine {

class RandomNumbers {
  public:
    RandomNumbers();

    // At least 0 and below 1. A seed starts anew: the same seed, the same numbers.
    double Next(std::optional<int64_t> seed);

  private:
    int64_t state_;
};

}  // namespace quarv::localdb::engine
