// WireClient: a client that does nothing but send batches and take in what comes back: what is left
// of a round trip is the server's part. Raises std::runtime_error where the server refuses.
#pragma once

#include <QString>
#include <cstddef>
#include <span>
#include <vector>

namespace quarv::bench {

class WireClient {
  public:
    // Logs in as bench/bench on a loopback port.
    WireClient(int port, const QString& database);
    ~WireClient();
    WireClient(const WireClient&) = delete;
    WireClient& operator=(const WireClient&) = delete;

    // Sends a batch and reads its whole reply.
    void Run(const QString& sql);

  private:
    void Send(int type, std::span<const std::byte> body);
    void Receive();

    int socket_ = -1;
    std::vector<std::byte> reply_;  // of the last message, without headers
};

// A socket connected to a loopback port, without delays.
int ConnectTo(int port);
void SendAll(int socket, std::span<const std::byte> bytes);
void ReceiveAll(int socket, std::span<std::byte> bytes);

}  // namespace quarv::bench
