#pragma once

#include "adapters/odbc/errors.h"

#include <utility>

namespace veldran::odbc {

/// A handle of the driver manager, freed with this object. Move-only.
template<SQLSMALLINT kind>
class Handle {
public:
    Handle() = default;
    /// \throws AdoError when the parent has none to give.
    Handle(SQLSMALLINT parentKind, SQLHANDLE parent) {
        if (!succeeded(SQLAllocHandle(kind, parent, &handle_))) {
            handle_ = SQL_NULL_HANDLE;
            if (parent == SQL_NULL_HANDLE) {
                fail(errorUnspecified, "HY001", "Il gestore dei driver ODBC non è disponibile.");
            }
            failWithDiagnostics(parentKind, parent);
        }
    }
    ~Handle() {
        if (handle_ != SQL_NULL_HANDLE) {
            SQLFreeHandle(kind, handle_);
        }
    }
    Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, SQL_NULL_HANDLE)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }

    SQLHANDLE get() const { return handle_; }

private:
    SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

/// Seconds after which a question of this adapter's own is given up, which no command has set a limit for.
inline constexpr std::uintptr_t ownTimeLimit = 30;

inline void limitTime(SQLHSTMT statement, std::uintptr_t seconds) {
    SQLSetStmtAttrW(statement, SQL_ATTR_QUERY_TIMEOUT, attribute(seconds), SQL_IS_UINTEGER);
}

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

} // namespace veldran::odbc
