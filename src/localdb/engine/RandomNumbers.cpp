#include "localdb/engine/RandomNumbers.h"

#include <random>

namespace quarv::localdb::engine {

namespace {

// A multiplicative generator (L'Ecuyer, "Efficient and portable combined random number
// generators"); the offset gives RAND(100) the value that its documentation shows.
constexpr int64_t Modulus = 2147483563;
constexpr int64_t Multiplier = 40014;
constexpr int64_t SeedOffset = 1532387062;

int64_t Wrap(int64_t value) {
    return (value % Modulus + Modulus) % Modulus;
}

}  // namespace

RandomNumbers::RandomNumbers() : state_(Wrap(std::random_device()())) {}

double RandomNumbers::Next(std::optional<int64_t> seed) {
    state_ = seed ? Wrap(Wrap(*seed) * Multiplier + SeedOffset) : Wrap(state_ * Multiplier);
    // Nought would stay nought for ever.
    if (state_ == 0) state_ = 1;
    return static_cast<double>(state_) / static_cast<double>(Modulus);
}

}  // namespace quarv::localdb::engine
