#include "localdb/tds/ReturnValue.h"

namespace quarv::localdb::tds {

void ReturnValue::Encode(ByteWriter& writer, Dialect dialect) const {
    writer.U8(static_cast<uint8_t>(Token::ReturnValue));
    writer.U16(ordinal);
    writer.ShortText(name);
    writer.U8(status);
    if (dialect == Dialect::V71) {
        writer.U16(static_cast<uint16_t>(userType));
    } else {
        writer.U32(userType);
    }
    writer.U16(flags);
    type.Encode(writer);
    value.Encode(writer, type, Place::Row);
}

ReturnValue ReturnValue::Decode(ByteReader& reader, Dialect dialect) {
    ExpectToken(reader, Token::ReturnValue);
    ReturnValue result;
    result.ordinal = reader.U16();
    result.name = reader.ShortText();
    result.status = reader.U8();
    result.userType = dialect == Dialect::V71 ? reader.U16() : reader.U32();
    result.flags = reader.U16();
    result.type = TypeInfo::Decode(reader);
    result.value = RawValue::Decode(reader, result.type, Place::Row);
    return result;
}

}  // namespace quarv::localdb::tds
