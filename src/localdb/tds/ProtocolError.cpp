#include "localdb/tds/ProtocolError.h"

#include <algorithm>
#include <array>

namespace quarv::localdb::tds {

namespace {

using Kind = ProtocolError::Kind;

struct FaultRule {
    Fault fault;
    Kind kind;
    const char* text;
};

constexpr std::array<FaultRule, 23> Rules{{
    {Fault::OutOfBytes, Kind::Incomplete, "more bytes are needed"},
    {Fault::Truncated, Kind::Malformed, "the message ends too early"},
    {Fault::PacketLength, Kind::Malformed, "a packet's length is out of range"},
    {Fault::PacketTypeChanged, Kind::Malformed, "the packet type changes within a message"},
    {Fault::PacketType, Kind::Malformed, "unknown packet type"},
    {Fault::MessageTooLong, Kind::Malformed, "the message is too long"},
    {Fault::PreloginEntry, Kind::Malformed, "a prelogin entry points outside the message"},
    {Fault::LoginLength, Kind::Malformed, "the login's length does not fit its message"},
    {Fault::LoginField, Kind::Malformed, "a login field points outside the message"},
    {Fault::LoginExtension, Kind::Malformed, "the login's feature list is damaged"},
    {Fault::HeadersLength, Kind::Malformed, "the request's headers do not add up"},
    {Fault::TextLength, Kind::Malformed, "a text has an odd number of bytes"},
    {Fault::TrailingBytes, Kind::Malformed, "bytes follow the end"},
    {Fault::TokenLength, Kind::Malformed, "a token's length does not fit its content"},
    {Fault::UnexpectedToken, Kind::Malformed, "another token was expected"},
    {Fault::TypeCode, Kind::Malformed, "unknown data type"},
    {Fault::TypeSize, Kind::Malformed, "a data type's size, precision or scale is out of range"},
    {Fault::ValueLength, Kind::Malformed, "a value's length does not fit its type"},
    {Fault::ValueTooLong, Kind::Malformed, "a value is too long for its type"},
    {Fault::ParameterStatus, Kind::Malformed, "unknown parameter status"},
    {Fault::ParameterType, Kind::Unsupported, "this data type is not supported as a parameter"},
    {Fault::ProcedureId, Kind::Unsupported, "unknown procedure number"},
    {Fault::TransactionKind, Kind::Unsupported, "this transaction request is not supported"},
}};

const FaultRule& RuleOf(Fault fault) {
    const auto* rule = std::find_if(Rules.begin(), Rules.end(),
                                    [fault](const FaultRule& r) { return r.fault == fault; });
    return rule == Rules.end() ? Rules[1] : *rule;
}

QString Describe(Fault fault, size_t position, const QString& detail) {
    QString text = QString::fromLatin1(RuleOf(fault).text);
    if (!detail.isEmpty()) text += QStringLiteral(": ") + detail;
    return text + QStringLiteral(" (byte %1)").arg(position);
}

}  // namespace

ProtocolError::ProtocolError(Fault fault, size_t position, const QString& detail)
    : Error(static_cast<int>(fault) + 1, Describe(fault, position, detail)),
      fault_(fault),
      position_(position) {}

ProtocolError::Kind ProtocolError::Outcome() const {
    return RuleOf(fault_).kind;
}

}  // namespace quarv::localdb::tds
