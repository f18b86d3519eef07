#include "platform/ado/odbc/FakeResolver.h"

#include <dlfcn.h>
#include <netdb.h>

namespace quarv::test {

namespace {

// Of the resolver that is there and of all that it holds.
std::mutex mutex;
FakeResolver* current = nullptr;

using LookUpFunction = int (*)(const char*, const char*, const addrinfo*, addrinfo**);

// The C library's own.
int SystemLookUp(const char* name, const char* service, const addrinfo* hints, addrinfo** found) {
    static const auto system = reinterpret_cast<LookUpFunction>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return system(name, service, hints, found);
}

}  // namespace

const QByteArray FakeResolver::Silent = "silent.quarv.test";

FakeResolver::FakeResolver(Names names) : names_(std::move(names)) {
    const std::lock_guard lock(mutex);
    current = this;
}

FakeResolver::~FakeResolver() {
    std::unique_lock lock(mutex);
    current = nullptr;
    ending_ = true;
    changed_.notify_all();
    changed_.wait(lock, [this] { return waiting_ == 0; });
}

std::optional<std::vector<QByteArray>> FakeResolver::LookUp(const QByteArray& name) {
    std::unique_lock lock(mutex);
    if (current == nullptr) return std::nullopt;
    if (name != Silent) return current->Find(name);
    current->AwaitEnd(lock);
    return std::vector<QByteArray>();
}

void FakeResolver::AwaitEnd(std::unique_lock<std::mutex>& lock) {
    ++waiting_;
    changed_.wait(lock, [this] { return ending_; });
    --waiting_;
    changed_.notify_all();
}

std::optional<std::vector<QByteArray>> FakeResolver::Find(const QByteArray& name) const {
    const auto found = names_.find(name);
    if (found == names_.end()) return std::nullopt;
    return found->second;
}

}  // namespace quarv::test

using quarv::test::FakeResolver;

// Found before the C library's, which the test program is linked to export it for.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char* name,
                                                                  const char* service,
                                                                  const addrinfo* hints,
                                                                  addrinfo** found) {
    const auto addresses = name ? FakeResolver::LookUp(name) : std::nullopt;
    if (!addresses) return quarv::test::SystemLookUp(name, service, hints, found);
    addrinfo** end = found;
    *end = nullptr;
    // Every entry is an allocation of its own, so lists can be put together from lists.
    for (const QByteArray& address : *addresses) {
        if (quarv::test::SystemLookUp(address.constData(), service, hints, end) != 0)
            *end = nullptr;
        while (*end) end = &(*end)->ai_next;
    }
    return *found ? 0 : EAI_NONAME;
}
