#include "platform/ado/connection.h"

#include "platform/ado/raise.h"
#include "platform/ado/recordset.h"
#include "platform/ado/statement_text.h"

namespace veldran::ado {

std::shared_ptr<Connection> Connection::create(std::shared_ptr<Driver> driver) {
    return std::shared_ptr<Connection>(new Connection(std::move(driver)));
}

Connection::Connection(std::shared_ptr<Driver> driver) : driver_(std::move(driver)) {}

Connection::~Connection() {
    endSession();
}

void Connection::ConnectionString(std::string connectionString) {
    if (session_) {
        raise(adErrObjectOpen);
    }
    connectionString_ = std::move(connectionString);
}

void Connection::CommandTimeout(int seconds) {
    if (seconds < 0) {
        raise(adErrInvalidArgument, "(CommandTimeout " + std::to_string(seconds) + ")");
    }
    commandTimeout_ = seconds;
}

void Connection::Open(const std::string& connectionString, const std::string& user,
                      const std::string& password, int options) {
    recorded([&] {
        if (session_) {
            raise(adErrObjectOpen);
        }
        if (options != adConnectUnspecified) {
            raise(adErrFeatureNotAvailable, "(apertura asincrona)");
        }
        if (!connectionString.empty()) {
            connectionString_ = connectionString;
        }
        session_ = driver_->open(connectionString_, user, password);
        ++sessionNumber_;
    });
}

void Connection::Close() {
    recorded([&] {
        if (!session_) {
            raise(adErrObjectClosed);
        }
        if (inTransaction_) {
            raise(adErrInTransaction);
        }
        endSession();
    });
}

void Connection::endSession() noexcept {
    for (const auto& prepared : prepared_) {
        if (const auto slot = prepared.lock()) {
            slot->statement.reset();
        }
    }
    prepared_.clear();
    session_.reset();
    inTransaction_ = false;
}

std::shared_ptr<Recordset> Connection::Execute(const std::string& text, std::int64_t* recordsAffected,
                                               int options) {
    const bool wantsRows = options == adOptionUnspecified || (options & adExecuteNoRecords) == 0;
    const CommandTypeEnum type = commandTypeIn(options);
    StatementResult result = guarded([&](Session& session) {
        return executeSource(session, type, text, {commandTimeout_, wantsRows});
    });
    if (recordsAffected != nullptr) {
        *recordsAffected = result.rowsAffected;
    }
    if (!wantsRows) {
        return nullptr;
    }
    auto recordset = std::make_shared<Recordset>();
    recordset->adopt(std::move(result), shared_from_this(), text, type);
    return recordset;
}

int Connection::BeginTrans() {
    guarded([&](Session& session) {
        if (inTransaction_) {
            raise(adErrTransactionExists);
        }
        session.begin();
        inTransaction_ = true;
    });
    return 1;
}

void Connection::CommitTrans() {
    guarded([&](Session& session) {
        if (!inTransaction_) {
            raise(adErrNoTransaction);
        }
        session.commit();
        inTransaction_ = false;
    });
}

void Connection::RollbackTrans() {
    ado::Errors cause = errors_;
    guarded([&](Session& session) {
        if (!inTransaction_) {
            raise(adErrNoTransaction);
        }
        inTransaction_ = false;
        session.rollback();
    });
    errors_ = std::move(cause);
}

Session& Connection::openSession() {
    if (!session_) {
        raise(adErrInvalidConnection);
    }
    return *session_;
}

std::shared_ptr<PreparedSlot> Connection::prepare(Session& session, std::string_view text,
                                                  const std::vector<ParameterInfo>& parameters) {
    std::erase_if(prepared_, [](const auto& slot) { return slot.expired(); });
    auto slot = std::make_shared<PreparedSlot>(PreparedSlot{session.prepare(text, parameters)});
    prepared_.push_back(slot);
    return slot;
}

} // namespace veldran::ado
