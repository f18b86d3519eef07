#include "localdb/server/FileDescriptor.h"

#include <unistd.h>

#include <utility>

namespace quarv::localdb::server {

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
    if (this != &other) {
        Close();
        descriptor_ = other.Release();
    }
    return *this;
}

int FileDescriptor::Release() {
    return std::exchange(descriptor_, -1);
}

void FileDescriptor::Close() {
    if (descriptor_ >= 0) ::close(Release());
}

}  // namespace quarv::localdb::server
