#include "localdb/tds/RpcRequest.h"

#include <array>

namespace quarv::localdb::tds {

namespace {

constexpr uint16_t ByNumber = 0xFFFF;

// Between two calls of one message.
constexpr uint8_t SeparatorOf(Dialect dialect) {
    return dialect == Dialect::V71 ? 0x80 : 0xFF;
}

constexpr uint8_t KnownStatus = RpcParameter::Output | RpcParameter::Default;

// [MS-TDS], "RPC Request", ProcIDSwitch.
constexpr std::array<const char*, 16> WellKnown{"",
                                                "sp_cursor",
                                                "sp_cursoropen",
                                                "sp_cursorprepare",
                                                "sp_cursorexecute",
                                                "sp_cursorprepexec",
                                                "sp_cursorunprepare",
                                                "sp_cursorfetch",
                                                "sp_cursoroption",
                                                "sp_cursorclose",
                                                "sp_executesql",
                                                "sp_prepare",
                                                "sp_execute",
                                                "sp_prepexec",
                                                "sp_prepexecrpc",
                                                "sp_unprepare"};

RpcParameter DecodeParameter(ByteReader& reader) {
    RpcParameter parameter;
    parameter.name = reader.ShortText();
    if ((reader.Peek() & ~KnownStatus) != 0) reader.Fail(Fault::ParameterStatus);
    parameter.status = reader.U8();
    const uint8_t code = reader.Peek();
    const TypeRule* rule = FindTypeRule(code);
    if (rule == nullptr || !rule->parameter) {
        reader.Fail(Fault::ParameterType, QStringLiteral("0x%1").arg(code, 2, 16, QChar(u'0')));
    }
    parameter.type = TypeInfo::Decode(reader);
    parameter.value = RawValue::Decode(reader, parameter.type, Place::Parameter);
    return parameter;
}

RpcCall DecodeCall(ByteReader& reader, uint8_t separator) {
    RpcCall call;
    const size_t at = reader.Position();
    const uint16_t nameLength = reader.U16();
    if (nameLength == ByNumber) {
        call.procedureId = reader.U16();
        if (ProcedureNameOf(call.procedureId).isEmpty()) {
            throw ProtocolError(Fault::ProcedureId, at, QString::number(call.procedureId));
        }
    } else {
        call.name = reader.Text(nameLength);
    }
    call.options = reader.U16();
    while (!reader.AtEnd() && reader.Peek() != separator) {
        call.parameters.push_back(DecodeParameter(reader));
    }
    return call;
}

void EncodeCall(ByteWriter& writer, const RpcCall& call) {
    if (call.procedureId != 0) {
        writer.U16(ByNumber);
        writer.U16(call.procedureId);
    } else {
        writer.MediumText(call.name);
    }
    writer.U16(call.options);
    for (const RpcParameter& parameter : call.parameters) {
        writer.ShortText(parameter.name);
        writer.U8(parameter.status);
        parameter.type.Encode(writer);
        parameter.value.Encode(writer, parameter.type, Place::Parameter);
    }
}

}  // namespace

void RpcRequest::Encode(ByteWriter& writer, Dialect dialect) const {
    if (dialect != Dialect::V71) headers.Encode(writer);
    bool first = true;
    for (const RpcCall& call : calls) {
        if (!first) writer.U8(SeparatorOf(dialect));
        first = false;
        EncodeCall(writer, call);
    }
}

RpcRequest RpcRequest::Decode(std::span<const std::byte> body, Dialect dialect) {
    ByteReader reader(body);
    RpcRequest request;
    if (dialect != Dialect::V71) request.headers = AllHeaders::Decode(reader);
    for (;;) {
        request.calls.push_back(DecodeCall(reader, SeparatorOf(dialect)));
        if (reader.AtEnd()) return request;
        reader.U8();
        if (reader.AtEnd()) return request;
    }
}

QString ProcedureNameOf(uint16_t procedureId) {
    if (procedureId >= WellKnown.size()) return {};
    return QString::fromLatin1(WellKnown[procedureId]);
}

}  // namespace quarv::localdb::tds
