#pragma once

#include "adapters/odbc/api.h"
#include "platform/ado/driver.h"

#include <cstdint>

namespace veldran::odbc {

/// The type of a column or parameter whose SQL type the driver has told.
ado::DataTypeEnum adoType(SQLSMALLINT sqlType);
/// Characters for text (0 is no limit), bytes for numbers.
int definedSize(ado::DataTypeEnum type, SQLULEN columnSize);

/// How a parameter is declared to the server: exactly as its object says, so that the server never has to
/// guess.
struct Declaration {
    SQLSMALLINT sqlType = SQL_UNKNOWN_TYPE;
    SQLSMALLINT bufferType = SQL_C_DEFAULT;
    SQLULEN size = 0; ///< characters or digits
    SQLSMALLINT scale = 0;
};
Declaration declarationOf(const ado::ParameterInfo& parameter);

} // namespace veldran::odbc
