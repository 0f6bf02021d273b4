#include "platform/controls/data_grid.h"
#include "platform/frames/virtual_frame.h"

#include <algorithm>
#include <utility>

namespace veldran::frames {

void VirtualFrame::Bind(controls::FrameNavigator& navigator) {
    navigator_ = std::make_unique<NavigatorBinding>(*this, navigator, prompts_.noun());
    updateNavigator();
}

void VirtualFrame::Bind(controls::DataGrid& grid) {
    grid_ = &grid;
    kept_.push_back(grid.RowChosen.subscribe(
        [this](const ado::Bookmark& row, bool& cancel) { cancel = cancel || !MoveTo(row); }));
    displayGrid();
}

void VirtualFrame::Bind(controls::LookupField& field, std::string column, controls::Label* description) {
    bindings_.push_back(bindingOf(*this, field, std::move(column), description));
}

void VirtualFrame::Bind(controls::ComboBox& combo, std::string column) {
    bindings_.push_back(bindingOf(*this, combo, std::move(column)));
}

void VirtualFrame::Bind(controls::NumericField& field, std::string column) {
    bindings_.push_back(bindingOf(*this, field, std::move(column)));
}

void VirtualFrame::Follow(VirtualFrame& detail) {
    kept_.push_back(detail.StateChanged.subscribe([this] { updateNavigator(); }));
}

bool VirtualFrame::userTypes(FieldBinding& binding) {
    switch (state_) {
    case State::Editing:
    case State::Adding:
        return true;
    case State::AddingEmpty:
        state_ = State::Adding;
        stateChanged();
        return true;
    case State::Browsing:
        break;
    case State::Closed:
    case State::Detached:
    case State::Deleting:
    case State::Saving:
        return false;
    }
    if (hasRecord()) {
        state_ = State::Editing;
        ChangeStatus.raise(statusEditing, statusBrowsing);
        stateChanged();
        return true;
    }
    if (!isOpen() || !guarded([&] { return addNew(&binding); })) {
        display(nullptr, false);
        return false;
    }
    return userTypes(binding);
}

bool VirtualFrame::userSets(FieldBinding& binding, const Value& value) {
    if (state_ == State::Closed || state_ == State::Detached) {
        return true; // the control stands alone
    }
    if (!userTypes(binding)) {
        return false;
    }
    ado::Field& field = recordset_->Fields()[binding.column()];
    const Value stored = field.Value();
    const bool same = stored == value || (stored.asText() != nullptr && !value.isNull() &&
                                          withoutTrailingBlanks(*stored.asText()) == value.toText());
    if (same) {
        return true;
    }
    try {
        field.Value(value);
    } catch (const ado::AdoError& refusal) {
        prompts_.tellRefusedValue(binding.text(), binding.control().AccessibleName(), refusal.what());
        return false;
    }
    if (grid_ != nullptr) {
        grid_->RefreshRow(recordset_->Bookmark());
    }
    stateChanged();
    return true;
}

void VirtualFrame::userTypedNoNumber(FieldBinding& binding, const std::string& text) {
    prompts_.tellNotANumber(text, binding.control().AccessibleName());
}

void VirtualFrame::arrive(State state, FrameStatus previous, const FieldBinding* except) {
    state_ = state;
    display(except, false);
    ChangeStatus.raise(Status(), previous);
    stateChanged();
}

void VirtualFrame::display(const FieldBinding* except, bool keepTyped) {
    const bool record = hasRecord();
    for (std::size_t index = 0; index < bindings_.size(); ++index) {
        FieldBinding& binding = *bindings_[index];
        if (&binding == except || (keepTyped && binding.hasPendingText())) {
            continue;
        }
        try {
            binding.show(record ? recordset_->Fields()[binding.column()].Value() : Value());
        } catch (const std::exception& failure) {
            fail(failure);
        }
    }
    displayGrid();
}

void VirtualFrame::displayGrid() {
    if (grid_ == nullptr || state_ == State::Detached) {
        return;
    }
    grid_->SetDataSource(isOpen() ? recordset_.get() : nullptr);
    if (hasRecord()) {
        grid_->ShowCurrent(recordset_->Bookmark());
    } else {
        grid_->ShowNoCurrent();
    }
}

void VirtualFrame::stateChanged() {
    updateNavigator();
    StateChanged.raise();
}

void VirtualFrame::updateNavigator() {
    if (!navigator_) {
        return;
    }
    NavigatorState shown;
    shown.open = rests() && isOpen();
    if (shown.open) {
        shown.writable = recordset_->LockType() != ado::adLockReadOnly;
        shown.adding = isAdding();
        shown.count = recordset_->RecordCount();
        shown.position = std::max<std::int64_t>(recordset_->AbsolutePosition(), 0);
        shown.changed = IsRecordChanged();
    }
    navigator_->show(shown);
}

} // namespace veldran::frames
