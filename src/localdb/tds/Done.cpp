#include "localdb/tds/Done.h"

namespace quarv::localdb::tds {

void Done::Encode(ByteWriter& writer, Dialect dialect) const {
    writer.U8(static_cast<uint8_t>(kind));
    writer.U16(status);
    writer.U16(command);
    if (dialect == Dialect::V71) {
        writer.U32(static_cast<uint32_t>(count));
    } else {
        writer.U64(count);
    }
}

Done Done::Decode(ByteReader& reader, Dialect dialect) {
    Done done;
    done.kind = static_cast<Token>(reader.Peek());
    if (done.kind != Token::Done && done.kind != Token::DoneProc &&
        done.kind != Token::DoneInProc) {
        reader.Fail(Fault::UnexpectedToken);
    }
    reader.U8();
    done.status = reader.U16();
    done.command = reader.U16();
    done.count = dialect == Dialect::V71 ? reader.U32() : reader.U64();
    return done;
}

}  // namespace quarv::localdb::tds
