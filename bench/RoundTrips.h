// RoundTrips: a bare loopback connection to a thread that sends back what it gets: what a request
// and its answer cost before anyone has done anything with them.
#pragma once

#include <cstddef>
#include <thread>
#include <vector>

namespace quarv::bench {

class RoundTrips {
  public:
    // Each way has `bytes` bytes.
    explicit RoundTrips(size_t bytes);
    ~RoundTrips();
    RoundTrips(const RoundTrips&) = delete;
    RoundTrips& operator=(const RoundTrips&) = delete;

    void Once();

  private:
    std::vector<std::byte> bytes_;
    int socket_ = -1;
    std::thread echo_;
};

}  // namespace quarv::bench
