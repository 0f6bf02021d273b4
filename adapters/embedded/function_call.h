#pragma once

#include "adapters/embedded/sqlite.h"

#include <span>

namespace veldran::embedded {

/// One call of an emitted function: its arguments, its result, its refusal.
class FunctionCall {
public:
    FunctionCall(sqlite3_context* context, int count, sqlite3_value** values)
        : context_(context), count_(count), values_(values) {}

    int count() const { return count_; }
    bool isNull(int argument) const { return sqlite3_value_type(values_[argument]) == SQLITE_NULL; }
    bool anyNull() const;
    bool isText(int argument) const { return sqlite3_value_type(values_[argument]) == SQLITE_TEXT; }
    std::string_view text(int argument) const;
    std::int64_t integer(int argument) const { return sqlite3_value_int64(values_[argument]); }
    int smallInteger(int argument) const { return sqlite3_value_int(values_[argument]); }
    double real(int argument) const { return sqlite3_value_double(values_[argument]); }
    TypeKind kind(int argument) const { return static_cast<TypeKind>(smallInteger(argument)); }

    FunctionState& state() const;
    sqlite3_context* context() const { return context_; }

    void setNull() { sqlite3_result_null(context_); }
    void set(std::int64_t value) { sqlite3_result_int64(context_, value); }
    void set(double value) { sqlite3_result_double(context_, value); }
    void set(std::string_view text) {
        sqlite3_result_text64(context_, text.data() == nullptr ? "" : text.data(), text.size(),
                              SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    /// The argument itself, unchanged.
    void pass(int argument) { sqlite3_result_value(context_, values_[argument]); }
    void refuse(int number, const char* sqlState, std::string description);
    void refuseOverflow(const SqlType& type);
    void setChecked(std::optional<std::int64_t> value, const SqlType& type);

private:
    sqlite3_context* context_;
    int count_;
    sqlite3_value** values_;
};

/// An SQLite function made of a plain one. NULL arguments give NULL without a call.
/// The function must not throw.
using FunctionBody = void (*)(FunctionCall& call);
struct FunctionEntry {
    const char* name;
    int arguments; ///< -1 for any number
    FunctionBody body;
    bool deterministic = true;
};

std::span<const FunctionEntry> textFunctions();
std::span<const FunctionEntry> numberFunctions();

} // namespace veldran::embedded
