#include "adapters/odbc/link.h"

#include "adapters/odbc/utf16.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace veldran::odbc {

namespace {

constexpr int errorTransactionUndone = 3998;
constexpr int errorRollbackWithoutTransaction = 3903;
constexpr const char* stateLost = "08S01";
constexpr const char* lostSentence = "La connessione con il server è stata interrotta.";

bool hasState(const ado::Error& error, std::initializer_list<std::string_view> classes) {
    return std::any_of(classes.begin(), classes.end(),
                       [&](std::string_view begin) { return error.SQLState.starts_with(begin); });
}

/// A server that answers, and be it by a refusal (08004 when it is the database that is not there), says what
/// it refuses; what never reached it is the network's (08, HYT) or the driver manager's (IM) to tell.
bool isAnswerOfTheServer(const ado::Error& error) {
    return error.NativeError != 0 &&
           (hasState(error, {"08004"}) || !hasState(error, {"08", "HYT", "IM", "01"}));
}

/// Every result is read to its end: a driver that has one open all the same does not know its connection's
/// state any more, and refuses whatever comes.
bool isOutOfStep(const ado::Error& error) {
    return hasState(error, {"24000"});
}

/// What a driver says of a failed sign-in tells little to who is not its developer.
ado::Errors explained(ado::Errors errors, const ConnectionTarget& target) {
    if (!target.password.empty()) {
        for (ado::Error& error : errors) {
            error.Description = replaceAll(std::move(error.Description), target.password, "***");
        }
    }
    const auto refusal = std::find_if(errors.begin(), errors.end(), isAnswerOfTheServer);
    const std::string place = target.server.empty() ? std::string() : " " + target.server;
    std::string sentence = "Il server" + place + " non può essere raggiunto. ";
    if (refusal != errors.end()) {
        std::rotate(errors.begin(), refusal, refusal + 1);
        sentence = "Il server" + place + " rifiuta l'accesso: controllare utente, password e database. ";
    } else if (hasState(errors.front(), {"IM", "01"})) {
        sentence = "Il driver ODBC non può essere usato. ";
    }
    errors.front().Description = sentence + errors.front().Description;
    return errors;
}

} // namespace

Link::Link(const EnvironmentHandle& environment, const ConnectionTarget& target)
    : connection_(SQL_HANDLE_ENV, environment.get()) {
    connect(target);
    try {
        settle();
    } catch (const ado::AdoError&) {
        SQLDisconnect(handle());
        throw;
    }
}

Link::~Link() {
    if (!connected_) {
        return;
    }
    try {
        rollback();
    } catch (const ado::AdoError&) {
        // The server undoes what a closed connection leaves open.
    }
    SQLDisconnect(handle());
}

void Link::connect(const ConnectionTarget& target) {
    SQLSetConnectAttrW(handle(), SQL_ATTR_LOGIN_TIMEOUT,
                       attribute(static_cast<std::uintptr_t>(target.loginTimeout)), SQL_IS_UINTEGER);
    if (target.packetSize > 0) {
        SQLSetConnectAttrW(handle(), SQL_ATTR_PACKET_SIZE,
                           attribute(static_cast<std::uintptr_t>(target.packetSize)), SQL_IS_UINTEGER);
    }
    const std::u16string text = textToSend(target.text);
    SQLSMALLINT length = 0;
    const SQLRETURN code =
        SQLDriverConnectW(handle(), nullptr, wide(text), static_cast<SQLSMALLINT>(text.size()), nullptr, 0,
                          &length, SQL_DRIVER_NOPROMPT);
    if (!succeeded(code)) {
        throw ado::AdoError(explained(diagnosticsOf(SQL_HANDLE_DBC, handle()), target));
    }
    connected_ = true;
    std::array<char16_t, 128> name{};
    SQLSMALLINT bytes = 0;
    if (succeeded(SQLGetInfoW(handle(), SQL_DBMS_NAME, name.data(), sizeof name, &bytes))) {
        transactSql_ = withFoldedCase(toUtf8(name.data())).find("sql server") != std::string::npos;
    }
}

// A server may be told to begin every session without row counts, on which the callers rely.
void Link::settle() {
    if (transactSql_) {
        run(u"SET NOCOUNT OFF", ownTimeLimit);
    }
}

void Link::requireUsable() const {
    if (state_ == State::Lost) {
        odbc::fail(errorUnspecified, stateLost,
                   std::string(lostSentence) + " Chiudere la maschera e aprirla di nuovo.");
    }
    if (state_ == State::Undone) {
        odbc::fail(errorTransactionUndone, "40000",
                   "Il server ha annullato la transazione: nessuna sua modifica è stata registrata.");
    }
}

void Link::fail(ado::Errors errors) {
    const auto tellsOfLoss = [](const ado::Error& error) {
        return isConnectionFailure(error) || isOutOfStep(error);
    };
    if (state_ != State::Lost && (std::any_of(errors.begin(), errors.end(), tellsOfLoss) || isDead())) {
        state_ = State::Lost;
        if (errors.front().SQLState == stateTimeLimitReached) { // the cause stays in front
            errors.push_back(makeError(errorUnspecified, stateLost, lostSentence));
        } else {
            errors.front().SQLState = stateLost; // whatever the driver calls it
            errors.front().Description = std::string(lostSentence) + " " + errors.front().Description;
        }
    } else if (state_ == State::InTransaction && transactSql_ && transactionIsGone()) {
        state_ = State::Undone;
    }
    throw ado::AdoError(std::move(errors));
}

void Link::begin() {
    requireUsable();
    run(u"BEGIN TRANSACTION");
    state_ = State::InTransaction;
}

void Link::commit() {
    requireUsable();
    run(u"COMMIT TRANSACTION");
    state_ = State::Idle;
}

void Link::rollback() {
    if (state_ == State::InTransaction) {
        state_ = State::Idle;
        try {
            run(u"ROLLBACK TRANSACTION");
        } catch (const ado::AdoError& error) {
            if (error.first().NativeError != errorRollbackWithoutTransaction && !isLost()) {
                throw;
            }
        }
    } else if (state_ == State::Undone) {
        state_ = State::Idle;
    }
}

void Link::run(std::u16string_view text, std::uintptr_t seconds) {
    const StatementHandle statement(SQL_HANDLE_DBC, handle());
    limitTime(statement.get(), seconds);
    const std::u16string copy(text);
    const SQLRETURN code = SQLExecDirectW(statement.get(), wide(copy), static_cast<SQLINTEGER>(copy.size()));
    if (!succeeded(code) && code != SQL_NO_DATA) {
        fail(diagnosticsOf(SQL_HANDLE_STMT, statement.get()));
    }
}

bool Link::isDead() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    return succeeded(
               SQLGetConnectAttrW(handle(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr)) &&
           dead == SQL_CD_TRUE;
}

bool Link::transactionIsGone() {
    const StatementHandle statement(SQL_HANDLE_DBC, handle());
    limitTime(statement.get(), ownTimeLimit);
    const std::u16string text = u"SELECT @@TRANCOUNT";
    SQLINTEGER count = 1;
    SQLLEN indicator = 0;
    const bool read =
        succeeded(SQLExecDirectW(statement.get(), wide(text), static_cast<SQLINTEGER>(text.size()))) &&
        succeeded(SQLFetch(statement.get())) &&
        succeeded(SQLGetData(statement.get(), 1, SQL_C_SLONG, &count, 0, &indicator));
    return read && count == 0;
}

} // namespace veldran::odbc
