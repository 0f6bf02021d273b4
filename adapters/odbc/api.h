#pragma once

// The driver manager's interface. Only the functions in wide form are used for texts: their characters are
// UTF-16 units under unixODBC and under Windows alike.
#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <cstdint>

namespace veldran::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

inline bool succeeded(SQLRETURN code) {
    return code == SQL_SUCCESS || code == SQL_SUCCESS_WITH_INFO;
}

/// An integer where the interface wants a pointer: the value of an attribute.
inline SQLPOINTER attribute(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value);
}

} // namespace veldran::odbc
