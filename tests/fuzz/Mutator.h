// Mutator: makes one input out of others, the same for the same seed. Knows nothing of what the
// inputs mean.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace quarv::fuzz {

using Input = std::vector<uint8_t>;

class Mutator {
  public:
    // `corpus` must outlive it and hold one input at least.
    Mutator(const std::vector<Input>& corpus, uint64_t seed) : corpus_(corpus), random_(seed) {}

    // One of the corpus with one to eight changes.
    Input Next();

  private:
    static constexpr size_t Largest = size_t{64} * 1024;

    size_t Below(size_t limit);  // 0 for a limit of 0
    void Change(Input& input);
    void SetNumber(Input& input);
    void Repeat(Input& input);
    void Splice(Input& input);

    const std::vector<Input>& corpus_;
    std::mt19937_64 random_;
};

}  // namespace quarv::fuzz
