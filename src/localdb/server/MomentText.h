// MomentText: dates and times in the form of a T-SQL literal, built in place without an allocation:
// MomentText().DateTime(ticks, 3).View().
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quarv::localdb::server {

class MomentText {
  public:
    static constexpr int64_t TicksOfSecond = 10'000'000;  // a tick is 100 ns
    static constexpr int64_t TicksOfMinute = 60 * TicksOfSecond;

    // "2024-02-29"; days since 0001-01-01, up to 9999-12-31.
    MomentText& Date(int64_t days);
    // "12:34:56.789"; ticks since midnight, `scale` digits of the second's fraction.
    MomentText& Time(int64_t ticks, int scale);
    // Both, with a blank between them; ticks since 0001-01-01.
    MomentText& DateTime(int64_t ticks, int scale);
    // " +05:30"; behind what is there.
    MomentText& Offset(int minutes);

    // Valid as long as the object.
    std::string_view View() const { return {text_.data(), size_}; }

  private:
    void Digits(int64_t number, int count);
    void Sign(char c) { text_[size_++] = c; }

    std::array<char, 40> text_{};  // the longest has 34
    size_t size_ = 0;
};

}  // namespace quarv::localdb::server
