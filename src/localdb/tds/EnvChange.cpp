#include "localdb/tds/EnvChange.h"

#include <algorithm>
#include <array>

namespace quarv::localdb::tds {

namespace {

constexpr qsizetype LongestPart = 255;

size_t Part(qsizetype units) {
    return 1 + static_cast<size_t>(std::min(units, LongestPart));
}

void WriteBytes(ByteWriter& writer, const QByteArray& bytes) {
    const auto count = static_cast<size_t>(std::min(bytes.size(), LongestPart));
    writer.U8(static_cast<uint8_t>(count));
    writer.Bytes(std::as_bytes(std::span(bytes.data(), count)));
}

QByteArray ReadBytes(ByteReader& reader) {
    const auto bytes = reader.Bytes(reader.U8());
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

bool IsKnown(uint8_t kind) {
    using Kind = EnvChange::Kind;
    constexpr std::array Kinds{Kind::Database,
                               Kind::Language,
                               Kind::PacketSize,
                               Kind::SqlCollation,
                               Kind::BeginTransaction,
                               Kind::CommitTransaction,
                               Kind::RollbackTransaction,
                               Kind::ResetAcknowledged};
    return std::find(Kinds.begin(), Kinds.end(), static_cast<Kind>(kind)) != Kinds.end();
}

}  // namespace

EnvChange EnvChange::OfText(Kind kind, const QString& now, const QString& before) {
    return {kind, now, before, {}, {}};
}

EnvChange EnvChange::OfBytes(Kind kind, const QByteArray& now, const QByteArray& before) {
    return {kind, {}, {}, now, before};
}

void EnvChange::Encode(ByteWriter& writer) const {
    writer.U8(static_cast<uint8_t>(Token::EnvChange));
    if (CarriesText()) {
        const size_t textBytes = 2 * (Part(newText.size()) + Part(oldText.size())) - 2;
        writer.U16(static_cast<uint16_t>(1 + textBytes));
        writer.U8(static_cast<uint8_t>(kind));
        writer.ShortText(newText);
        writer.ShortText(oldText);
        return;
    }
    writer.U16(static_cast<uint16_t>(1 + Part(newBytes.size()) + Part(oldBytes.size())));
    writer.U8(static_cast<uint8_t>(kind));
    WriteBytes(writer, newBytes);
    WriteBytes(writer, oldBytes);
}

EnvChange EnvChange::Decode(ByteReader& reader) {
    ExpectToken(reader, Token::EnvChange);
    const size_t length = reader.U16();
    const size_t begin = reader.Position();
    if (!IsKnown(reader.Peek())) reader.Fail(Fault::TokenLength);
    EnvChange change;
    change.kind = static_cast<Kind>(reader.U8());
    if (change.CarriesText()) {
        change.newText = reader.ShortText();
        change.oldText = reader.ShortText();
    } else {
        change.newBytes = ReadBytes(reader);
        change.oldBytes = ReadBytes(reader);
    }
    if (reader.Position() - begin != length) throw ProtocolError(Fault::TokenLength, begin - 2);
    return change;
}

}  // namespace quarv::localdb::tds
