#include "platform/ado/RowStore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/RuntimeError.h"

namespace quarv::ado {

namespace {

// What the lower half of a tag byte says. The upper half is the length of the bytes behind it, or
// LongLength where the length follows, seven bits a byte and the lowest first.
enum Code : quint8 {
    Empty,
    Null,
    False,
    True,
    Integer,
    Single,
    Floating,
    DecimalNumber,
    Latin1Text,  // a byte a character
    WideText,    // UTF-16 as it is: halves of pairs stay what they were
    Date,
    Bytes,
};
constexpr quint64 LongLength = 15;
constexpr quint64 LongestHead = 11;  // the tag and 64 bits, seven a byte

// Numbers are laid out so that the usual ones end in zero bytes, which are not written.
constexpr quint64 DecimalBytes = 1 + sizeof(UInt128);
constexpr quint64 DateBytes = 15;
constexpr quint64 LongestNumber = DecimalBytes;
using NumberBytes = std::array<quint8, LongestNumber>;

template <class T>
void Put(quint8*& at, T number) {
    for (std::size_t i = 0; i < sizeof(T); ++i)
        *at++ = static_cast<quint8>(static_cast<quint64>(number) >> (8 * i));
}

template <class T>
T Take(const quint8*& at) {
    quint64 number = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i) number |= quint64{*at++} << (8 * i);
    return static_cast<T>(number);
}

// The sign goes to the lowest bit, so that small negative numbers end in zero bytes too.
quint64 Folded(qint64 number) {
    return (static_cast<quint64>(number) << 1) ^ (number < 0 ? ~quint64{0} : 0);
}

qint64 Unfolded(quint64 folded) {
    return static_cast<qint64>((folded >> 1) ^ ((folded & 1) ? ~quint64{0} : 0));
}

// The high bytes first: the last digits of a floating number are mostly zero.
NumberBytes Lay(quint64 bits, int bytes) {
    NumberBytes laid{};
    for (int i = 0; i < bytes; ++i)
        laid[static_cast<std::size_t>(i)] = static_cast<quint8>(bits >> (8 * (bytes - 1 - i)));
    return laid;
}

quint64 Bits(const NumberBytes& laid, int bytes) {
    quint64 bits = 0;
    for (int i = 0; i < bytes; ++i) bits = (bits << 8) | laid[static_cast<std::size_t>(i)];
    return bits;
}

NumberBytes Lay(const Decimal& decimal) {
    NumberBytes laid{};
    quint8* at = laid.data();
    Put(at, static_cast<quint8>(decimal.scale | (decimal.negative ? 0x80 : 0)));
    Put(at, static_cast<quint64>(decimal.magnitude));
    Put(at, static_cast<quint64>(decimal.magnitude >> 64));
    return laid;
}

Decimal DecimalOf(const NumberBytes& laid) {
    const quint8* at = laid.data();
    const auto first = Take<quint8>(at);
    const auto low = Take<quint64>(at);
    const auto high = Take<quint64>(at);
    return {(UInt128{high} << 64) | low, static_cast<quint8>(first & 0x7F), (first & 0x80) != 0};
}

NumberBytes Lay(const DateTime& date) {
    NumberBytes laid{};
    quint8* at = laid.data();
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
    return laid;
}

DateTime DateOf(const NumberBytes& laid) {
    const quint8* at = laid.data();
    DateTime date;
    date.kind = static_cast<DateTime::Kind>(Take<quint8>(at));
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

bool IsLatin1(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x100; });
}

}  // namespace

void RowStore::Append(const Value& value) {
    if (columnCount_ <= 0) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    if (value.IsObject()) throw RuntimeError(RuntimeError::TypeMismatch);
    const quint64 cell = static_cast<quint64>(rowCount_) * static_cast<quint64>(columnCount_) +
                         static_cast<quint64>(unfinished_);
    if (cell % MarkDistance == 0) marks_.push_back(log_.Size());
    WriteValue(value);
    if (++unfinished_ < columnCount_) return;
    unfinished_ = 0;
    ++rowCount_;
    rowStart_ = log_.Size();
}

void RowStore::WriteValue(const Value& value) {
    switch (value.kind()) {
        case Value::Kind::Empty:
            Write(Empty, nullptr, 0);
            break;
        case Value::Kind::Null:
            Write(Null, nullptr, 0);
            break;
        case Value::Kind::Boolean:
            Write(value.ToBoolean() ? True : False, nullptr, 0);
            break;
        case Value::Kind::Integer: {
            NumberBytes laid{};
            quint8* at = laid.data();
            Put(at, Folded(value.ToInteger()));
            WriteTrimmed(Integer, laid.data(), 8);
            break;
        }
        case Value::Kind::Single: {
            const auto number = static_cast<float>(value.ToDouble());
            WriteTrimmed(Single, Lay(std::bit_cast<quint32>(number), 4).data(), 4);
            break;
        }
        case Value::Kind::Floating:
            WriteTrimmed(Floating, Lay(std::bit_cast<quint64>(value.ToDouble()), 8).data(), 8);
            break;
        case Value::Kind::Decimal:
            WriteTrimmed(DecimalNumber, Lay(value.AsDecimal()).data(), DecimalBytes);
            break;
        case Value::Kind::Text:
            WriteText(value.Text());
            break;
        case Value::Kind::DateTime:
            WriteTrimmed(Date, Lay(value.AsDateTime()).data(), DateBytes);
            break;
        case Value::Kind::Bytes:
            Write(Bytes, value.Bytes().constData(), static_cast<quint64>(value.Bytes().size()));
            break;
        case Value::Kind::Object:
            break;  // refused by Append
    }
}

