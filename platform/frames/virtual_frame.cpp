#include "platform/frames/virtual_frame.h"

#include "platform/controls/data_grid.h"
#include "platform/text.h"

#include <stdexcept>
#include <utility>

namespace veldran::frames {

VirtualFrame::VirtualFrame(services::MessageService& messages, std::string noun, LeavePolicy policy)
    : prompts_(messages, std::move(noun)), policy_(policy) {}

VirtualFrame::~VirtualFrame() {
    state_ = State::Closed;
    updateNavigator();
    if (grid_ != nullptr) {
        grid_->SetDataSource(nullptr);
    }
}

FrameStatus VirtualFrame::statusOf(State state) {
    switch (state) {
    case State::Editing:
        return statusEditing;
    case State::AddingEmpty:
    case State::Adding:
        return statusAddingNew;
    case State::Deleting:
        return statusDeleting;
    case State::Saving:
        return statusSaving;
    case State::Closed:
    case State::Browsing:
    case State::Detached:
        break;
    }
    return statusBrowsing;
}

FrameStatus VirtualFrame::Status() const {
    return statusOf(state_ == State::Detached ? detachedFrom_ : state_);
}

Value VirtualFrame::GetProperty(std::string_view name) const {
    if (equalsIgnoringAsciiCase(name, "Status")) {
        return Value(static_cast<std::int16_t>(Status()));
    }
    return Object::GetProperty(name);
}

void VirtualFrame::Open(const std::string& source, std::shared_ptr<ado::Connection> connection,
                        ado::LockTypeEnum lock) {
    if (state_ != State::Closed) {
        throw std::logic_error("the frame is open already");
    }
    auto opened = std::make_shared<ado::Recordset>();
    opened->Open(source, std::move(connection), ado::adOpenStatic, lock, ado::adCmdText);
    take(std::move(opened), source);
    display(nullptr, false);
    stateChanged();
}

void VirtualFrame::Reopen(const std::string& source) {
    if (!rests() || underWay_) {
        throw std::logic_error("the frame's record set cannot be opened again now");
    }
    auto opened = std::make_shared<ado::Recordset>();
    opened->Open(source, recordset_->ActiveConnection(), ado::adOpenStatic, recordset_->LockType(),
                 ado::adCmdText);
    const FrameStatus previous = Status();
    take(std::move(opened), source);
    arrive(State::Browsing, previous);
}

void VirtualFrame::take(std::shared_ptr<ado::Recordset> recordset, const std::string& source) {
    recordset_ = std::move(recordset);
    source_ = source;
    state_ = State::Browsing;
}

void VirtualFrame::Close() {
    if (state_ == State::Closed) {
        return;
    }
    state_ = State::Closed;
    if (recordset_->State() == ado::adStateOpen) {
        recordset_->CancelUpdate();
        recordset_->Close();
    }
    recordset_->ActiveConnection(nullptr);
    recordset_.reset();
    display(nullptr, false);
    stateChanged();
}

void VirtualFrame::Refresh() {
    if (!rests()) {
        return;
    }
    const FrameStatus previous = Status();
    const State state = stateOfRecordset();
    const bool another = statusOf(state) != previous;
    state_ = state;
    display(nullptr, true);
    if (another) {
        ChangeStatus.raise(Status(), previous);
    }
    stateChanged();
}

void VirtualFrame::DetachData() {
    if (!rests()) {
        return;
    }
    detachedAt_.reset();
    if (hasRecord()) {
        detachedAt_ = recordset_->Bookmark();
    }
    detachedFrom_ = state_;
    state_ = State::Detached;
    if (grid_ != nullptr) {
        grid_->SetDataSource(nullptr);
    }
}

void VirtualFrame::AttachData() {
    if (state_ != State::Detached) {
        return;
    }
    const FrameStatus previous = Status();
    state_ = detachedFrom_;
    if (isOpen()) {
        try {
            if (detachedAt_) {
                recordset_->Bookmark(*detachedAt_);
            }
        } catch (const ado::AdoError&) {
            detachedAt_.reset(); // the record went while the rows were written
        }
        if (!detachedAt_) {
            standNear(1);
        }
    }
    arrive(stateOfRecordset(), previous);
}

VirtualFrame::State VirtualFrame::stateOfRecordset() const {
    if (!isOpen()) {
        return State::Browsing;
    }
    switch (recordset_->EditMode()) {
    case ado::adEditAdd:
        return state_ == State::Adding ? State::Adding : State::AddingEmpty;
    case ado::adEditInProgress:
        return State::Editing;
    case ado::adEditNone:
    case ado::adEditDelete:
        break;
    }
    return isEditing() && isChangedHere() ? State::Editing : State::Browsing;
}

bool VirtualFrame::isOpen() const {
    return recordset_ != nullptr && recordset_->State() == ado::adStateOpen;
}

bool VirtualFrame::hasRecord() const {
    return isOpen() && recordset_->AbsolutePosition() > 0;
}

bool VirtualFrame::HasRecords() const {
    return isOpen() && recordset_->RecordCount() > 0;
}

bool VirtualFrame::isChangedHere() const {
    for (const auto& binding : bindings_) {
        if (binding->hasPendingText()) {
            return true;
        }
    }
    return state_ == State::Adding || (isOpen() && recordset_->EditMode() == ado::adEditInProgress);
}

bool VirtualFrame::IsRecordChanged() const {
    bool changed = isChangedHere();
    RecordChanged.raise(changed);
    return changed;
}

int VirtualFrame::pendingRows(bool added) const {
    if (!isOpen() || !recordset_->HasPendingRecords()) {
        return 0; // asked after every move, and mostly there are none
    }
    int count = 0;
    const auto rows = recordset_->Clone(ado::adLockReadOnly);
    rows->Filter(ado::adFilterPendingRecords);
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const bool isNew = rows->Status() == ado::adRecNew;
        const bool isEmpty =
            state_ == State::AddingEmpty && hasRecord() && rows->Bookmark() == recordset_->Bookmark();
        count += isNew == added && !isEmpty ? 1 : 0;
    }
    return count;
}

bool VirtualFrame::HasChangedRow() const {
    return pendingRows(false) > 0 || (isEditing() && isChangedHere());
}

bool VirtualFrame::HasNewRow() const {
    return state_ == State::Adding || pendingRows(true) > 0;
}

bool VirtualFrame::HasPendingRow() const {
    if (!isOpen()) {
        return false;
    }
    const ado::EditModeEnum mode = recordset_->EditMode();
    return mode == ado::adEditInProgress || mode == ado::adEditAdd;
}

void VirtualFrame::fail(const std::exception& failure) {
    if (Failed.hasHandlers()) {
        Failed.raise(failure);
    } else {
        prompts_.tellFailure(failure);
    }
}

/// Of an exception whose handler has ended.
void VirtualFrame::failAgain(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& again) {
        fail(again);
    }
}

} // namespace veldran::frames
