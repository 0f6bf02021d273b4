#include "platform/ado/batch_writer.h"
#include "platform/ado/cursor_view.h"
#include "platform/ado/raise.h"
#include "platform/ado/recordset.h"
#include "platform/ado/value_conversion.h"

#include <algorithm>

namespace veldran::ado {

Value Recordset::originalValue(std::size_t column) const {
    return reported([&] { return view_->rows().original(currentRow(), column); });
}

void Recordset::setFieldValue(std::size_t column, const Value& value) {
    reported([&] {
        const std::size_t row = currentRow();
        requireWritable();
        CursorRows& rows = view_->rows();
        if (rows.isRemoved(row)) {
            raise(adErrNoCurrentRecord);
        }
        const ColumnInfo& info = rows.columns()[column];
        const Carrier carrier{"campo", info.name};
        if (info.identity) {
            raise(adErrFeatureNotAvailable, "(" + carrier.text() + ": contatore)");
        }
        Value fitting = converted(value, {carrier, info.type, info.definedSize, info.precision, info.scale},
                                  Places::Rounded);
        if (isFixedText(info.type) && !fitting.isNull()) {
            fitting = paddedTo(info.definedSize, fitting.toText());
        }
        rows.edit(row, this);
        rows.setValue(row, column, std::move(fitting));
    });
}

bool Recordset::isEditing() const {
    return view_ && place_ == Place::On && view_->rows().editor(row_) == this;
}

bool Recordset::HasPendingRecords() const {
    return reported([&] {
        requireOpen();
        return view_->rows().hasPending();
    });
}

EditModeEnum Recordset::EditMode() const {
    return reported([&] {
        requireOpen();
        if (place_ == Place::On && view_->rows().isRemoved(row_)) {
            return adEditDelete;
        }
        if (!isEditing()) {
            return adEditNone;
        }
        return view_->rows().isBeingAdded(row_) ? adEditAdd : adEditInProgress;
    });
}

RecordStatusEnum Recordset::Status() const {
    return reported([&] {
        const std::size_t row = currentRow();
        return view_->rows().status(row);
    });
}

void Recordset::AddNew() {
    reported([&] {
        requireWritable();
        Update();
        placeBeforeAdd_ = place_;
        rowBeforeAdd_ = row_;
        standOn(view_->rows().add(this));
    });
}

void Recordset::Update() {
    reported([&] {
        requireOpen();
        if (!isEditing()) {
            return;
        }
        if (writesAtOnce()) {
            write({row_});
        } else {
            view_->rows().accept(row_);
        }
    });
}

void Recordset::CancelUpdate() {
    reported([&] {
        requireOpen();
        if (!isEditing()) {
            return;
        }
        const bool adding = view_->rows().isBeingAdded(row_);
        view_->rows().cancel(row_);
        if (adding) {
            place_ = placeBeforeAdd_;
            row_ = rowBeforeAdd_;
        }
    });
}

void Recordset::Delete(AffectEnum affect) {
    reported([&] {
        requireWritable();
        const CursorRows& rows = view_->rows();
        if (affect == adAffectCurrent) {
            if (rows.isRemoved(currentRow())) {
                raise(adErrNoCurrentRecord);
            }
            deleteRows({row_});
        } else if (affect == adAffectGroup) {
            std::vector<std::size_t> shown;
            for (std::size_t index = 0; index < view_->count(); ++index) {
                if (!rows.isRemoved(view_->at(index))) {
                    shown.push_back(view_->at(index));
                }
            }
            deleteRows(shown);
        } else {
            raise(adErrInvalidArgument, "(Delete " + std::to_string(affect) + ")");
        }
    });
}

void Recordset::deleteRows(const std::vector<std::size_t>& rows) {
    CancelUpdate();
    CursorRows& all = view_->rows();
    std::vector<std::size_t> known; // to the database; a row that was not, is gone with its removal
    for (const std::size_t row : rows) {
        all.remove(row);
        if (all.isPending(row)) {
            known.push_back(row);
        }
    }
    if (!writesAtOnce()) {
        return;
    }
    try {
        write(known);
    } catch (const AdoError&) {
        for (const std::size_t row : known) {
            all.restore(row);
        }
        throw;
    }
}

void Recordset::UpdateBatch(AffectEnum affect) {
    reported([&] {
        requireWritable();
        Update();
        if (!writesAtOnce()) {
            write(affected(affect, view_->rows().markedRows()));
        }
    });
}

void Recordset::CancelBatch(AffectEnum affect) {
    reported([&] {
        requireOpen();
        CursorRows& rows = view_->rows();
        CancelUpdate();
        for (const std::size_t row : affected(affect, rows.pendingRows())) {
            rows.restore(row);
        }
        if (place_ == Place::On && !view_->shows(row_)) {
            standOnFirst();
        }
    });
}

std::vector<std::size_t> Recordset::affected(AffectEnum affect,
                                             const std::vector<std::size_t>& candidates) const {
    std::vector<std::size_t> rows;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(rows), [&](std::size_t row) {
        switch (affect) {
        case adAffectCurrent:
            return row == currentRow();
        case adAffectGroup:
            return view_->shows(row);
        case adAffectAll:
        case adAffectAllChapters:
            break;
        }
        return true;
    });
    return rows;
}

void Recordset::write(const std::vector<std::size_t>& rows) {
    if (!connection_) {
        raise(adErrInvalidConnection);
    }
    connection_->guarded([&](Session& session) {
        const BatchWriter writer(view_->rows(), rows);
        const ExecuteSettings settings{connection_->CommandTimeout(), false};
        if (writer.isEmpty() || connection_->inTransaction()) {
            writer.write(session, settings);
            return;
        }
        session.begin();
        try {
            writer.write(session, settings);
            session.commit();
        } catch (const AdoError& failure) {
            Errors errors = failure.errors();
            try {
                session.rollback();
            } catch (const AdoError& unfinished) {
                errors.insert(errors.end(), unfinished.errors().begin(), unfinished.errors().end());
            }
            throw AdoError(std::move(errors));
        }
    });
    for (const std::size_t row : rows) {
        view_->rows().written(row);
    }
}

void Recordset::requireWritable() const {
    requireOpen();
    if (lockType_ == adLockReadOnly) {
        raise(adErrFeatureNotAvailable, "(recordset di sola lettura)");
    }
}

} // namespace veldran::ado
