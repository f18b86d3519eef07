// FakeResolver: while it lives, this process looks the names up in it that it was given, and all
// others as ever. It stands in for the C library's getaddrinfo(), for the driver too. One at a
// time.
#pragma once

#include <QByteArray>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace quarv::test {

class FakeResolver {
  public:
    // An address as text. No address at all: nobody knows the name.
    using Names = std::map<QByteArray, std::vector<QByteArray>>;

    explicit FakeResolver(Names names = {});
    // Returns when no look-up is waiting any more.
    ~FakeResolver();
    FakeResolver(const FakeResolver&) = delete;
    FakeResolver& operator=(const FakeResolver&) = delete;

    // A name whose look-up does not end before this object does.
    static const QByteArray Silent;

    // For getaddrinfo(): nothing where there is no resolver, or the name is not one of its own.
    static std::optional<std::vector<QByteArray>> LookUp(const QByteArray& name);

  private:
    std::optional<std::vector<QByteArray>> Find(const QByteArray& name) const;
    void AwaitEnd(std::unique_lock<std::mutex>& lock);

    Names names_;
    std::condition_variable changed_;
    int waiting_ = 0;
    bool ending_ = false;
};

}  // namespace quarv::test