void RowStore::DropUnfinishedRow() {
    log_.Truncate(rowStart_);
    unfinished_ = 0;
    const quint64 cells = static_cast<quint64>(rowCount_) * static_cast<quint64>(columnCount_);
    marks_.resize((cells + MarkDistance - 1) / MarkDistance);
}

Value RowStore::ValueAt(qint64 row, int column) const {
    return Decode(Find(row, column));
}

CellStart RowStore::StartOf(qint64 row, int column, qint64 most) const {
    Cell cell = Find(row, column);
    const quint64 unit = cell.code == WideText ? sizeof(QChar) : 1;
    const bool mayBeLong = cell.code == Latin1Text || cell.code == WideText || cell.code == Bytes;
    const auto length = static_cast<qint64>(mayBeLong ? cell.length / unit : 0);
    if (length > most) cell.length = static_cast<quint64>(most) * unit;
    return {Decode(cell), length};
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

void RowStore::Write(quint8 code, const void* bytes, quint64 length) {
    std::array<quint8, LongestHead> head;
    std::size_t size = 1;
    head[0] = static_cast<quint8>(code | (std::min(length, LongLength) << 4));
    if (length >= LongLength) {
        quint64 left = length;
        for (; left > 0x7F; left >>= 7) head[size++] = static_cast<quint8>(left | 0x80);
        head[size++] = static_cast<quint8>(left);
    }
    log_.Append(head.data(), size);
    log_.Append(bytes, length);
}

void RowStore::WriteTrimmed(quint8 code, const void* bytes, quint64 count) {
    const auto* number = static_cast<const quint8*>(bytes);
    while (count > 0 && number[count - 1] == 0) --count;
    Write(code, bytes, count);
}

void RowStore::WriteText(const QString& text) {
    if (IsLatin1(text)) {
        const QByteArray narrow = text.toLatin1();
        Write(Latin1Text, narrow.constData(), static_cast<quint64>(narrow.size()));
    } else {
        Write(WideText, text.constData(), static_cast<quint64>(text.size()) * sizeof(QChar));
    }
}

RowStore::Cell RowStore::CellAt(quint64 offset) const {
    std::array<quint8, LongestHead> head{};
    log_.Read(offset, head.data(), head.size());
    Cell cell{static_cast<quint8>(head[0] & 0x0F), offset + 1, quint64{head[0]} >> 4};
    if (cell.length < LongLength) return cell;
    cell.length = 0;
    for (std::size_t i = 1; i < head.size(); ++i) {
        cell.length |= quint64{head[i] & 0x7FU} << (7 * (i - 1));
        ++cell.start;
        if (head[i] < 0x80) break;
    }
    return cell;
}

Value RowStore::Decode(const Cell& cell) const {
    if (cell.code == Latin1Text || cell.code == WideText) return TextOf(cell);
    if (cell.code == Bytes) return BytesOf(cell);
    NumberBytes laid{};
    log_.Read(cell.start, laid.data(), std::min(cell.length, LongestNumber));
    const quint8* at = laid.data();
    switch (cell.code) {
        case Null:
            return Value::Null();
        case False:
            return false;
        case True:
            return true;
        case Integer:
            return Unfolded(Take<quint64>(at));
        case Single:
            return std::bit_cast<float>(static_cast<quint32>(Bits(laid, 4)));
        case Floating:
            return std::bit_cast<double>(Bits(laid, 8));
        case DecimalNumber:
            return DecimalOf(laid);
        case Date:
            return DateOf(laid);
        default:
            return {};
    }
}

QString RowStore::TextOf(const Cell& cell) const {
    if (cell.code == Latin1Text) return QString::fromLatin1(BytesOf(cell));
    QString text(static_cast<qsizetype>(cell.length / sizeof(QChar)), Qt::Uninitialized);
    log_.Read(cell.start, text.data(), cell.length);
    return text;
}

QByteArray RowStore::BytesOf(const Cell& cell) const {
    QByteArray bytes(static_cast<qsizetype>(cell.length), Qt::Uninitialized);
    log_.Read(cell.start, bytes.data(), cell.length);
    return bytes;
}

}  // namespace quarv::ado
