#include "adapters/odbc/statement.h"

#include "adapters/odbc/result_reader.h"
#include "adapters/odbc/utf16.h"
#include "adapters/tsql/lexer.h"

#include <algorithm>

namespace veldran::odbc {

namespace {

/// A batch whose every statement fails ends all the same.
constexpr std::size_t mostErrors = 100;
/// A batch may say something of each row: the rest is not kept.
constexpr std::size_t mostMessages = 100;

/// Leaves the handle free for the next execution, whatever became of this one.
class OpenCursor {
public:
    explicit OpenCursor(SQLHSTMT statement) : statement_(statement) {}
    ~OpenCursor() { SQLFreeStmt(statement_, SQL_CLOSE); }
    OpenCursor(const OpenCursor&) = delete;
    OpenCursor& operator=(const OpenCursor&) = delete;

private:
    SQLHSTMT statement_;
};

std::vector<ado::ParameterInfo> declarationsOf(std::span<const ado::BoundParameter> parameters) {
    std::vector<ado::ParameterInfo> declarations;
    declarations.reserve(parameters.size());
    for (const ado::BoundParameter& parameter : parameters) {
        declarations.push_back(parameter.info);
    }
    return declarations;
}

void append(ado::Errors& errors, const ado::Errors& more) {
    errors.insert(errors.end(), more.begin(), more.end());
}

/// What comes with a success is no error, and has no number of one.
ado::Errors messagesOf(SQLHSTMT statement) {
    ado::Errors messages = recordsOf(SQL_HANDLE_STMT, statement);
    for (ado::Error& message : messages) {
        message.Number = message.NativeError;
    }
    return messages;
}

/// Drivers and servers have names of their own for what is known to ADO's users under one number.
void tellTimeLimit(ado::Errors& errors, int seconds) {
    constexpr std::string_view canceled = "57014"; // the standard's
    const auto found = std::find_if(errors.begin(), errors.end(), [](const ado::Error& error) {
        return error.SQLState == stateTimeLimitReached || error.SQLState == canceled;
    });
    if (found == errors.end()) {
        return;
    }
    std::rotate(errors.begin(), found, found + 1);
    errors.front().SQLState = stateTimeLimitReached;
    errors.front().Number = errorTimeLimitReached;
    errors.front().Description = "Il tempo concesso al comando (" + std::to_string(seconds) +
                                 " s) è scaduto. " + errors.front().Description;
}

} // namespace

void checkMarkers(std::string_view text, std::size_t parameters) {
    std::size_t markers = 0;
    try {
        const auto tokens = tsql::tokenize(text);
        markers = static_cast<std::size_t>(std::count_if(tokens.begin(), tokens.end(), [](const auto& token) {
            return token.kind == tsql::TokenKind::Marker;
        }));
    } catch (const tsql::SyntaxError&) {
        return;
    }
    const std::string given = std::to_string(parameters);
    const std::string wanted = std::to_string(markers);
    if (parameters > markers) {
        fail(8144, "07002",
             "Sono stati forniti " + given + " parametri, ma il testo ha " + wanted + " marcatori.");
    }
    if (parameters < markers) {
        fail(8178, "07002",
             "Il testo ha " + wanted + " marcatori, ma sono stati forniti " + given + " parametri.");
    }
}

Statement::Statement(Link& link, BaseTables& tables) : link_(link), tables_(tables) {
    link.requireUsable();
    handle_ = StatementHandle(SQL_HANDLE_DBC, link.handle());
}

Statement::~Statement() {
    constexpr std::uintptr_t farewellLimit = 5; // seconds; a driver may wait for them twice
    limitTime(handle_.get(), farewellLimit);
}

void Statement::prepare(std::string_view text, std::span<const ado::ParameterInfo> parameters) {
    checkMarkers(text, parameters.size());
    const std::u16string wideText = textToSend(text);
    if (!succeeded(SQLPrepareW(handle_.get(), wide(wideText), static_cast<SQLINTEGER>(wideText.size())))) {
        link_.fail(diagnosticsOf(SQL_HANDLE_STMT, handle_.get()));
    }
    buffers_ = std::make_unique<ParameterBuffers>(parameters);
    text_ = text;
}

void Statement::announce(std::string_view text, const ado::ExecuteSettings& settings) {
    tables_.prepare(settings.wantsRows ? text : std::string_view());
}

ado::StatementResult Statement::execute(std::span<const ado::BoundParameter> parameters,
                                        const ado::ExecuteSettings& settings) {
    link_.requireUsable();
    announce(text_, settings);
    bind(parameters);
    limitExecution(settings.commandTimeout);
    return results(SQLExecute(handle_.get()), settings);
}

ado::StatementResult Statement::executeDirect(std::string_view text,
                                              std::span<const ado::BoundParameter> parameters,
                                              const ado::ExecuteSettings& settings) {
    checkMarkers(text, parameters.size());
    const std::u16string wideText = textToSend(text);
    announce(text, settings);
    bind(parameters);
    limitExecution(settings.commandTimeout);
    ado::StatementResult result = results(
        SQLExecDirectW(handle_.get(), wide(wideText), static_cast<SQLINTEGER>(wideText.size())), settings);
    if (parameters.empty()) {
        tables_.executed(text);
    }
    return result;
}

void Statement::bind(std::span<const ado::BoundParameter> parameters) {
    if (!buffers_ || !buffers_->matches(parameters)) {
        SQLFreeStmt(handle_.get(), SQL_RESET_PARAMS);
        buffers_ = std::make_unique<ParameterBuffers>(declarationsOf(parameters));
    }
    buffers_->assign(parameters);
    buffers_->bindTo(handle_.get());
}

void Statement::limitExecution(int seconds) {
    if (seconds != timeLimit_) {
        limitTime(handle_.get(), static_cast<std::uintptr_t>(seconds));
        timeLimit_ = seconds;
    }
}

ado::StatementResult Statement::results(SQLRETURN code, const ado::ExecuteSettings& settings) {
    ado::StatementResult result;
    ado::Errors errors = drain(code, settings, result);
    if (!errors.empty()) {
        append(errors, result.messages);
        if (timeLimit_ > 0) {
            tellTimeLimit(errors, timeLimit_);
        }
        link_.fail(std::move(errors));
    }
    return result;
}

// An error ends one statement of a batch; what the server makes of the others comes behind it. So nothing is
// left unread, and every error is told.
ado::Errors Statement::drain(SQLRETURN code, const ado::ExecuteSettings& settings,
                             ado::StatementResult& result) {
    const OpenCursor cursor(handle_.get());
    ado::Errors errors;
    for (bool first = true; first || code != SQL_NO_DATA;
         first = false, code = SQLMoreResults(handle_.get())) {
        if (succeeded(code) || code == SQL_NO_DATA) {
            if (code == SQL_SUCCESS_WITH_INFO && result.messages.size() < mostMessages) {
                append(result.messages, messagesOf(handle_.get()));
            }
            try {
                takeResult(result, settings);
            } catch (const ado::AdoError& error) {
                append(errors, error.errors());
            }
        } else {
            append(errors, diagnosticsOf(SQL_HANDLE_STMT, handle_.get()));
        }
        if (code == SQL_INVALID_HANDLE || errors.size() > mostErrors ||
            std::any_of(errors.begin(), errors.end(), isConnectionFailure)) {
            break;
        }
    }
    return errors;
}

void Statement::takeResult(ado::StatementResult& result, const ado::ExecuteSettings& settings) {
    SQLSMALLINT columns = 0;
    SQLNumResultCols(handle_.get(), &columns);
    if (columns > 0) {
        if (settings.wantsRows && !result.rows) {
            ResultReader reader(handle_.get(), columns);
            tables_.describe(reader.columns());
            result.rows = reader.rows();
        }
        return;
    }
    SQLLEN rows = -1;
    if (succeeded(SQLRowCount(handle_.get(), &rows)) && rows >= 0) {
        result.rowsAffected = rows;
    }
}

} // namespace veldran::odbc
