#include "adapters/odbc/parameters.h"

#include "adapters/odbc/errors.h"
#include "adapters/odbc/utf16.h"
#include "platform/ado/raise.h"
#include "platform/ado/value_conversion.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace veldran::odbc {

namespace {

/// Enough for any number written out and for most texts; a longer text takes more when it comes.
constexpr std::size_t usualBytes = 256;

ado::Carrier carrierOf(const ado::ParameterInfo& parameter) {
    return {"parametro", parameter.name};
}

} // namespace

ParameterBuffers::ParameterBuffers(std::span<const ado::ParameterInfo> parameters) {
    buffers_.reserve(parameters.size());
    for (const ado::ParameterInfo& parameter : parameters) {
        buffers_.push_back(
            {parameter, declarationOf(parameter), std::vector<std::byte>(usualBytes), SQL_NULL_DATA});
    }
}

void ParameterBuffers::bindTo(SQLHSTMT statement) {
    if (bound_) {
        return;
    }
    SQLUSMALLINT ordinal = 0;
    for (Buffer& buffer : buffers_) {
        const SQLRETURN code =
            SQLBindParameter(statement, ++ordinal, SQL_PARAM_INPUT, buffer.declaration.bufferType,
                             buffer.declaration.sqlType, buffer.declaration.size, buffer.declaration.scale,
                             buffer.bytes.data(), static_cast<SQLLEN>(buffer.bytes.size()), &buffer.length);
        if (!succeeded(code)) {
            failWithDiagnostics(SQL_HANDLE_STMT, statement);
        }
    }
    bound_ = true;
}

bool ParameterBuffers::matches(std::span<const ado::BoundParameter> values) const {
    return std::equal(
        values.begin(), values.end(), buffers_.begin(), buffers_.end(),
        [](const ado::BoundParameter& value, const Buffer& buffer) { return value.info == buffer.info; });
}

void ParameterBuffers::assign(std::span<const ado::BoundParameter> values) {
    for (std::size_t i = 0; i < buffers_.size(); ++i) {
        Buffer& buffer = buffers_[i];
        const ado::TargetType target{carrierOf(buffer.info), buffer.info.type, buffer.info.size,
                                     buffer.info.precision, buffer.info.scale};
        const Value value = ado::converted(values[i].value, target, ado::Places::Refused);
        if (value.isNull()) {
            buffer.length = SQL_NULL_DATA;
        } else {
            store(buffer, value);
        }
    }
}

void ParameterBuffers::put(Buffer& buffer, const void* data, std::size_t size) {
    if (size > buffer.bytes.size()) {
        buffer.bytes.resize(size);
        bound_ = false; // the memory has moved
    }
    std::memcpy(buffer.bytes.data(), data, size);
    buffer.length = static_cast<SQLLEN>(size);
}

void ParameterBuffers::store(Buffer& buffer, const Value& value) {
    const auto putNumber = [&](auto number) { put(buffer, &number, sizeof number); };
    switch (buffer.declaration.bufferType) {
    case SQL_C_BIT:
        putNumber(static_cast<SQLCHAR>(value.toBool() ? 1 : 0));
        break;
    case SQL_C_SSHORT:
        putNumber(static_cast<SQLSMALLINT>(value.toInt16()));
        break;
    case SQL_C_SLONG:
        putNumber(static_cast<SQLINTEGER>(value.toInt32()));
        break;
    case SQL_C_SBIGINT:
        putNumber(static_cast<SQLBIGINT>(value.toInteger()));
        break;
    case SQL_C_DOUBLE:
        putNumber(static_cast<SQLDOUBLE>(value.toDouble()));
        break;
    case SQL_C_CHAR: {
        const std::string digits = value.toText();
        put(buffer, digits.data(), digits.size());
        break;
    }
    default:
        try {
            const std::u16string text = toUtf16(value.toText());
            put(buffer, text.data(), text.size() * sizeof(char16_t));
        } catch (const std::invalid_argument&) {
            ado::raise(ado::adErrDataConversion, "(" + carrierOf(buffer.info).text() + ": testo non UTF-8)");
        }
    }
}

} // namespace veldran::odbc
