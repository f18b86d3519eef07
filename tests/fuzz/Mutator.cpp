#include "Mutator.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quarv::fuzz {

namespace {

// Where counts and lengths break.
constexpr std::array<uint32_t, 12> Numbers{
    0, 1, 0x7F, 0x80, 0xFF, 0x100, 0x7FFF, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

std::ptrdiff_t At(size_t place) {
    return static_cast<std::ptrdiff_t>(place);
}

}  // namespace

size_t Mutator::Below(size_t limit) {
    return limit == 0 ? 0 : static_cast<size_t>(random_() % limit);
}

Input Mutator::Next() {
    Input input = corpus_[Below(corpus_.size())];
    for (size_t changes = 1 + Below(8); changes > 0; --changes) Change(input);
    if (input.size() > Largest) input.resize(Largest);
    return input;
}

void Mutator::Change(Input& input) {
    const size_t place = Below(input.size());
    if (input.empty()) {
        input.push_back(static_cast<uint8_t>(random_()));
        return;
    }
    switch (Below(8)) {
        case 0:
            input[place] ^= static_cast<uint8_t>(1u << Below(8));
            break;
        case 1:
            input[place] = static_cast<uint8_t>(random_());
            break;
        case 2:
            SetNumber(input);
            break;
        case 3:
            input.insert(input.begin() + At(place), static_cast<uint8_t>(random_()));
            break;
        case 4:
            input.erase(
                input.begin() + At(place),
                input.begin() + At(place + 1 + Below(std::min<size_t>(16, input.size() - place))));
            break;
        case 5:
            Repeat(input);
            break;
        case 6:
            input.resize(place);
            break;
        default:
            Splice(input);
            break;
    }
}

void Mutator::SetNumber(Input& input) {
    const uint32_t number = Numbers[Below(Numbers.size())];
    const size_t place = Below(input.size());
    const size_t bytes = std::min<size_t>(size_t{1} << Below(3), input.size() - place);
    const bool big = Below(2) == 0;
    for (size_t i = 0; i < bytes; ++i) {
        const size_t shift = 8 * (big ? bytes - 1 - i : i);
        input[place + i] = static_cast<uint8_t>(number >> shift);
    }
}

// A stretch of the input stands there several times.
void Mutator::Repeat(Input& input) {
    const size_t place = Below(input.size());
    const size_t size = 1 + Below(std::min<size_t>(32, input.size() - place));
    const Input stretch(input.begin() + At(place),
                        input.begin() + At(place + std::min(size, input.size() - place)));
    for (size_t times = size_t{1} << Below(9); times > 0 && input.size() < Largest; --times) {
        input.insert(input.begin() + At(place), stretch.begin(), stretch.end());
    }
}

// A stretch of another input, in place of the rest or between.
void Mutator::Splice(Input& input) {
    const Input& other = corpus_[Below(corpus_.size())];
    const size_t from = Below(other.size());
    const size_t place = Below(input.size());
    if (Below(2) == 0) input.resize(place);
    const size_t size = Below(std::min<size_t>(256, other.size() - from) + 1);
    input.insert(input.begin() + At(place), other.begin() + At(from),
                 other.begin() + At(from + size));
}

}  // namespace quarv::fuzz
