// DecimalDigits: a number without its sign as decimal digits and the place of the point, rounded
// half away from zero.
#pragma once

#include <algorithm>
#include <string>

namespace quarv::localdb::engine {

struct DecimalDigits {
    std::string digits;
    int point = 0;  // how many digits stand before it; negative: zeros follow it first

    bool IsZero() const { return digits.find_first_not_of('0') == std::string::npos; }

    // At most `decimals` places behind the point.
    void RoundTo(int decimals) { Cut(point + decimals); }
    // At most `count` digits from the first that is not zero.
    void RoundToSignificant(int count) {
        const size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
        digits.erase(0, zeros);
        point -= static_cast<int>(zeros);
        Cut(count);
    }
    void TrimZeros() {
        while (!digits.empty() && digits.back() == '0') digits.pop_back();
    }
    // What stands before the point, "0" at least.
    std::string Whole() const {
        std::string whole;
        for (int i = 0; i < point; ++i) whole += At(i);
        whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
        return whole.empty() ? "0" : whole;
    }
    // `decimals` digits behind the point.
    std::string Fraction(int decimals) const {
        std::string fraction;
        for (int i = 0; i < decimals; ++i) fraction += At(point + i);
        return fraction;
    }

  private:
    char At(int place) const {
        const bool inside = place >= 0 && place < static_cast<int>(digits.size());
        return inside ? digits[static_cast<size_t>(place)] : '0';
    }
    void Cut(int length) {
        if (length >= static_cast<int>(digits.size())) return;
        const bool up = length >= 0 && At(length) >= '5';
        digits.resize(static_cast<size_t>(std::max(length, 0)));
        if (!up) return;
        for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
            if (*digit != '9') {
                ++*digit;
                return;
            }
            *digit = '0';
        }
        digits.insert(0, "1");
        ++point;
    }
};

}  // namespace quarv::localdb::engine
