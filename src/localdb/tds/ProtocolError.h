// ProtocolError: bytes that do not read as TDS, with the position where. The table of faults, their
// kinds and texts is in ProtocolError.cpp. Raised by every codec of this folder.
#pragma once

#include <cstddef>

#include "base/Error.h"

namespace quarv::localdb::tds {

enum class Fault {
    OutOfBytes,  // the bytes end before the value; more may follow
    Truncated,   // the bytes end before the value, and nothing more follows
    PacketLength,
    PacketTypeChanged,
    PacketType,
    MessageTooLong,
    PreloginEntry,
    LoginLength,
    LoginField,
    LoginExtension,
    HeadersLength,
    TextLength,
    TrailingBytes,
    TokenLength,
    UnexpectedToken,
    TypeCode,
    TypeSize,
    ValueLength,
    ValueTooLong,
    ParameterStatus,
    ParameterType,
    ProcedureId,
    TransactionKind,
};

class ProtocolError : public Error {
  public:
    enum class Kind {
        Incomplete,   // not wrong so far: try again with more bytes
        Malformed,    // can never become right
        Unsupported,  // well formed, and beyond this server
    };

    // `position` counts bytes from the start of what was being read. With `detail`, the table's
    // text, ": " and the detail.
    ProtocolError(Fault fault, size_t position, const QString& detail = {});

    Fault What() const { return fault_; }
    Kind Outcome() const;
    size_t Position() const { return position_; }

  private:
    Fault fault_;
    size_t position_;
};

}  // namespace quarv::localdb::tds
