// FileDescriptor: owns one open file, socket or event of the operating system and closes it.
#pragma once

namespace quarv::localdb::server {

class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.Release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor() { Close(); }

    int Get() const { return descriptor_; }  // -1 where there is none
    bool IsOpen() const { return descriptor_ >= 0; }
    int Release();
    void Close();

  private:
    int descriptor_ = -1;
};

}  // namespace quarv::localdb::server
