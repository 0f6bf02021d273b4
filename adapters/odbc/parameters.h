#pragma once

#include "adapters/odbc/types.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace veldran::odbc {

/// The values of a statement's markers in the memory that the driver reads when the statement executes. They
/// are bound once, because a driver prepares anew what is bound anew; each execution only changes what stands
/// in the memory.
class ParameterBuffers {
public:
    explicit ParameterBuffers(std::span<const ado::ParameterInfo> parameters);
    ParameterBuffers(const ParameterBuffers&) = delete;
    ParameterBuffers& operator=(const ParameterBuffers&) = delete;

    /// Binds the markers of `statement`, always the same one, unless they are. The memory must outlive the
    /// statement's executions. \throws AdoError with the driver's diagnostics.
    void bindTo(SQLHSTMT statement);
    /// Takes the values for the next execution. Drivers cut what does not fit without a word, so every value
    /// is checked against its declaration first.
    /// \throws AdoError 3421 for a value of another kind, with more decimal places than the scale or with
    /// characters that are none; 8115 beyond the precision; 8152 for a text too long.
    void assign(std::span<const ado::BoundParameter> values);

    bool matches(std::span<const ado::BoundParameter> values) const;

private:
    struct Buffer {
        ado::ParameterInfo info;
        Declaration declaration;
        std::vector<std::byte> bytes;
        SQLLEN length = SQL_NULL_DATA;
    };
    void store(Buffer& buffer, const Value& value);
    void put(Buffer& buffer, const void* data, std::size_t size);

    std::vector<Buffer> buffers_;
    bool bound_ = false;
};

} // namespace veldran::odbc
