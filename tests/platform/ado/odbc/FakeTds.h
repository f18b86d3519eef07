// FakeTds: the bytes that a server of the TDS protocol answers with ([MS-TDS], "Packet Data Token
// Stream Definition"), written by hand for tests. It shares no code with any real server.
#pragma once

#include <QByteArray>
#include <QString>
#include <initializer_list>
#include <optional>
#include <vector>

namespace quarv::test {

// A column of a fake rowset: its TYPE_INFO and how a value's length is written before it.
struct FakeColumn {
    enum class Prefix { Byte, Short, Long, Parts, Pointer };
    QString name;
    QByteArray typeInfo;
    Prefix prefix;

    static FakeColumn Int(const QString& name, int width = 4);
    static FakeColumn Bit(const QString& name);
    static FakeColumn Float(const QString& name, int width = 8);
    static FakeColumn Money(const QString& name);
    static FakeColumn Decimal(const QString& name, int precision, int scale);
    static FakeColumn NVarChar(const QString& name, int characters);
    static FakeColumn NVarCharMax(const QString& name);
    static FakeColumn VarChar(const QString& name, int bytes);
    static FakeColumn VarCharMax(const QString& name);
    static FakeColumn VarBinary(const QString& name, int bytes);
    static FakeColumn VarBinaryMax(const QString& name);
    static FakeColumn Guid(const QString& name);
    static FakeColumn DateTimeOld(const QString& name, int width = 8);
    static FakeColumn Date(const QString& name);
    static FakeColumn Time(const QString& name, int scale);
    static FakeColumn DateTime2(const QString& name, int scale);
    static FakeColumn DateTimeOffset(const QString& name, int scale);
    static FakeColumn Xml(const QString& name);
    static FakeColumn Variant(const QString& name);
    static FakeColumn UserDefined(const QString& name);
    static FakeColumn Text(const QString& name);
    static FakeColumn NText(const QString& name);
    static FakeColumn Image(const QString& name);
};

// Little-endian bytes of the low `width` bytes of `value`.
QByteArray Le(quint64 value, int width);
QByteArray Utf16(const QString& text);

// A value's bytes; nothing stands for NULL.
using FakeValue = std::optional<QByteArray>;

class FakeTds {
  public:
    FakeTds& Columns(std::vector<FakeColumn> columns);
    FakeTds& Row(std::initializer_list<FakeValue> values);
    FakeTds& Error(int number, const QString& text, int line = 1, int severity = 16);
    FakeTds& Info(int number, const QString& text);
    // DONE with a count where `count` is not negative. `more`: another result follows.
    FakeTds& Done(qint64 count = -1, bool more = false);
    FakeTds& DoneError(bool more = false);
    FakeTds& ReturnStatus(int status);
    FakeTds& Raw(const QByteArray& bytes);

    const QByteArray& Bytes() const { return bytes_; }
    operator QByteArray() const { return bytes_; }

    static QByteArray PreLogin(quint8 encryption = 2);
    // What a login that succeeds is answered with.
    static QByteArray LoginOk(const QString& database);
    static QByteArray LoginFailed(const QString& user);
    // The login of a Windows account whose token proves nothing.
    static QByteArray LoginUntrusted();
    // The server's own token, in answer to that of a Windows account.
    static QByteArray Sspi(const QByteArray& token);
    static QByteArray AttentionDone();
    // The record by which TLS ends a handshake of two sides that have nothing in common ([RFC
    // 5246], "Error Alerts").
    static QByteArray TlsHandshakeFailure();

  private:
    void Message(quint8 token, int number, const QString& text, int line, int severity);
    void DoneToken(quint16 status, quint64 count);

    std::vector<FakeColumn> columns_;
    QByteArray bytes_;
};

}  // namespace quarv::test
