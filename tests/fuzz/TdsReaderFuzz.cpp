// What a logged-in client may send: bytes to messages, messages to requests, parameters to values.
// The first byte chooses the version of the protocol and in which portions the bytes arrive.
#include "base/Error.h"
#include "localdb/server/Arguments.h"
#include "localdb/tds/MessageReader.h"
#include "localdb/tds/RpcRequest.h"
#include "localdb/tds/SqlBatch.h"
#include "localdb/tds/TransactionRequest.h"

namespace {

using namespace quarv::localdb;

void ReadRequest(const tds::Message& message, tds::Dialect dialect) {
    switch (message.type) {
        case tds::PacketType::Batch:
            tds::SqlBatch::Decode(message.body, dialect);
            break;
        case tds::PacketType::Rpc:
            for (const tds::RpcCall& call : tds::RpcRequest::Decode(message.body, dialect).calls) {
                server::ArgumentsOf(call.parameters);
            }
            break;
        case tds::PacketType::Transaction:
            tds::TransactionRequest::Decode(message.body);
            break;
        default:
            break;
    }
}

// A damaged request ends that request; a damaged packet ends the stream, by what it raises.
void ReadAll(std::span<const std::byte> bytes, tds::Dialect dialect, size_t portion) {
    tds::MessageReader reader(tds::PacketHeader::LargestPacket, size_t{1} << 20);
    while (!bytes.empty()) {
        const size_t taken = reader.Feed(bytes.first(std::min(portion, bytes.size())));
        bytes = bytes.subspan(taken);
        if (!reader.HasMessage()) continue;
        try {
            ReadRequest(reader.Take(), dialect);
        } catch (const tds::ProtocolError&) {
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const auto dialect = static_cast<tds::Dialect>(data[0] % 5);
    const size_t portion = data[0] < 128 ? size : 1 + data[0] % 7;
    try {
        ReadAll(std::as_bytes(std::span(data + 1, size - 1)), dialect, portion);
    } catch (const tds::ProtocolError&) {
    }
    return 0;
}
