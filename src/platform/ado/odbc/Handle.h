// Handle: owns one ODBC handle of the given type and frees it. It neither reports nor retries.
#pragma once

#include <sql.h>
#include <sqlext.h>

#include <utility>

namespace quarv::ado::odbc {

template <SQLSMALLINT Type>
class Handle {
  public:
    Handle() = default;
    // Makes a handle under `parent`; empty where the driver manager refuses.
    explicit Handle(SQLHANDLE parent) {
        if (!SQL_SUCCEEDED(SQLAllocHandle(Type, parent, &handle_))) handle_ = nullptr;
    }
    ~Handle() { Reset(); }
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    explicit operator bool() const { return handle_ != nullptr; }
    SQLHANDLE get() const { return handle_; }
    void Reset() {
        if (handle_ != nullptr) SQLFreeHandle(Type, handle_);
        handle_ = nullptr;
    }

  private:
    SQLHANDLE handle_ = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

}  // namespace quarv::ado::odbc
