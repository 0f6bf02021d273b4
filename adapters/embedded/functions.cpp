#include "adapters/embedded/functions.h"

#include "adapters/embedded/collation.h"
#include "adapters/embedded/errors.h"
#include "adapters/embedded/function_call.h"

#include <cstring>
#include <exception>

namespace veldran::embedded {

namespace {

int collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return compareText({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

// SQLite calls plain functions: the body travels as part of the user data.
struct Registration {
    FunctionState* state;
    FunctionBody body;
};

} // namespace

bool FunctionCall::anyNull() const {
    for (int i = 0; i < count_; ++i) {
        if (isNull(i)) {
            return true;
        }
    }
    return false;
}

std::string_view FunctionCall::text(int argument) const {
    const auto* bytes = sqlite3_value_text(values_[argument]);
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(values_[argument]));
    return bytes == nullptr ? std::string_view()
                            : std::string_view(reinterpret_cast<const char*>(bytes), size);
}

void FunctionCall::refuse(int number, const char* sqlState, std::string description) {
    sqlite3_result_error(context_, description.c_str(), static_cast<int>(description.size()));
    state().error = makeError(number, sqlState, std::move(description));
}

void FunctionCall::refuseOverflow(const SqlType& type) {
    refuse(errorOverflow, "22003", overflowText(typeName(type)));
}

void FunctionCall::setChecked(std::optional<std::int64_t> value, const SqlType& type) {
    if (value && rangeOf(type).contains({*value, *value})) {
        set(*value);
    } else {
        refuseOverflow(type);
    }
}

FunctionState& FunctionCall::state() const {
    return *static_cast<const Registration*>(sqlite3_user_data(context_))->state;
}

namespace {

void invoke(sqlite3_context* context, int count, sqlite3_value** values) {
    FunctionCall call(context, count, values);
    if (call.anyNull()) {
        return call.setNull();
    }
    try {
        static_cast<const Registration*>(sqlite3_user_data(context))->body(call);
    } catch (const std::exception&) {
        // Only memory can run out in there; an exception must not cross SQLite's frames.
        sqlite3_result_error_nomem(context);
    }
}

// The one value of a subquery that must not have two.
struct Single {
    std::int64_t rows;
    sqlite3_value* value;
};

void stepSingle(sqlite3_context* context, int, sqlite3_value** values) {
    auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, sizeof(Single)));
    if (single == nullptr) {
        return sqlite3_result_error_nomem(context);
    }
    if (++single->rows == 1) {
        single->value = sqlite3_value_dup(values[0]);
        return;
    }
    FunctionCall(context, 0, nullptr)
        .refuse(512, "21000", "La sottoquery ha restituito più di un valore, che qui non è ammesso.");
}

void finishSingle(sqlite3_context* context) {
    auto* single = static_cast<Single*>(sqlite3_aggregate_context(context, 0));
    if (single == nullptr || single->value == nullptr) {
        return sqlite3_result_null(context);
    }
    if (single->rows == 1) {
        sqlite3_result_value(context, single->value);
    }
    sqlite3_value_free(single->value);
}

bool isSame(sqlite3_value* a, sqlite3_value* b) {
    const int type = sqlite3_value_type(a);
    if (type != sqlite3_value_type(b)) {
        return false;
    }
    switch (type) {
    case SQLITE_NULL:
        return true;
    case SQLITE_INTEGER:
        return sqlite3_value_int64(a) == sqlite3_value_int64(b);
    case SQLITE_FLOAT:
        return sqlite3_value_double(a) == sqlite3_value_double(b);
    default:
        break;
    }
    const auto* x = sqlite3_value_text(a);
    const auto* y = sqlite3_value_text(b);
    const int size = sqlite3_value_bytes(a);
    return size == sqlite3_value_bytes(b) && std::memcmp(x, y, static_cast<std::size_t>(size)) == 0;
}

// (old, new, old, new, ...): whether a row has to be written. Counts the rows that it is asked about.
void changed(sqlite3_context* context, int count, sqlite3_value** values) {
    ++FunctionCall(context, 0, nullptr).state().comparedRows;
    bool same = true;
    for (int i = 0; same && i + 1 < count; i += 2) {
        same = isSame(values[i], values[i + 1]);
    }
    sqlite3_result_int(context, same ? 0 : 1);
}

} // namespace

void registerFunctions(sqlite3* database, FunctionState& state) {
    sqlite3_create_collation_v2(database, collationName, SQLITE_UTF8, nullptr, &collate, nullptr);
    const auto add = [&](const FunctionEntry& entry) {
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (entry.deterministic ? SQLITE_DETERMINISTIC : 0);
        auto* registration = new Registration{&state, entry.body};
        const auto destroy = [](void* data) { delete static_cast<Registration*>(data); };
        sqlite3_create_function_v2(database, entry.name, entry.arguments, flags, registration, &invoke,
                                   nullptr, nullptr, destroy);
    };
    for (const FunctionEntry& entry : textFunctions()) {
        add(entry);
    }
    for (const FunctionEntry& entry : numberFunctions()) {
        add(entry);
    }
    const auto destroy = [](void* data) { delete static_cast<Registration*>(data); };
    // Not deterministic: it must be asked about every row.
    sqlite3_create_function_v2(database, "ts_changed", -1, SQLITE_UTF8 | SQLITE_INNOCUOUS,
                               new Registration{&state, nullptr}, &changed, nullptr, nullptr, destroy);
    auto* single = new Registration{&state, nullptr};
    sqlite3_create_function_v2(database, "ts_single", 1,
                               SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC, single, nullptr,
                               &stepSingle, &finishSingle, destroy);
}

} // namespace veldran::embedded
