#include "platform/ado/PackedText.h"

#include <QStringConverter>
#include <algorithm>
#include <array>
#include <optional>

namespace quarv::ado {

namespace {

// In UTF-16 units: a longer text goes through a buffer piece by piece.
constexpr qsizetype PieceLength = 512;
// A unit takes no more bytes of UTF-8.
constexpr qsizetype WidestUnit = 3;

bool IsLatin1(QStringView text) {
    char16_t bits = 0;
    for (const QChar c : text) bits |= c.unicode();
    return bits < 0x100;
}

void Narrow(QStringView text, quint8* to) {
    for (const QChar c : text) *to++ = static_cast<quint8>(c.unicode());
}

quint64 CountBytes(quint64 count) {
    quint64 bytes = 1;
    for (; count > 0x7F; count >>= 7) ++bytes;
    return bytes;
}

bool HasHalfPair(QStringView text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text[i].isSurrogate()) continue;
        if (!text[i].isHighSurrogate() || i + 1 == text.size()) return true;
        if (!text[++i].isLowSurrogate()) return true;
    }
    return false;
}

// How many bytes `text` takes in UTF-8; nothing where it has half a pair.
std::optional<quint64> Utf8Bytes(QStringView text) {
    quint64 bytes = 0;
    quint64 surrogates = 0;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        bytes += 1U + (unit >= 0x80) + (unit >= 0x800);
        surrogates += (unit & 0xF800) == 0xD800;
    }
    if (surrogates == 0) return bytes;
    if (HasHalfPair(text)) return std::nullopt;
    return bytes - surrogates;  // a pair takes four bytes
}

void WriteLatin1(ByteLog& log, QStringView text) {
    std::array<quint8, PieceLength> piece;
    while (!text.isEmpty()) {
        const QStringView part = text.left(PieceLength);
        Narrow(part, piece.data());
        log.Append(piece.data(), static_cast<quint64>(part.size()));
        text = text.sliced(part.size());
    }
}

void WriteUtf8(ByteLog& log, QStringView text) {
    log.AppendCount(static_cast<quint64>(text.size()));
    QStringEncoder encoder(QStringEncoder::Utf8);
    std::array<char, (PieceLength + 1) * WidestUnit> piece;  // half a pair may be left over
    while (!text.isEmpty()) {
        const QStringView part = text.left(PieceLength);
        const char* end = encoder.appendToBuffer(piece.data(), part);
        log.Append(piece.data(), static_cast<quint64>(end - piece.data()));
        text = text.sliced(part.size());
    }
}

QByteArray BytesAt(const ByteLog& log, quint64 start, quint64 count) {
    QByteArray bytes(static_cast<qsizetype>(count), Qt::Uninitialized);
    log.Read(start, bytes.data(), count);
    return bytes;
}

QString ReadUtf8(const ByteLog& log, const PackedText::Place& place, qint64 most) {
    quint64 units = 0;
    const quint64 head = log.ReadCount(place.start, units);
    quint64 bytes = place.bytes - std::min(place.bytes, head);
    if (static_cast<quint64>(most) < units)
        bytes = std::min(bytes, (static_cast<quint64>(most) + 1) * WidestUnit);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(BytesAt(log, place.start + head, bytes));
    text.truncate(most);
    return text;
}

}  // namespace

PackedText::PackedText(QStringView text) : text_(text) {
    const auto units = static_cast<quint64>(text.size());
    form_ = Form::Latin1;
    bytes_ = units;
    if (IsLatin1(text)) return;
    form_ = Form::Utf16;
    bytes_ = 2 * units;
    const std::optional<quint64> narrow = Utf8Bytes(text);
    if (!narrow || CountBytes(units) + *narrow >= bytes_) return;
    form_ = Form::Utf8;
    bytes_ = CountBytes(units) + *narrow;
}

void PackedText::Write(ByteLog& log) const {
    switch (form_) {
        case Form::Latin1:
            return WriteLatin1(log, text_);
        case Form::Utf8:
            return WriteUtf8(log, text_);
        case Form::Utf16:
            return log.Append(text_.utf16(), bytes_);
    }
}

qint64 PackedText::Length(const ByteLog& log, const Place& place) {
    quint64 length = place.bytes;
    if (place.form == Form::Utf16) length /= sizeof(QChar);
    if (place.form == Form::Utf8) log.ReadCount(place.start, length);
    return static_cast<qint64>(length);
}

QString PackedText::Read(const ByteLog& log, const Place& place, qint64 most) {
    if (place.form == Form::Utf8) return ReadUtf8(log, place, most);
    const qint64 length = std::min(most, Length(log, place));
    if (place.form == Form::Latin1)
        return QString::fromLatin1(BytesAt(log, place.start, static_cast<quint64>(length)));
    QString text(length, Qt::Uninitialized);
    log.Read(place.start, text.data(), static_cast<quint64>(length) * sizeof(QChar));
    return text;
}

}  // namespace quarv::ado
