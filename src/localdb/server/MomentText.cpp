#include "localdb/server/MomentText.h"

#include <QDate>
#include <cstdlib>

#include "localdb/tds/TemporalValues.h"

namespace quarv::localdb::server {

namespace {

constexpr int FractionDigits = 7;

}  // namespace

void MomentText::Digits(int64_t number, int count) {
    for (int i = count; i-- > 0; number /= 10) {
        text_[size_ + static_cast<size_t>(i)] = static_cast<char>('0' + number % 10);
    }
    size_ += static_cast<size_t>(count);
}

MomentText& MomentText::Date(int64_t days) {
    const QDate date = QDate(1, 1, 1).addDays(days);
    Digits(date.year(), 4);
    Sign('-');
    Digits(date.month(), 2);
    Sign('-');
    Digits(date.day(), 2);
    return *this;
}

MomentText& MomentText::Time(int64_t ticks, int scale) {
    const int64_t seconds = ticks / TicksOfSecond;
    Digits(seconds / 3600, 2);
    Sign(':');
    Digits(seconds / 60 % 60, 2);
    Sign(':');
    Digits(seconds % 60, 2);
    if (scale == 0) return *this;
    Sign('.');
    int64_t fraction = ticks % TicksOfSecond;
    for (int i = scale; i < FractionDigits; ++i) fraction /= 10;
    Digits(fraction, scale);
    return *this;
}

MomentText& MomentText::DateTime(int64_t ticks, int scale) {
    Date(ticks / tds::TicksOfDay);
    Sign(' ');
    return Time(ticks % tds::TicksOfDay, scale);
}

MomentText& MomentText::Offset(int minutes) {
    Sign(' ');
    Sign(minutes < 0 ? '-' : '+');
    Digits(std::abs(minutes) / 60, 2);
    Sign(':');
    Digits(std::abs(minutes) % 60, 2);
    return *this;
}

}  // namespace quarv::localdb::server
