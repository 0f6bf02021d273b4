#include "platform/ado/cursor_view.h"

#include <algorithm>

namespace veldran::ado {

void CursorView::showAll() {
    pending_ = false;
    condition_.reset();
    seen_ = 0;
}

void CursorView::showPending() {
    showAll();
    pending_ = true;
}

void CursorView::showMatching(std::unique_ptr<FilterExpression> condition) {
    showAll();
    condition_ = std::move(condition);
}

std::size_t CursorView::count() const {
    return isWhole() ? rows_->size() : shown().size();
}

std::size_t CursorView::at(std::size_t index) const {
    return isWhole() ? index : shown()[index];
}

bool CursorView::shows(std::size_t row) const {
    if (pending_) {
        return rows_->isPending(row);
    }
    return !rows_->isRemoved(row) &&
           (!condition_ || condition_->matches([&](std::size_t column) -> const Value& {
               return rows_->value(row, column);
           }));
}

std::size_t CursorView::indexNotBefore(std::size_t row) const {
    if (isWhole()) {
        return std::min(row, rows_->size());
    }
    const auto& rows = shown();
    return static_cast<std::size_t>(std::lower_bound(rows.begin(), rows.end(), row) - rows.begin());
}

const std::vector<std::size_t>& CursorView::shown() const {
    // Values decide only where there is a filter: walking and editing an unfiltered set must not rebuild the
    // list.
    const std::uint64_t current = pending_ || condition_ ? rows_->version() : rows_->membershipVersion();
    if (seen_ != current) {
        shown_.clear();
        for (std::size_t row = 0; row < rows_->size(); ++row) {
            if (shows(row)) {
                shown_.push_back(row);
            }
        }
        seen_ = current;
    }
    return shown_;
}

} // namespace veldran::ado
