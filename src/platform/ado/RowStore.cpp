#include "platform/ado/RowStore.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/RuntimeError.h"
#include "platform/ado/PackedNumber.h"
#include "platform/ado/PackedText.h"

namespace quarv::ado {

namespace {

// What the lower half of a tag byte says. The upper half is the length of the bytes behind it, or
// LongLength where the length follows.
enum Code : quint8 {
    Empty,
    Null,
    False,
    True,
    Integer,
    Single,
    Floating,
    FloatingDigits,
    DecimalNumber,
    Date,
    Bytes,
    Latin1Text,  // the three forms of a text, in their order
    Utf8Text,
    Utf16Text,
};
constexpr quint64 LongLength = 15;
constexpr qint64 Whole = 0x7FFFFFFFFFFFFFFF;

quint8 Tag(quint8 code, quint64 length) {
    return static_cast<quint8>(code | (std::min(length, LongLength) << 4));
}

quint8 CodeOf(PackedText::Form form) {
    return static_cast<quint8>(Latin1Text + static_cast<quint8>(form));
}

bool IsText(quint8 code) {
    return code >= Latin1Text && code <= Utf16Text;
}

}  // namespace

void RowStore::AppendEmpty() {
    BeginCell();
    WriteHead(Empty, 0);
    EndCell();
}

void RowStore::AppendNull() {
    BeginCell();
    WriteHead(Null, 0);
    EndCell();
}

void RowStore::AppendBoolean(bool value) {
    BeginCell();
    WriteHead(value ? True : False, 0);
    EndCell();
}

void RowStore::AppendInteger(qint64 value) {
    AppendNumber(Integer, PackedNumber(value));
}

void RowStore::AppendSingle(float value) {
    AppendNumber(Single, PackedNumber(value));
}

void RowStore::AppendFloating(double value) {
    if (const auto digits = PackedNumber::OfDigits(value))
        AppendNumber(FloatingDigits, *digits);
    else
        AppendNumber(Floating, PackedNumber(value));
}

void RowStore::AppendDecimal(const Decimal& value) {
    AppendNumber(DecimalNumber, PackedNumber(value));
}

void RowStore::AppendText(QStringView value) {
    BeginCell();
    const PackedText text(value);
    WriteHead(CodeOf(text.GetForm()), text.Bytes());
    text.Write(log_);
    EndCell();
}

void RowStore::AppendDateTime(const DateTime& value) {
    AppendNumber(Date, PackedNumber(value));
}

void RowStore::AppendBytes(QByteArrayView value) {
    BeginCell();
    const auto length = static_cast<quint64>(value.size());
    WriteHead(Bytes, length);
    log_.Append(value.data(), length);
    EndCell();
}

void RowStore::DropUnfinishedRow() {
    log_.Truncate(rowStart_);
    unfinished_ = 0;
    const quint64 cells = static_cast<quint64>(rowCount_) * static_cast<quint64>(columnCount_);
    marks_.resize((cells + MarkDistance - 1) / MarkDistance);
}

Value RowStore::ValueAt(qint64 row, int column) const {
    return Decode(Find(row, column), Whole);
}

CellStart RowStore::StartOf(qint64 row, int column, qint64 most) const {
    const Cell cell = Find(row, column);
    qint64 length = 0;
    if (IsText(cell.code))
        length = PackedText::Length(log_, PlaceOf(cell));
    else if (cell.code == Bytes)
        length = static_cast<qint64>(cell.length);
    return {Decode(cell, most), length};
}

void RowStore::BeginCell() {
    if (columnCount_ <= 0) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    const quint64 cell = static_cast<quint64>(rowCount_) * static_cast<quint64>(columnCount_) +
                         static_cast<quint64>(unfinished_);
    if (cell % MarkDistance == 0) marks_.push_back(log_.Size());
}

void RowStore::EndCell() {
    if (++unfinished_ < columnCount_) return;
    unfinished_ = 0;
    ++rowCount_;
    rowStart_ = log_.Size();
}

// Head and number in one piece: most cells are so short that each append counts.
void RowStore::AppendNumber(quint8 code, const PackedNumber& number) {
    BeginCell();
    const quint64 size = number.Size();
    if (size < LongLength) {
        std::array<quint8, LongLength> cell;
        cell[0] = Tag(code, size);
        std::memcpy(cell.data() + 1, number.Bytes(), cell.size() - 1);
        log_.Append(cell.data(), size + 1);
    } else {
        WriteHead(code, size);
        log_.Append(number.Bytes(), size);
    }
    EndCell();
}

void RowStore::WriteHead(quint8 code, quint64 length) {
    log_.AppendByte(Tag(code, length));
    if (length >= LongLength) log_.AppendCount(length);
}

RowStore::Cell RowStore::Find(qint64 row, int column) const {
    if (row < 0 || row >= rowCount_ || column < 0 || column >= columnCount_)
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    const quint64 number = static_cast<quint64>(row) * static_cast<quint64>(columnCount_) +
                           static_cast<quint64>(column);
    Cell cell = CellAt(marks_[number / MarkDistance]);
    for (quint64 skip = number % MarkDistance; skip > 0; --skip)
        cell = CellAt(cell.start + cell.length);
    return cell;
}

RowStore::Cell RowStore::CellAt(quint64 offset) const {
    const quint8 tag = log_.At(offset);
    Cell cell{static_cast<quint8>(tag & 0x0F), offset + 1, quint64{tag} >> 4};
    if (cell.length == LongLength) cell.start += log_.ReadCount(offset + 1, cell.length);
    return cell;
}

Value RowStore::Decode(const Cell& cell, qint64 most) const {
    if (IsText(cell.code)) return PackedText::Read(log_, PlaceOf(cell), most);
    if (cell.code != Bytes) return NumberOf(cell);
    QByteArray bytes(std::min(static_cast<qint64>(cell.length), most), Qt::Uninitialized);
    log_.Read(cell.start, bytes.data(), static_cast<quint64>(bytes.size()));
    return bytes;
}

Value RowStore::NumberOf(const Cell& cell) const {
    PackedNumber number;
    log_.Read(cell.start, number.Bytes(), std::min(cell.length, PackedNumber::Longest));
    switch (cell.code) {
        case Null:
            return Value::Null();
        case False:
            return false;
        case True:
            return true;
        case Integer:
            return number.Integer();
        case Single:
            return number.Single();
        case Floating:
            return number.Floating();
        case FloatingDigits:
            return number.FloatingOfDigits();
        case DecimalNumber:
            return number.Decimal();
        case Date:
            return number.DateTime();
        default:
            return {};
    }
}

PackedText::Place RowStore::PlaceOf(const Cell& cell) {
    return {static_cast<PackedText::Form>(cell.code - Latin1Text), cell.start, cell.length};
}

}  // namespace quarv::ado
