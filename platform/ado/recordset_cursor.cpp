#include "platform/ado/cursor_view.h"
#include "platform/ado/raise.h"
#include "platform/ado/recordset.h"

namespace veldran::ado {

bool Recordset::BOF() const {
    return reported([&] {
        requireOpen();
        return place_ == Place::Before || (place_ == Place::After && view_->count() == 0);
    });
}

bool Recordset::EndOfFile() const {
    return reported([&] {
        requireOpen();
        return place_ == Place::After || (place_ == Place::Before && view_->count() == 0);
    });
}

void Recordset::MoveFirst() {
    reported([&] {
        requireRows();
        Update();
        moveTo(0);
    });
}

void Recordset::MoveLast() {
    reported([&] {
        requireRows();
        Update();
        moveTo(static_cast<std::int64_t>(view_->count()) - 1);
    });
}

void Recordset::MoveNext() {
    Move(1);
}

void Recordset::MovePrevious() {
    Move(-1);
}

void Recordset::Move(std::int64_t records, std::optional<ado::Bookmark> start) {
    reported([&] {
        requireOpen();
        if (start) {
            Bookmark(*start);
        }
        if (place_ != Place::On) {
            requireRows();
        }
        if ((place_ == Place::After && records > 0) || (place_ == Place::Before && records < 0)) {
            raise(adErrNoCurrentRecord);
        }
        if (records != 0) {
            if (isEditing()) {
                Update();
            }
            moveBy(records);
        }
    });
}

void Recordset::moveBy(std::int64_t records) {
    const auto count = static_cast<std::int64_t>(view_->count());
    if (place_ == Place::Before) {
        moveTo(records - 1);
    } else if (place_ == Place::After) {
        moveTo(count + records);
    } else {
        // From a record that is no longer shown, the next one stands already where this one stood.
        const auto index = static_cast<std::int64_t>(view_->indexNotBefore(row_));
        moveTo(index + records - (records > 0 && !view_->shows(row_) ? 1 : 0));
    }
}

void Recordset::moveTo(std::int64_t index) {
    if (index < 0) {
        place_ = Place::Before;
    } else if (index >= static_cast<std::int64_t>(view_->count())) {
        place_ = Place::After;
    } else {
        standOn(view_->at(static_cast<std::size_t>(index)));
    }
}

void Recordset::standOnFirst() {
    moveTo(view_->count() == 0 ? -1 : 0);
}

void Recordset::standOn(std::size_t row) {
    place_ = Place::On;
    row_ = row;
}

std::int64_t Recordset::AbsolutePosition() const {
    return reported([&]() -> std::int64_t {
        requireOpen();
        if (place_ != Place::On) {
            return place_ == Place::Before || view_->count() == 0 ? adPosBOF : adPosEOF;
        }
        if (!view_->shows(row_)) {
            return adPosUnknown;
        }
        return static_cast<std::int64_t>(view_->indexNotBefore(row_)) + 1;
    });
}

void Recordset::AbsolutePosition(std::int64_t position) {
    reported([&] {
        requireRows();
        if (position < 1 || position > static_cast<std::int64_t>(view_->count())) {
            raise(adErrInvalidArgument, "(posizione " + std::to_string(position) + ")");
        }
        Update();
        moveTo(position - 1);
    });
}

std::int64_t Recordset::RecordCount() const {
    return reported([&] {
        requireOpen();
        return static_cast<std::int64_t>(view_->count());
    });
}

ado::Bookmark Recordset::Bookmark() const {
    return reported([&] {
        const std::size_t row = currentRow();
        return ado::Bookmark(view_->rows().id(), row);
    });
}

void Recordset::Bookmark(const ado::Bookmark& bookmark) {
    reported([&] {
        requireOpen();
        const CursorRows& rows = view_->rows();
        if (bookmark.rows_ != rows.id() || bookmark.row_ >= rows.size() || !view_->shows(bookmark.row_)) {
            raise(adErrInvalidArgument, "(segnalibro non valido)");
        }
        if (place_ != Place::On || row_ != bookmark.row_) {
            Update();
        }
        standOn(bookmark.row_);
    });
}

void Recordset::requireRows() const {
    requireOpen();
    if (view_->count() == 0) {
        raise(adErrNoCurrentRecord);
    }
}

} // namespace veldran::ado
