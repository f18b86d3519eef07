#include "localdb/tds/TransactionRequest.h"

namespace quarv::localdb::tds {

namespace {

constexpr uint8_t BeginNext = 0x01;

// Names are counted in bytes here, unlike everywhere else.
QString ReadName(ByteReader& reader) {
    const uint8_t bytes = reader.U8();
    const size_t at = reader.Position();
    return TextOfUtf16(reader.Bytes(bytes), at);
}

void WriteName(ByteWriter& writer, const QString& name) {
    const QStringView part = QStringView(name).left(127);
    writer.U8(static_cast<uint8_t>(2 * part.size()));
    writer.Utf16(part);
}

}  // namespace

void TransactionRequest::Encode(ByteWriter& writer) const {
    headers.Encode(writer);
    writer.U16(static_cast<uint16_t>(kind));
    if (kind == Kind::Begin) {
        writer.U8(isolation);
        WriteName(writer, name);
        return;
    }
    WriteName(writer, name);
    if (kind == Kind::Save) return;
    writer.U8(beginsNext ? BeginNext : 0);
    if (!beginsNext) return;
    writer.U8(nextIsolation);
    WriteName(writer, nextName);
}

TransactionRequest TransactionRequest::Decode(std::span<const std::byte> body) {
    ByteReader reader(body);
    TransactionRequest request;
    request.headers = AllHeaders::Decode(reader);
    const size_t at = reader.Position();
    const uint16_t kind = reader.U16();
    if (kind != 5 && (kind < 7 || kind > 9)) {
        throw ProtocolError(Fault::TransactionKind, at, QString::number(kind));
    }
    request.kind = static_cast<Kind>(kind);
    if (request.kind == Kind::Begin) {
        request.isolation = reader.U8();
        request.name = ReadName(reader);
    } else if (request.kind == Kind::Save) {
        request.name = ReadName(reader);
    } else {
        request.name = ReadName(reader);
        request.beginsNext = (reader.U8() & BeginNext) != 0;
        if (request.beginsNext) {
            request.nextIsolation = reader.U8();
            request.nextName = ReadName(reader);
        }
    }
    reader.ExpectEnd();
    return request;
}

}  // namespace quarv::localdb::tds
