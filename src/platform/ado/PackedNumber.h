// PackedNumber: a number or a date as the bytes that a RowStore keeps: laid out so that the usual
// ones end in zero bytes, which are left out. A plain value; it knows nothing of cells.
#pragma once

#include <QtGlobal>
#include <array>
#include <optional>

#include "base/DateTime.h"
#include "base/Decimal.h"

namespace quarv::ado {

class PackedNumber {
  public:
    // Bytes that the longest one takes: a decimal's sign and scale, and its digits.
    static constexpr quint64 Longest = 1 + sizeof(UInt128);

    explicit PackedNumber(qint64 number);
    explicit PackedNumber(float number);
    explicit PackedNumber(double number);
    explicit PackedNumber(const quarv::Decimal& decimal);
    explicit PackedNumber(const quarv::DateTime& date);
    // Of bytes that are put into `Bytes` afterwards; those left out must stay zero.
    PackedNumber() = default;

    // A floating number as the few decimal digits that it was typed with, where that is shorter
    // than its bits and gives them back.
    static std::optional<PackedNumber> OfDigits(double number);

    const quint8* Bytes() const { return bytes_.data(); }
    quint8* Bytes() { return bytes_.data(); }
    quint64 Size() const { return size_; }

    // The number as it was packed; whoever asks knows its type.
    qint64 Integer() const;
    float Single() const;
    double Floating() const;
    double FloatingOfDigits() const;
    quarv::Decimal Decimal() const;
    quarv::DateTime DateTime() const;

  private:
    // Finds the size: `most` bytes less the zeros at their end.
    void Trim(quint64 most);

    std::array<quint8, Longest> bytes_{};
    quint64 size_ = 0;
};

}  // namespace quarv::ado
