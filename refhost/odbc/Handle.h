#pragma once

#include "refhost/odbc/Diagnostics.h"
#include "refhost/odbc/Odbc.h"

#include <utility>

namespace refhost::odbc {

/// Owns one ODBC handle and frees it.
template <SQLSMALLINT kind> class Handle {
public:
    Handle() = default;
    explicit Handle(SQLHANDLE handle) : handle_(handle) {}
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (handle_ != nullptr) {
            SQLFreeHandle(kind, handle_);
        }
    }

    SQLHANDLE get() const noexcept { return handle_; }
    static constexpr SQLSMALLINT type() noexcept { return kind; }

private:
    SQLHANDLE handle_ = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

/// Makes a handle below another. Throws what the driver manager reports.
template <class Child, class Parent> Child Allocate(const Parent& parent) {
    SQLHANDLE handle = nullptr;
    Check(SQLAllocHandle(Child::type(), parent.get(), &handle), Parent::type(), parent.get());
    return Child(handle);
}

} // namespace refhost::odbc
