#include "adapters/odbc/types.h"

#include "platform/ado/value_conversion.h"

#include <algorithm>

namespace veldran::odbc {

namespace {

/// The most characters that NCHAR and NVARCHAR hold; longer texts are of the long type.
constexpr int longestWide = 4000;
constexpr int longestNarrow = 8000;
/// What a value holds; declared where a parameter leaves it open.
constexpr std::uint8_t mostDigits = 18;

Declaration textDeclaration(const ado::ParameterInfo& parameter, SQLSMALLINT shortType, SQLSMALLINT longType,
                            int longest) {
    const bool isLong = parameter.size <= 0 || parameter.size > longest;
    const int size = parameter.size > 0 ? parameter.size : 1 << 20;
    return {isLong ? longType : shortType, SQL_C_WCHAR, static_cast<SQLULEN>(size), 0};
}

} // namespace

ado::DataTypeEnum adoType(SQLSMALLINT sqlType) {
    switch (sqlType) {
    case SQL_BIT:
        return ado::adBoolean;
    case SQL_TINYINT:
    case SQL_SMALLINT:
        return ado::adSmallInt;
    case SQL_INTEGER:
        return ado::adInteger;
    case SQL_BIGINT:
        return ado::adBigInt;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return ado::adDouble;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
        return ado::adNumeric;
    case SQL_CHAR:
        return ado::adChar;
    case SQL_WCHAR:
        return ado::adWChar;
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
        return ado::adVarChar;
    default: // dates and whatever else a table may hold are read as the driver writes them
        return ado::adVarWChar;
    }
}

int definedSize(ado::DataTypeEnum type, SQLULEN columnSize) {
    constexpr SQLULEN unlimited = 1 << 20;
    switch (type) {
    case ado::adBoolean:
    case ado::adSmallInt:
        return 2;
    case ado::adInteger:
        return 4;
    case ado::adBigInt:
    case ado::adDouble:
        return 8;
    case ado::adNumeric:
        return 19;
    default:
        return columnSize >= unlimited ? 0 : static_cast<int>(columnSize);
    }
}

Declaration declarationOf(const ado::ParameterInfo& parameter) {
    switch (parameter.type) {
    case ado::adBoolean:
        return {SQL_BIT, SQL_C_BIT, 1, 0};
    case ado::adSmallInt:
        return {SQL_SMALLINT, SQL_C_SSHORT, 5, 0};
    case ado::adInteger:
        return {SQL_INTEGER, SQL_C_SLONG, 10, 0};
    case ado::adBigInt:
        return {SQL_BIGINT, SQL_C_SBIGINT, 19, 0};
    case ado::adDouble:
        return {SQL_DOUBLE, SQL_C_DOUBLE, 15, 0};
    case ado::adNumeric:
    case ado::adDecimal:
        return {SQL_NUMERIC, SQL_C_CHAR, parameter.precision == 0 ? mostDigits : parameter.precision,
                parameter.scale};
    case ado::adChar:
        return textDeclaration(parameter, SQL_CHAR, SQL_LONGVARCHAR, longestNarrow);
    case ado::adVarChar:
        return textDeclaration(parameter, SQL_VARCHAR, SQL_LONGVARCHAR, longestNarrow);
    case ado::adWChar:
        return textDeclaration(parameter, SQL_WCHAR, SQL_WLONGVARCHAR, longestWide);
    default:
        return textDeclaration(parameter, SQL_WVARCHAR, SQL_WLONGVARCHAR, longestWide);
    }
}

} // namespace veldran::odbc
