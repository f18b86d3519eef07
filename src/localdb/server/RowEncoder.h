// RowEncoder: writes the engine's rows as the wire's, straight into the packet. The way each column
// is written is chosen once, when the result begins; a row costs no allocation.
#pragma once

#include <span>
#include <vector>

#include "localdb/engine/ResultSink.h"
#include "localdb/tds/ColMetadata.h"

namespace quarv::localdb::server {

class RowEncoder {
  public:
    // Writes the columns' description. Rows go as the client's version of the protocol has them.
    void Begin(tds::ByteWriter& writer, std::span<const engine::Column> columns,
               tds::Dialect dialect = tds::Dialect::V74);
    // As many data as columns. Raises ProtocolError ValueTooLong, with the row written in part, for
    // a value that its column cannot carry.
    void Write(tds::ByteWriter& writer, std::span<const engine::Datum> row);

    using ValueWriter = void (*)(tds::ByteWriter&, const tds::TypeInfo&, const engine::Datum&);
    // How values of `kind` are written; not for nulls.
    static ValueWriter WriterOf(engine::TypeKind kind);
    // How a client gets values of a type.
    struct Plan {
        ValueWriter write = nullptr;
        tds::TypeInfo type;
    };
    static Plan PlanOf(const engine::SqlType& type, tds::Dialect dialect);

  private:
    std::vector<Plan> plans_;
    std::vector<std::byte> nulls_;  // the bitmap of one row
    bool bitmaps_ = true;           // the client reads rows with one
};

}  // namespace quarv::localdb::server
