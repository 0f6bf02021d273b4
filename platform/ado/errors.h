#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace veldran::ado {

/// One error or message of the database, as `Connection::Errors` lists it.
struct Error {
    int Number = 0;          ///< the number an error handler sees; SQL Server's where it has one
    std::string Source;      ///< the part that found the error, e.g. the driver's name
    std::string Description; ///< text for the user
    std::string SQLState;    ///< five characters
    int NativeError = 0;     ///< the database's own number
};

using Errors = std::vector<Error>;

/// A failure of the database or of the object model. `errors()` is never empty; its first entry is the cause.
class AdoError : public std::runtime_error {
public:
    explicit AdoError(Errors errors);
    explicit AdoError(Error error) : AdoError(Errors{std::move(error)}) {}
    const Errors& errors() const { return errors_; }
    const Error& first() const { return errors_.front(); }

private:
    Errors errors_;
};

} // namespace veldran::ado
