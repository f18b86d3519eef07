#include "platform/ado/odbc/FakeTds.h"

namespace quarv::test {

namespace {

// A function, since tables of columns are made before main, in no order that a file could know.
QByteArray Collation() {
    return QByteArray::fromHex("0904d00034");
}

QByteArray Byte(int value) {
    return QByteArray(1, static_cast<char>(value));
}
QByteArray Short(int value) {
    return Le(static_cast<quint64>(value), 2);
}

QByteArray ByteText(const QString& text) {
    return Byte(static_cast<int>(text.size())) + Utf16(text);
}

QByteArray EnvChange(int type, const QString& now, const QString& before) {
    const QByteArray body = Byte(type) + ByteText(now) + ByteText(before);
    return Byte(0xE3) + Short(static_cast<int>(body.size())) + body;
}

}  // namespace

QByteArray Le(quint64 value, int width) {
    QByteArray bytes;
    for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

QByteArray Utf16(const QString& text) {
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

FakeColumn FakeColumn::Int(const QString& name, int width) {
    return {name, Byte(0x26) + Byte(width), Prefix::Byte};
}
FakeColumn FakeColumn::Bit(const QString& name) {
    return {name, Byte(0x68) + Byte(1), Prefix::Byte};
}
FakeColumn FakeColumn::Float(const QString& name, int width) {
    return {name, Byte(0x6D) + Byte(width), Prefix::Byte};
}
FakeColumn FakeColumn::Money(const QString& name) {
    return {name, Byte(0x6E) + Byte(8), Prefix::Byte};
}
FakeColumn FakeColumn::Decimal(const QString& name, int precision, int scale) {
    return {name, Byte(0x6A) + Byte(17) + Byte(precision) + Byte(scale), Prefix::Byte};
}
FakeColumn FakeColumn::NVarChar(const QString& name, int characters) {
    return {name, Byte(0xE7) + Short(characters * 2) + Collation(), Prefix::Short};
}
FakeColumn FakeColumn::NVarCharMax(const QString& name) {
    return {name, Byte(0xE7) + Short(0xFFFF) + Collation(), Prefix::Parts};
}
FakeColumn FakeColumn::VarChar(const QString& name, int bytes) {
    return {name, Byte(0xA7) + Short(bytes) + Collation(), Prefix::Short};
}
FakeColumn FakeColumn::VarCharMax(const QString& name) {
    return {name, Byte(0xA7) + Short(0xFFFF) + Collation(), Prefix::Parts};
}
FakeColumn FakeColumn::VarBinary(const QString& name, int bytes) {
    return {name, Byte(0xA5) + Short(bytes), Prefix::Short};
}
FakeColumn FakeColumn::VarBinaryMax(const QString& name) {
    return {name, Byte(0xA5) + Short(0xFFFF), Prefix::Parts};
}
FakeColumn FakeColumn::Guid(const QString& name) {
    return {name, Byte(0x24) + Byte(16), Prefix::Byte};
}
FakeColumn FakeColumn::DateTimeOld(const QString& name, int width) {
    return {name, Byte(0x6F) + Byte(width), Prefix::Byte};
}
FakeColumn FakeColumn::Date(const QString& name) {
    return {name, Byte(0x28), Prefix::Byte};
}
FakeColumn FakeColumn::Time(const QString& name, int scale) {
    return {name, Byte(0x29) + Byte(scale), Prefix::Byte};
}
FakeColumn FakeColumn::DateTime2(const QString& name, int scale) {
    return {name, Byte(0x2A) + Byte(scale), Prefix::Byte};
}
FakeColumn FakeColumn::DateTimeOffset(const QString& name, int scale) {
    return {name, Byte(0x2B) + Byte(scale), Prefix::Byte};
}
FakeColumn FakeColumn::Xml(const QString& name) {
    return {name, Byte(0xF1) + Byte(0), Prefix::Parts};
}
FakeColumn FakeColumn::Variant(const QString& name) {
    return {name, Byte(0x62) + Le(8009, 4), Prefix::Long};
}

FakeColumn FakeColumn::UserDefined(const QString& name) {
    return {name,
            Byte(0xF0) + Short(0xFFFF) + ByteText(QStringLiteral("db")) +
                ByteText(QStringLiteral("sys")) + ByteText(QStringLiteral("geography")) + Short(5) +
                Utf16(QStringLiteral("Types")),
            Prefix::Parts};
}
// The table that a long column belongs to is named behind its type, in parts.
FakeColumn FakeColumn::Text(const QString& name) {
    return {name, Byte(0x23) + Le(0x7FFFFFFF, 4) + Collation() + Byte(1) + Short(1) + Utf16("t"),
            Prefix::Pointer};
}
FakeColumn FakeColumn::NText(const QString& name) {
    return {name, Byte(0x63) + Le(0x7FFFFFFE, 4) + Collation() + Byte(1) + Short(1) + Utf16("t"),
            Prefix::Pointer};
}
FakeColumn FakeColumn::Image(const QString& name) {
    return {name, Byte(0x22) + Le(0x7FFFFFFF, 4) + Byte(1) + Short(1) + Utf16("t"),
            Prefix::Pointer};
}

FakeTds& FakeTds::Columns(std::vector<FakeColumn> columns) {
    columns_ = std::move(columns);
    bytes_ += Byte(0x81) + Short(static_cast<int>(columns_.size()));
    for (const FakeColumn& column : columns_)
        bytes_ += Le(0, 4) + Short(1) + column.typeInfo + ByteText(column.name);
    return *this;
}

FakeTds& FakeTds::Row(std::initializer_list<FakeValue> values) {
    bytes_ += Byte(0xD1);
    auto column = columns_.begin();
    for (const FakeValue& value : values) {
        const auto size = static_cast<quint64>(value ? value->size() : 0);
        switch ((column++)->prefix) {
            case FakeColumn::Prefix::Byte:
                bytes_ += Le(size, 1);
                break;
            case FakeColumn::Prefix::Short:
                bytes_ += Le(value ? size : 0xFFFF, 2);
                break;
            case FakeColumn::Prefix::Long:
                bytes_ += Le(size, 4);
                break;
            case FakeColumn::Prefix::Pointer:
                bytes_ += Byte(value ? 16 : 0);
                if (value) bytes_ += QByteArray(24, 'p') + Le(size, 4);
                break;
            case FakeColumn::Prefix::Parts:
                bytes_ += Le(value ? size : ~quint64{0}, 8);
                if (value && size > 0) bytes_ += Le(size, 4) + *value;
                if (value) bytes_ += Le(0, 4);
                continue;
        }
        if (value) bytes_ += *value;
    }
    return *this;
}

FakeTds& FakeTds::Error(int number, const QString& text, int line, int severity) {
    Message(0xAA, number, text, line, severity);
    return *this;
}

FakeTds& FakeTds::Info(int number, const QString& text) {
    Message(0xAB, number, text, 1, 0);
    return *this;
}

FakeTds& FakeTds::Done(qint64 count, bool more) {
    DoneToken(static_cast<quint16>((count >= 0 ? 0x10 : 0) | (more ? 1 : 0)),
              static_cast<quint64>(count >= 0 ? count : 0));
    return *this;
}

FakeTds& FakeTds::DoneError(bool more) {
    DoneToken(static_cast<quint16>(2 | (more ? 1 : 0)), 0);
    return *this;
}

FakeTds& FakeTds::ReturnStatus(int status) {
    bytes_ += Byte(0x79) + Le(static_cast<quint64>(status), 4);
    return *this;
}

FakeTds& FakeTds::Raw(const QByteArray& bytes) {
    bytes_ += bytes;
    return *this;
}

void FakeTds::Message(quint8 token, int number, const QString& text, int line, int severity) {
    const QByteArray body = Le(static_cast<quint64>(number), 4) + Byte(1) + Byte(severity) +
                            Short(static_cast<int>(text.size())) + Utf16(text) +
                            ByteText(QStringLiteral("fake")) + ByteText({}) +
                            Le(static_cast<quint64>(line), 4);
    bytes_ += Byte(token) + Short(static_cast<int>(body.size())) + body;
}

void FakeTds::DoneToken(quint16 status, quint64 count) {
    bytes_ += Byte(0xFD) + Le(status, 2) + Le(0xC1, 2) + Le(count, 8);
}

QByteArray FakeTds::PreLogin(quint8 encryption) {
    return QByteArray::fromHex(
               "00001a0006 0100200001 0200210001 0300220000 0400220001 ff"
               "0f00104d0000") +
           Byte(encryption) + Byte(0) + Byte(0);
}

QByteArray FakeTds::LoginOk(const QString& database) {
    const QByteArray ack = Byte(1) + QByteArray::fromHex("74000004") +
                           ByteText(QStringLiteral("Fake Server")) +
                           QByteArray::fromHex("0f00104d");
    FakeTds reply;
    reply.Raw(EnvChange(1, database, QStringLiteral("master")))
        .Raw(Byte(0xE3) + Short(8) + Byte(7) + Byte(5) + Collation() + Byte(0))
        .Raw(Byte(0xAD) + Short(static_cast<int>(ack.size())) + ack)
        .Raw(EnvChange(4, QStringLiteral("4096"), QStringLiteral("4096")))
        .Done();
    return reply;
}

QByteArray FakeTds::LoginFailed(const QString& user) {
    return FakeTds()
        .Error(18456, QStringLiteral("Login failed for user '%1'.").arg(user), 1, 14)
        .DoneError();
}

QByteArray FakeTds::LoginUntrusted() {
    return FakeTds()
        .Error(18452,
               QStringLiteral("Login failed. The login is from an untrusted domain and cannot be "
                              "used with Integrated authentication."),
               1, 14)
        .DoneError();
}

QByteArray FakeTds::Sspi(const QByteArray& token) {
    return Byte(0xED) + Short(static_cast<int>(token.size())) + token;
}

QByteArray FakeTds::AttentionDone() {
    FakeTds reply;
    reply.DoneToken(0x20, 0);
    return reply;
}

QByteArray FakeTds::TlsHandshakeFailure() {
    return QByteArray::fromHex("15 0303 0002 0228");
}

}  // namespace quarv::test
