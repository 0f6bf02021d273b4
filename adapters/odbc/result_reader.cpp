#include "adapters/odbc/result_reader.h"

#include "adapters/odbc/types.h"
#include "adapters/odbc/utf16.h"
#include "platform/ado/raise.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace veldran::odbc {

namespace {

/// Units that one call may bring; a longer text is brought in pieces.
constexpr std::size_t pieceUnits = 4001;

std::string_view withoutZerosAtTheEnd(std::string_view number) {
    if (number.find('.') == std::string_view::npos) {
        return number;
    }
    number = number.substr(0, number.find_last_not_of('0') + 1);
    number.remove_suffix(number.ends_with('.') ? 1 : 0);
    return number.find_first_of("123456789") == std::string_view::npos ? "0" : number;
}

/// A driver may write 0.50 as ".50", and leaves out zeros at the end that the column's scale has. A number
/// that would have too many digits only because of such zeros is given without them.
Value decimalValue(const std::string& text, const ado::ColumnInfo& column) {
    for (const bool atScale : {true, false}) {
        try {
            const Decimal decimal = Decimal::parse(atScale ? text : withoutZerosAtTheEnd(text));
            return atScale && decimal.scale < column.scale ? decimal.rescaled(column.scale) : decimal;
        } catch (const std::logic_error&) {
            // Too many digits; told below.
        } catch (const std::runtime_error&) {
            // Too many digits at the column's scale.
        }
    }
    ado::raise(ado::sqlErrOverflow, "(campo " + column.name + ", valore \"" + text + "\")");
}

} // namespace

ResultReader::ResultReader(SQLHSTMT statement, SQLSMALLINT columns)
    : statement_(statement), buffer_(pieceUnits, u'\0') {
    for (SQLSMALLINT i = 1; i <= columns; ++i) {
        columns_.push_back(describe(static_cast<SQLUSMALLINT>(i)));
    }
}

void ResultReader::check(SQLRETURN code) const {
    if (!succeeded(code)) {
        failWithDiagnostics(SQL_HANDLE_STMT, statement_);
    }
}

ado::ColumnInfo ResultReader::describe(SQLUSMALLINT ordinal) const {
    std::array<char16_t, 256> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = SQL_NULLABLE_UNKNOWN;
    check(SQLDescribeColW(statement_, ordinal, wide(name.data()), static_cast<SQLSMALLINT>(name.size()),
                          &length, &type, &size, &digits, &nullable));
    ado::ColumnInfo column;
    column.name = toUtf8(name.data());
    column.type = adoType(type);
    column.definedSize = definedSize(column.type, size);
    column.nullable = nullable != SQL_NO_NULLS;
    SQLLEN identity = SQL_FALSE;
    SQLColAttributeW(statement_, ordinal, SQL_DESC_AUTO_UNIQUE_VALUE, nullptr, 0, nullptr, &identity);
    column.identity = identity == SQL_TRUE;
    if (column.type == ado::adNumeric) {
        column.precision = static_cast<std::uint8_t>(std::min<SQLULEN>(size, 38));
        column.scale = static_cast<std::uint8_t>(std::max<SQLSMALLINT>(digits, 0));
    }
    return column;
}

std::unique_ptr<ado::RowSet> ResultReader::rows() {
    const std::vector<ado::ColumnInfo> columns = columns_;
    auto rows = std::make_unique<ado::RowSet>(std::move(columns_));
    for (;;) {
        const SQLRETURN code = SQLFetch(statement_);
        if (code == SQL_NO_DATA) {
            return rows;
        }
        check(code);
        SQLUSMALLINT ordinal = 0;
        for (const ado::ColumnInfo& column : columns) {
            rows->append(read(++ordinal, column));
        }
    }
}

Value ResultReader::read(SQLUSMALLINT ordinal, const ado::ColumnInfo& column) {
    switch (column.type) {
    case ado::adBoolean: {
        const Value bit = readNumber<SQLCHAR>(ordinal, SQL_C_BIT);
        return bit.isNull() ? bit : Value(bit.toInteger() != 0);
    }
    case ado::adSmallInt:
    case ado::adInteger:
    case ado::adBigInt:
        return readNumber<SQLBIGINT>(ordinal, SQL_C_SBIGINT);
    case ado::adDouble:
        return readNumber<SQLDOUBLE>(ordinal, SQL_C_DOUBLE);
    case ado::adNumeric:
    case ado::adDecimal:
        return readDecimal(ordinal, column);
    default: {
        const auto text = readText(ordinal);
        return text ? Value(toUtf8(*text)) : Value();
    }
    }
}

template<class Number>
Value ResultReader::readNumber(SQLUSMALLINT ordinal, SQLSMALLINT bufferType) {
    Number number{};
    SQLLEN indicator = 0;
    check(SQLGetData(statement_, ordinal, bufferType, &number, sizeof number, &indicator));
    if (indicator == SQL_NULL_DATA) {
        return {};
    }
    if constexpr (std::is_floating_point_v<Number>) {
        return Value(static_cast<double>(number));
    } else {
        return Value(static_cast<std::int64_t>(number));
    }
}

Value ResultReader::readDecimal(SQLUSMALLINT ordinal, const ado::ColumnInfo& column) {
    std::array<char, 64> text{};
    SQLLEN indicator = 0;
    check(SQLGetData(statement_, ordinal, SQL_C_CHAR, text.data(), text.size(), &indicator));
    return indicator == SQL_NULL_DATA ? Value() : decimalValue(text.data(), column);
}

std::optional<std::u16string> ResultReader::readText(SQLUSMALLINT ordinal) {
    std::u16string text;
    for (;;) {
        const auto capacity = static_cast<SQLLEN>((buffer_.size() - 1) * sizeof(char16_t));
        SQLLEN indicator = 0;
        const SQLRETURN code = SQLGetData(statement_, ordinal, SQL_C_WCHAR, buffer_.data(),
                                          static_cast<SQLLEN>(buffer_.size() * sizeof(char16_t)), &indicator);
        if (code == SQL_NO_DATA) {
            return text;
        }
        check(code);
        if (indicator == SQL_NULL_DATA) {
            return std::nullopt;
        }
        const bool whole = indicator >= 0 && indicator <= capacity;
        text.append(buffer_, 0, static_cast<std::size_t>(whole ? indicator : capacity) / sizeof(char16_t));
        if (whole) {
            return text;
        }
    }
}

} // namespace veldran::odbc
