#include "platform/ado/PackedNumber.h"

#include <QtEndian>
#include <bit>
#include <cmath>
#include <cstdlib>

namespace quarv::ado {

namespace {

template <class T>
void Put(quint8*& at, T number) {
    qToLittleEndian(number, at);
    at += sizeof number;
}

template <class T>
T Take(const quint8*& at) {
    const T number = qFromLittleEndian<T>(at);
    at += sizeof number;
    return number;
}

// The sign goes to the lowest bit, so that small negative numbers end in zero bytes too.
quint64 Folded(qint64 number) {
    return (static_cast<quint64>(number) << 1) ^ (number < 0 ? ~quint64{0} : 0);
}

qint64 Unfolded(quint64 folded) {
    return static_cast<qint64>((folded >> 1) ^ ((folded & 1) ? ~quint64{0} : 0));
}

// Bytes of a number without its leading zeros.
quint64 Width(quint64 number) {
    return static_cast<quint64>(std::bit_width(number) + 7) / 8;
}

// All exact, so that a whole number over one of them is rounded once, as the digits' reader does.
constexpr std::array Powers{1.0, 10.0, 100.0, 1000.0, 10000.0};
// Times the greatest power it stays below 2^53, where every whole number is exact.
constexpr double MostOfDigits = 1e11;
// Bits of no more bytes are short enough as they are.
constexpr quint64 ShortBits = 4;

}  // namespace

PackedNumber::PackedNumber(qint64 number) {
    const quint64 folded = Folded(number);
    qToLittleEndian(folded, bytes_.data());
    size_ = Width(folded);
}

// The high bytes first: the last digits of a floating number are mostly zero.
PackedNumber::PackedNumber(float number) {
    qToBigEndian(std::bit_cast<quint32>(number), bytes_.data());
    Trim(sizeof number);
}

PackedNumber::PackedNumber(double number) {
    qToBigEndian(std::bit_cast<quint64>(number), bytes_.data());
    Trim(sizeof number);
}

PackedNumber::PackedNumber(const quarv::Decimal& decimal) {
    const auto low = static_cast<quint64>(decimal.magnitude);
    const auto high = static_cast<quint64>(decimal.magnitude >> 64);
    quint8* at = bytes_.data();
    Put(at, static_cast<quint8>(decimal.scale | (decimal.negative ? 0x80 : 0)));
    Put(at, low);
    Put(at, high);
    Trim(1 + (high != 0 ? sizeof low + Width(high) : Width(low)));
}

PackedNumber::PackedNumber(const quarv::DateTime& date) {
    quint8* at = bytes_.data();
    Put(at, static_cast<quint8>(date.kind));
    Put(at, date.year);
    Put(at, date.month);
    Put(at, date.day);
    Put(at, date.hour);
    Put(at, date.minute);
    Put(at, date.second);
    Put(at, date.fractionDigits);
    Put(at, date.fraction);
    Put(at, date.offsetMinutes);
    Trim(static_cast<quint64>(at - bytes_.data()));
}

std::optional<PackedNumber> PackedNumber::OfDigits(double number) {
    const PackedNumber bits(number);
    if (bits.size_ <= ShortBits || !(std::abs(number) < MostOfDigits)) return std::nullopt;
    for (std::size_t scale = 0; scale < Powers.size(); ++scale) {
        const double scaled = number * Powers[scale];
        const auto digits = static_cast<qint64>(scaled + (scaled < 0 ? -0.5 : 0.5));
        if (static_cast<double>(digits) / Powers[scale] != number) continue;
        const PackedNumber packed(quarv::Decimal{static_cast<UInt128>(std::abs(digits)),
                                                 static_cast<quint8>(scale), digits < 0});
        if (packed.size_ < bits.size_) return packed;
        return std::nullopt;
    }
    return std::nullopt;
}

qint64 PackedNumber::Integer() const {
    return Unfolded(qFromLittleEndian<quint64>(bytes_.data()));
}

float PackedNumber::Single() const {
    return std::bit_cast<float>(qFromBigEndian<quint32>(bytes_.data()));
}

double PackedNumber::Floating() const {
    return std::bit_cast<double>(qFromBigEndian<quint64>(bytes_.data()));
}

double PackedNumber::FloatingOfDigits() const {
    const quarv::Decimal digits = Decimal();
    const double number = static_cast<double>(digits.magnitude) / Powers[digits.scale];
    return digits.negative ? -number : number;
}

quarv::Decimal PackedNumber::Decimal() const {
    const quint8* at = bytes_.data();
    const auto first = Take<quint8>(at);
    const auto low = Take<quint64>(at);
    const auto high = Take<quint64>(at);
    return {(UInt128{high} << 64) | low, static_cast<quint8>(first & 0x7F), (first & 0x80) != 0};
}

quarv::DateTime PackedNumber::DateTime() const {
    const quint8* at = bytes_.data();
    quarv::DateTime date;
    date.kind = static_cast<quarv::DateTime::Kind>(Take<quint8>(at));
    date.year = Take<qint16>(at);
    date.month = Take<quint8>(at);
    date.day = Take<quint8>(at);
    date.hour = Take<quint8>(at);
    date.minute = Take<quint8>(at);
    date.second = Take<quint8>(at);
    date.fractionDigits = Take<quint8>(at);
    date.fraction = Take<quint32>(at);
    date.offsetMinutes = Take<qint16>(at);
    return date;
}

void PackedNumber::Trim(quint64 most) {
    size_ = most;
    while (size_ > 0 && bytes_[size_ - 1] == 0) --size_;
}

}  // namespace quarv::ado
