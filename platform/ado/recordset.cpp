#include "platform/ado/recordset.h"

#include "platform/ado/cursor_view.h"
#include "platform/ado/raise.h"
#include "platform/ado/statement_text.h"

#include <utility>

namespace veldran::ado {

Recordset::Recordset() = default;

Recordset::~Recordset() {
    dropRows();
}

void Recordset::dropRows() {
    if (isEditing()) {
        view_->rows().cancel(row_); // clones may live on: they see the record as it was
    }
    fields_.bind(*this, {});
    view_.reset();
    filter_ = adFilterNone;
    place_ = Place::Before;
}

void Recordset::Source(std::string text) {
    requireClosed();
    command_.reset();
    source_ = std::move(text);
}

void Recordset::ActiveConnection(std::shared_ptr<Connection> connection) {
    if (connection && connection->State() != adStateOpen) {
        raise(adErrInvalidConnection);
    }
    if (State() == adStateOpen) {
        session_ = connection ? connection->sessionNumber() : 0;
    } else {
        dropRows(); // rows whose connection was closed do not come back to life
    }
    connection_ = std::move(connection);
}

void Recordset::CursorType(CursorTypeEnum type) {
    requireClosed();
    cursorType_ = type;
}

void Recordset::LockType(LockTypeEnum type) {
    requireClosed();
    lockType_ = type;
}

void Recordset::CursorLocation(CursorLocationEnum location) {
    requireClosed();
    if (location != adUseClient) {
        raise(adErrFeatureNotAvailable, "(cursore sul server)");
    }
}

void Recordset::Open() {
    reported([&] {
        requireClosed();
        show(fetch().rows);
    });
}

void Recordset::Open(const std::string& source, std::shared_ptr<Connection> connection,
                     CursorTypeEnum cursorType, LockTypeEnum lockType, int options) {
    Source(source);
    ActiveConnection(std::move(connection));
    cursorType_ = cursorType == adOpenUnspecified ? cursorType_ : cursorType;
    lockType_ = lockType == adLockUnspecified ? lockType_ : lockType;
    sourceType_ = commandTypeIn(options);
    Open();
}

void Recordset::Open(std::shared_ptr<Command> source, CursorTypeEnum cursorType, LockTypeEnum lockType) {
    requireClosed();
    if (!source || !source->ActiveConnection()) {
        raise(adErrInvalidConnection);
    }
    source_ = source->CommandText();
    connection_ = source->ActiveConnection();
    command_ = std::move(source);
    cursorType_ = cursorType == adOpenUnspecified ? cursorType_ : cursorType;
    lockType_ = lockType == adLockUnspecified ? lockType_ : lockType;
    Open();
}

void Recordset::adopt(StatementResult result, std::shared_ptr<Command> command) {
    source_ = command->CommandText();
    connection_ = command->ActiveConnection();
    command_ = std::move(command);
    show(std::move(result.rows));
}

void Recordset::adopt(StatementResult result, std::shared_ptr<Connection> connection,
                      const std::string& source, CommandTypeEnum type) {
    source_ = source;
    sourceType_ = type;
    connection_ = std::move(connection);
    show(std::move(result.rows));
}

StatementResult Recordset::fetch() {
    if (command_) {
        return command_->run(true);
    }
    if (!connection_) {
        raise(adErrInvalidConnection);
    }
    if (source_.empty()) {
        raise(adErrInvalidArgument, "(recordset senza origine)");
    }
    return connection_->guarded([&](Session& session) {
        return executeSource(session, sourceType_, source_, {connection_->CommandTimeout(), true});
    });
}

void Recordset::show(std::unique_ptr<RowSet> rows) {
    dropRows();
    if (!rows) {
        return;
    }
    if (command_) {
        connection_ = command_->ActiveConnection();
    }
    view_ = std::make_unique<CursorView>(std::make_shared<CursorRows>(std::move(rows)));
    session_ = connection_->sessionNumber();
    cursorType_ = adOpenStatic;
    fields_.bind(*this, view_->rows().columns());
    standOnFirst();
}

void Recordset::Close() {
    reported([&] {
        requireOpen();
        if (isEditing()) {
            if (writesAtOnce()) {
                raise(adErrIllegalOperation, "(modifica in corso)");
            }
        }
        dropRows();
    });
}

ObjectStateEnum Recordset::State() const {
    const bool orphaned = connection_ && connection_->sessionNumber() != session_;
    return view_ && !orphaned ? adStateOpen : adStateClosed;
}

void Recordset::Requery() {
    reported([&] {
        requireOpen();
        if (isEditing()) {
            raise(adErrIllegalOperation, "(modifica in corso)");
        }
        if (!connection_) {
            raise(adErrInvalidConnection);
        }
        StatementResult result = fetch();
        const FilterValue filter = filter_;
        show(std::move(result.rows));
        if (view_) {
            applyFilter(filter);
        }
    });
}

std::shared_ptr<Recordset> Recordset::Clone(LockTypeEnum lockType) {
    return reported([&] {
        requireOpen();
        auto clone = std::make_shared<Recordset>();
        clone->source_ = source_;
        clone->connection_ = connection_;
        clone->command_ = command_;
        clone->cursorType_ = cursorType_;
        clone->lockType_ = lockType == adLockReadOnly ? adLockReadOnly : lockType_;
        clone->sourceType_ = sourceType_;
        clone->session_ = session_;
        clone->view_ = std::make_unique<CursorView>(view_->sharedRows());
        clone->fields_.bind(*clone, view_->rows().columns());
        clone->standOnFirst();
        return clone;
    });
}

void Recordset::Filter(const std::string& condition) {
    reported([&] {
        requireOpen();
        Update();
        applyFilter(condition.empty() ? FilterValue(adFilterNone) : FilterValue(condition));
    });
}

void Recordset::Filter(FilterGroupEnum group) {
    reported([&] {
        requireOpen();
        Update();
        applyFilter(group);
    });
}

void Recordset::applyFilter(const FilterValue& filter) {
    if (const auto* condition = std::get_if<std::string>(&filter)) {
        view_->showMatching(FilterExpression::parse(*condition, view_->rows().columns()));
    } else if (std::get<FilterGroupEnum>(filter) == adFilterPendingRecords) {
        view_->showPending();
    } else {
        view_->showAll();
    }
    filter_ = filter;
    standOnFirst();
}

ado::Fields& Recordset::Fields() {
    reported([&] { requireOpen(); });
    return fields_;
}

void Recordset::requireOpen() const {
    if (State() != adStateOpen) {
        raise(adErrObjectClosed);
    }
}

std::size_t Recordset::currentRow() const {
    requireOpen();
    if (place_ != Place::On) {
        raise(adErrNoCurrentRecord);
    }
    return row_;
}

// Asked for each field of each row: what it calls stands beside it.
const Value& Recordset::fieldValue(std::size_t column) const {
    return reported([&]() -> const Value& {
        const std::size_t row = currentRow();
        const CursorRows& rows = view_->rows();
        if (rows.isRemoved(row)) {
            raise(adErrNoCurrentRecord);
        }
        return rows.value(row, column);
    });
}

void Recordset::requireClosed() const {
    reported([&] {
        if (State() == adStateOpen) {
            raise(adErrObjectOpen);
        }
    });
}

} // namespace veldran::ado
