#include "platform/ado/cursor_rows.h"

#include <algorithm>
#include <atomic>

namespace veldran::ado {

namespace {

std::uint64_t nextId() {
    static std::atomic<std::uint64_t> last =
        0; // recordsets may be opened on several threads, each on its own
    return ++last;
}

} // namespace

CursorRows::CursorRows(std::unique_ptr<RowSet> rows)
    : id_(nextId()), rows_(std::move(rows)), size_(rows_->rowCount()) {}

const CursorRows::State* CursorRows::stateOf(std::size_t row) const {
    if (states_.empty()) {
        return nullptr;
    }
    const auto found = states_.find(row);
    return found == states_.end() ? nullptr : &found->second;
}

bool CursorRows::isAmongRemoved(std::size_t row) const {
    const State* state = stateOf(row);
    return state != nullptr && state->deleted;
}

bool CursorRows::isPending(std::size_t row) const {
    const State* state = stateOf(row);
    return state != nullptr && !state->settled &&
           (state->added || state->deleted || state->modified || state->edit.has_value());
}

RecordStatusEnum CursorRows::status(std::size_t row) const {
    const State* state = stateOf(row);
    if (state == nullptr) {
        return adRecUnmodified;
    }
    if (state->deleted) {
        return adRecDeleted;
    }
    if (state->added) {
        return adRecNew;
    }
    return state->modified || state->edit ? adRecModified : adRecUnmodified;
}

Value CursorRows::original(std::size_t row, std::size_t column) const {
    const State* state = stateOf(row);
    if (state == nullptr || (!state->added && state->original.empty())) {
        return value(row, column);
    }
    return state->added ? Value() : state->original[column];
}

CursorRows::Editor CursorRows::editor(std::size_t row) const {
    const State* state = stateOf(row);
    return state != nullptr && state->edit ? state->edit->editor : nullptr;
}

bool CursorRows::isBeingAdded(std::size_t row) const {
    const State* state = stateOf(row);
    return state != nullptr && state->edit && state->edit->adding;
}

bool CursorRows::hasPending() const {
    return std::any_of(states_.begin(), states_.end(),
                       [this](const auto& touched) { return isPending(touched.first); });
}

std::vector<std::size_t> CursorRows::pendingRows() const {
    std::vector<std::size_t> rows;
    for (const auto& [row, state] : states_) {
        if (isPending(row)) {
            rows.push_back(row);
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::vector<std::size_t> CursorRows::markedRows() const {
    std::vector<std::size_t> rows = pendingRows();
    std::erase_if(rows, [&](std::size_t row) { return editor(row) != nullptr; });
    return rows;
}

std::size_t CursorRows::add(Editor editor) {
    const std::size_t row = size_;
    State state;
    state.added = true;
    state.edit = Edit{editor, {}, true, false};
    const auto noted = states_.emplace(row, std::move(state)).first;
    try {
        rows_->appendNulls();
    } catch (...) {
        states_.erase(noted); // a row without cells must not be pending
        throw;
    }
    ++size_;
    membershipChanged();
    return row;
}

void CursorRows::edit(std::size_t row, Editor editor) {
    State& state = states_[row];
    if (state.edit) {
        return;
    }
    Edit edit{editor, valuesOf(row), false, state.modified};
    if (!state.added && state.original.empty()) {
        state.original = edit.before; // before the edit begins: without them its changes would not be found
    }
    state.edit = std::move(edit);
    changed();
}

void CursorRows::setValue(std::size_t row, std::size_t column, Value value) {
    rows_->cell(row, column) = std::move(value);
    changed();
}

void CursorRows::accept(std::size_t row) {
    State& state = states_.at(row);
    state.edit.reset();
    state.modified = !state.added;
    changed();
}

void CursorRows::cancel(std::size_t row) {
    const auto found = states_.find(row);
    if (found == states_.end() || !found->second.edit) {
        return;
    }
    State& state = found->second;
    const Edit edit = std::move(*state.edit);
    state.edit.reset();
    if (edit.adding) {
        state.settled = true;
        setDeleted(state, true);
        return;
    }
    putBack(row, edit.before);
    if (!state.added && !edit.wasModified) {
        states_.erase(row);
    }
    changed();
}

void CursorRows::remove(std::size_t row) {
    cancel(row);
    State& state = states_[row];
    if (state.deleted) {
        return;
    }
    state.settled = state.added;
    setDeleted(state, true);
}

void CursorRows::written(std::size_t row) {
    State& state = states_.at(row);
    if (state.deleted) {
        state.settled = true;
        state.original.clear();
    } else {
        states_.erase(row);
    }
    changed();
}

void CursorRows::restore(std::size_t row) {
    State& state = states_.at(row);
    if (state.added) {
        state.edit.reset();
        state.settled = true;
        setDeleted(state, true);
        return;
    }
    if (!state.original.empty()) {
        putBack(row, std::move(state.original));
    }
    setDeleted(state, false);
    states_.erase(row);
}

std::vector<Value> CursorRows::valuesOf(std::size_t row) const {
    std::vector<Value> values;
    values.reserve(columns().size());
    for (std::size_t column = 0; column < columns().size(); ++column) {
        values.push_back(value(row, column));
    }
    return values;
}

void CursorRows::putBack(std::size_t row, std::vector<Value> values) {
    for (std::size_t column = 0; column < values.size(); ++column) {
        rows_->cell(row, column) = std::move(values[column]);
    }
}

void CursorRows::setDeleted(State& state, bool deleted) {
    if (state.deleted != deleted) {
        state.deleted = deleted;
        removed_ = deleted ? removed_ + 1 : removed_ - 1;
        membershipChanged();
    } else {
        changed();
    }
}

} // namespace veldran::ado
