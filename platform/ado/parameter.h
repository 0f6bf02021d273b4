#pragma once

#include "platform/ado/driver.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::ado {

class Command;

/// One parameter of a command. The value is kept as it was given and checked against type, size, precision
/// and scale when the command is executed; nothing is ever cut or rounded silently on its way to the
/// database.
class Parameter {
public:
    Parameter() = default;
    /// `size` counts characters and is required for text types before `Parameters::Append`.
    explicit Parameter(std::string name, DataTypeEnum type = adEmpty,
                       ParameterDirectionEnum direction = adParamInput, int size = 0)
        : info_{std::move(name), type, direction, size, 0, 0} {}
    explicit Parameter(ParameterInfo info) : info_(std::move(info)) {}

    const std::string& Name() const { return info_.name; }
    void Name(std::string name) { info_.name = std::move(name); }
    DataTypeEnum Type() const { return info_.type; }
    void Type(DataTypeEnum type) { info_.type = type; }
    ParameterDirectionEnum Direction() const { return info_.direction; }
    void Direction(ParameterDirectionEnum direction) { info_.direction = direction; }
    int Size() const { return info_.size; }
    void Size(int size) { info_.size = size; }
    std::uint8_t Precision() const { return info_.precision; }
    void Precision(std::uint8_t precision) { info_.precision = precision; }
    std::uint8_t NumericScale() const { return info_.scale; }
    void NumericScale(std::uint8_t scale) { info_.scale = scale; }

    /// NULL until a value was given.
    veldran::Value Value() const { return value_.value_or(veldran::Value()); }
    void Value(veldran::Value value) { value_ = std::move(value); }
    /// Whether a value, NULL included, was ever given.
    bool hasValue() const { return value_.has_value(); }

    const ParameterInfo& info() const { return info_; }
    /// The parameter as it is sent, its value converted to its type.
    /// \throws AdoError 3708 when the declaration is incomplete; 3421 when the value is of another kind or
    /// has more decimal places than the scale; 8115 beyond the precision; 8152 when a text is too long.
    BoundParameter bound() const;

private:
    ParameterInfo info_;
    std::optional<veldran::Value> value_;
};

/// The parameters of one command, addressed by position (from 0) or by name, blind to case.
/// References to a parameter stay valid until it is deleted or the collection is refreshed.
/// The collection of a stored procedure's command fills itself, once, from what the driver reports of the
/// procedure when it is first counted or searched while still empty.
class Parameters {
public:
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;

    /// \throws AdoError 3708 when the type is missing or a text type has no size.
    Parameter& Append(Parameter parameter);
    /// \throws AdoError 3265 when there is no such parameter.
    void Delete(std::string_view name);
    void Delete(std::size_t index);
    /// Replaces the collection by the procedure's parameters as the driver reports them.
    /// \throws AdoError 3709 without an open connection, 3219 unless the command is a stored procedure, and
    /// what the driver throws; the collection is then as it was.
    void Refresh();

    std::size_t Count();
    /// \throws AdoError 3265 when there is no such parameter.
    Parameter& operator[](std::string_view name);
    Parameter& operator[](const char* name) { return (*this)[std::string_view(name)]; }
    Parameter& operator[](std::size_t index);
    Parameter& operator[](int index);

private:
    friend class Command;
    explicit Parameters(Command& command) : command_(command) {}
    void fillFromProcedure();
    std::size_t indexOf(std::string_view name);

    Command& command_;                              // the owner
    std::vector<std::unique_ptr<Parameter>> items_; // by pointer, so that references outlive an Append
    bool asked_ = false;                            // the driver was asked about this procedure already
};

} // namespace veldran::ado
