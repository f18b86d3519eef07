// RequestTest: a client that has logged in, for tests of what it may ask.
#pragma once

#include "RunningServer.h"
#include "localdb/tds/RpcRequest.h"

namespace quarv::localdb::server {

class RequestTest : public testing::Test {
  protected:
    RequestTest() : client_(server_.Port()) { EXPECT_TRUE(client_.LogIn()->ack); }

    Reply Run(const char* sql) {
        const auto reply = client_.Run(QString::fromLatin1(sql));
        EXPECT_TRUE(reply) << "the server closed";
        return reply.value_or(Reply{});
    }
    template <typename Request>
    Reply Run(tds::PacketType type, const Request& request) {
        tds::BufferWriter writer;
        request.Encode(writer);
        client_.Send(type, writer.Written());
        return client_.Receive().value_or(Reply{});
    }
    Reply Call(const tds::RpcCall& call) {
        return Run(tds::PacketType::Rpc, tds::RpcRequest{{}, {call}});
    }

    RunningServer server_;
    TestClient client_;
};

inline tds::RpcParameter IntParameter(const char* name, const char* hex, uint8_t status = 0) {
    tds::RpcParameter parameter;
    parameter.name = QString::fromLatin1(name);
    parameter.status = status;
    parameter.type.code = tds::TypeCode::IntN;
    parameter.type.size = 4;
    parameter.value = {false, QByteArray::fromHex(hex)};
    return parameter;
}

}  // namespace quarv::localdb::server
