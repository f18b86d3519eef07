#include "localdb/tds/Login7.h"

#include <array>

#include "localdb/tds/ByteReader.h"

namespace quarv::localdb::tds {

namespace {

constexpr size_t FixedSize = 94;
constexpr size_t FixedSizeBefore72 = 86;  // no change of password, no long SSPI

struct TextField {
    QString Login7::*member;
    bool scrambled;
};

// In the order of their entries. The extension stands between server and library name, MAC address
// and SSPI between database and attach file.
constexpr std::array<TextField, 5> BeforeExtension{{{&Login7::hostName, false},
                                                    {&Login7::userName, false},
                                                    {&Login7::password, true},
                                                    {&Login7::appName, false},
                                                    {&Login7::serverName, false}}};
constexpr std::array<TextField, 3> AfterExtension{
    {{&Login7::libraryName, false}, {&Login7::language, false}, {&Login7::database, false}}};

using Bytes = std::span<const std::byte>;

QByteArray ToByteArray(Bytes bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

Bytes ToSpan(const QByteArray& bytes) {
    return std::as_bytes(std::span(bytes.data(), static_cast<size_t>(bytes.size())));
}

// [MS-TDS], "LOGIN7": the client swaps each byte's halves and then XORs it with A5.
QByteArray Unscramble(Bytes bytes) {
    QByteArray clear = ToByteArray(bytes);
    for (char& c : clear) {
        const auto b = static_cast<uint8_t>(static_cast<uint8_t>(c) ^ 0xA5);
        c = static_cast<char>((b << 4) | (b >> 4));
    }
    return clear;
}

QByteArray Scramble(Bytes bytes) {
    QByteArray hidden = ToByteArray(bytes);
    for (char& c : hidden) {
        const auto b = static_cast<uint8_t>(c);
        c = static_cast<char>(static_cast<uint8_t>((b << 4) | (b >> 4)) ^ 0xA5);
    }
    return hidden;
}

class RecordReader {
  public:
    explicit RecordReader(Bytes record) : record_(record), fixed_(record) {}

    ByteReader& Fixed() { return fixed_; }

    // The part that the next entry points to; `unit` is bytes per counted unit.
    Bytes NextPart(size_t unit) {
        const size_t at = fixed_.Position();
        const size_t offset = fixed_.U16();
        return Part(offset, fixed_.U16() * unit, at);
    }

    Bytes Part(size_t offset, size_t length, size_t at) const {
        if (length == 0) return {};
        if (offset > record_.size() || length > record_.size() - offset) {
            throw ProtocolError(Fault::LoginField, at);
        }
        return record_.subspan(offset, length);
    }

    QString NextText() { return TextOfUtf16(NextPart(2)); }

    void NextText(Login7& login, const TextField& field) {
        if (!field.scrambled) {
            login.*field.member = NextText();
            return;
        }
        QByteArray clear = Unscramble(NextPart(2));
        login.*field.member = TextOfUtf16(ToSpan(clear));
        clear.fill('\0');
    }

    // The list {id u8, length u32, data}..., FF; `entry` is where its offset is kept.
    QByteArray FeatureList(Bytes pointer, size_t at) const {
        if (pointer.size() != 4) throw ProtocolError(Fault::LoginExtension, at);
        const size_t begin = ByteReader(pointer).U32();
        if (begin >= record_.size()) throw ProtocolError(Fault::LoginExtension, at);
        ByteReader list(record_.subspan(begin), ByteReader::Ending::Final, begin);
        while (list.U8() != 0xFF) list.Bytes(list.U32());
        return ToByteArray(record_.subspan(begin, list.Position() - begin));
    }

  private:
    Bytes record_;
    ByteReader fixed_;
};

void ReadNumbers(ByteReader& fixed, Login7& login) {
    login.tdsVersion = fixed.U32();
    login.packetSize = fixed.U32();
    login.clientVersion = fixed.U32();
    login.clientPid = fixed.U32();
    login.connectionId = fixed.U32();
    login.flags1 = fixed.U8();
    login.flags2 = fixed.U8();
    login.typeFlags = fixed.U8();
    login.flags3 = fixed.U8();
    login.timeZone = fixed.I32();
    login.lcid = fixed.U32();
}

// The variable part behind the fixed one, with the entries that point into it.
class RecordWriter {
  public:
    explicit RecordWriter(size_t begin) : next_(begin) {}

    void Entry(ByteWriter& fixed, const QByteArray& data, size_t unit) {
        fixed.U16(static_cast<uint16_t>(next_));
        fixed.U16(static_cast<uint16_t>(static_cast<size_t>(data.size()) / unit));
        Append(data);
    }
    void Append(const QByteArray& data) {
        data_ += data;
        next_ += static_cast<size_t>(data.size());
    }
    size_t Next() const { return next_; }
    const QByteArray& Data() const { return data_; }

  private:
    size_t next_;
    QByteArray data_;
};

QByteArray Utf16Of(const QString& text) {
    BufferWriter writer;
    writer.Utf16(text);
    return ToByteArray(writer.Written());
}

QByteArray LittleEndian32(size_t value) {
    BufferWriter writer;
    writer.U32(static_cast<uint32_t>(value));
    return ToByteArray(writer.Written());
}

void WriteText(ByteWriter& fixed, RecordWriter& record, const Login7& login,
               const TextField& field) {
    const QByteArray text = Utf16Of(login.*field.member);
    record.Entry(fixed, field.scrambled ? Scramble(ToSpan(text)) : text, 2);
}

void WriteNumbers(ByteWriter& fixed, const Login7& login) {
    fixed.U32(login.tdsVersion);
    fixed.U32(login.packetSize);
    fixed.U32(login.clientVersion);
    fixed.U32(login.clientPid);
    fixed.U32(login.connectionId);
    fixed.U8(login.flags1);
    fixed.U8(login.flags2);
    fixed.U8(login.typeFlags);
    fixed.U8(login.flags3);
    fixed.U32(static_cast<uint32_t>(login.timeZone));
    fixed.U32(login.lcid);
}

}  // namespace

void Login7::Encode(ByteWriter& writer) const {
    BufferWriter fixed;
    RecordWriter record(FixedSize);
    WriteNumbers(fixed, *this);
    for (const TextField& field : BeforeExtension) WriteText(fixed, record, *this, field);
    if ((flags3 & HasExtension) != 0) {
        record.Entry(fixed, LittleEndian32(record.Next() + 4), 1);
        record.Append(features);
    } else {
        record.Entry(fixed, {}, 1);
    }
    for (const TextField& field : AfterExtension) WriteText(fixed, record, *this, field);
    fixed.Bytes(ToSpan(QByteArray(6, '\0')));
    record.Entry(fixed, sspi, 1);
    WriteText(fixed, record, *this, {&Login7::attachFile, false});
    WriteText(fixed, record, *this, {&Login7::newPassword, true});
    fixed.U32(0);
    writer.U32(static_cast<uint32_t>(record.Next()));
    writer.Bytes(fixed.Written());
    writer.Bytes(ToSpan(record.Data()));
}

Login7 Login7::Decode(std::span<const std::byte> body) {
    const size_t length = ByteReader(body).U32();
    if (length != body.size()) throw ProtocolError(Fault::LoginLength, 0);
    RecordReader record(body);
    ByteReader& fixed = record.Fixed();
    fixed.U32();
    Login7 login;
    ReadNumbers(fixed, login);
    const bool since72 = login.tdsVersion >= tds_version::V72;
    if (length < (since72 ? FixedSize : FixedSizeBefore72)) {
        throw ProtocolError(Fault::LoginLength, 0);
    }
    for (const TextField& field : BeforeExtension) record.NextText(login, field);
    const size_t extensionAt = fixed.Position();
    const Bytes extension = record.NextPart(1);
    // Before 7.4 the entry belongs to nothing, whatever the flags say.
    if (login.tdsVersion >= tds_version::V74 && (login.flags3 & HasExtension) != 0) {
        login.features = record.FeatureList(extension, extensionAt);
    }
    for (const TextField& field : AfterExtension) record.NextText(login, field);
    fixed.Bytes(6);
    const size_t sspiAt = fixed.Position();
    const size_t sspiOffset = fixed.U16();
    size_t sspiLength = fixed.U16();
    login.attachFile = record.NextText();
    if (since72) {
        record.NextText(login, {&Login7::newPassword, true});
        const size_t longLength = fixed.U32();
        if (sspiLength == 0xFFFF && longLength > 0) sspiLength = longLength;
    }
    login.sspi = ToByteArray(record.Part(sspiOffset, sspiLength, sspiAt));
    return login;
}

}  // namespace quarv::localdb::tds
