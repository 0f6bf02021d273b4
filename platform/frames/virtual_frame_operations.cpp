#include "platform/controls/control.h"
#include "platform/frames/virtual_frame.h"
#include "platform/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace veldran::frames {

/// The frame passes through a state in which nothing else can be done, and is back in the old one unless it
/// arrived elsewhere: also when a handler throws.
class VirtualFrame::Passage {
public:
    Passage(VirtualFrame& frame, State through)
        : frame_(frame), back_(std::exchange(frame.state_, through)) {}
    ~Passage() { frame_.state_ = back_; }
    Passage(const Passage&) = delete;
    Passage& operator=(const Passage&) = delete;
    void leadsTo(State state) { back_ = state; }

private:
    VirtualFrame& frame_;
    State back_;
};

bool VirtualFrame::guarded(const std::function<bool()>& operation) {
    if (underWay_ || !rests()) {
        return false;
    }
    struct UnderWay {
        explicit UnderWay(bool& flag) : flag_(flag) { flag_ = true; }
        ~UnderWay() { flag_ = false; }
        UnderWay(const UnderWay&) = delete;
        UnderWay& operator=(const UnderWay&) = delete;
        bool& flag_;
    } const underWay(underWay_);
    return operation();
}

bool VirtualFrame::SetStatus(FrameStatus status) {
    if (status == statusAddingNew) {
        return AddNew();
    }
    if (status != statusBrowsing) {
        throw std::invalid_argument("status " + std::to_string(status) +
                                    " is not one that a form can ask for");
    }
    return guarded([this] {
        if (isChangedHere()) {
            return false;
        }
        const FrameStatus previous = Status();
        if (isAdding()) {
            recordset_->CancelUpdate();
        }
        arrive(State::Browsing, previous);
        return true;
    });
}

bool VirtualFrame::AddNew() {
    return guarded([this] {
        if (state_ == State::AddingEmpty && !isChangedHere()) {
            return true;
        }
        return settle() && addNew(nullptr);
    });
}

bool VirtualFrame::addNew(const FieldBinding* source) {
    bool cancel = false;
    BeforeAddNew.raise(cancel);
    if (cancel) {
        return false;
    }
    const FrameStatus previous = Status();
    const State before = state_;
    try {
        recordset_->AddNew();
    } catch (const ado::AdoError& failure) {
        fail(failure);
        AfterAddNew.raise(false);
        return false;
    }
    state_ = State::AddingEmpty;
    try {
        AfterAddNew.raise(true);
    } catch (...) {
        recordset_->CancelUpdate();
        state_ = before;
        throw;
    }
    arrive(state_, previous, source);
    return true;
}

bool VirtualFrame::Update() {
    return guarded([this] { return update(); });
}

bool VirtualFrame::update() {
    if (!takePendingTexts()) {
        return false;
    }
    if (!isAdding() && !IsRecordChanged()) {
        if (isEditing()) {
            arrive(State::Browsing, statusEditing); // what was typed is what the record holds
        }
        return true;
    }
    if (isAdding() && !isUnique()) {
        prompts_.tellDuplicate(nullSafeText(recordset_->Fields()[unique_].Value()));
        return false;
    }
    bool cancel = false;
    BeforeUpdate.raise(cancel);
    if (cancel) {
        display(nullptr, true);
        stateChanged();
        return false;
    }
    std::exception_ptr refused;
    {
        Passage saving(*this, State::Saving);
        try {
            recordset_->Update();
            saving.leadsTo(State::Browsing);
        } catch (const ado::AdoError&) {
            refused = std::current_exception();
        }
        if (!refused) {
            AfterUpdate.raise(true);
        }
    }
    if (refused) {
        failAgain(refused);
        AfterUpdate.raise(false);
        return false;
    }
    arrive(State::Browsing, statusSaving);
    return true;
}

bool VirtualFrame::Undo() {
    return guarded([this] { return undo(); });
}

bool VirtualFrame::undo() {
    if (state_ == State::Browsing && !IsRecordChanged()) {
        return true;
    }
    bool cancel = false;
    BeforeUndo.raise(cancel);
    if (cancel) {
        return false;
    }
    const FrameStatus previous = Status();
    try {
        recordset_->CancelUpdate();
    } catch (const ado::AdoError& failure) {
        fail(failure);
        AfterUndo.raise(false);
        return false;
    }
    state_ = State::Browsing;
    display(nullptr, false);
    AfterUndo.raise(true);
    arrive(State::Browsing, previous);
    return true;
}

bool VirtualFrame::Delete() {
    return guarded([this] {
        if (!hasRecord() || !prompts_.confirmDelete()) {
            return false;
        }
        return isAdding() ? undo() : deleteRecord();
    });
}

bool VirtualFrame::deleteRecord() {
    bool cancel = false;
    BeforeDelete.raise(cancel);
    if (cancel) {
        return false;
    }
    std::exception_ptr refused;
    {
        Passage deleting(*this, State::Deleting);
        try {
            const std::int64_t position = recordset_->AbsolutePosition();
            deleteFromRecordset();
            deleting.leadsTo(State::Browsing);
            standNear(position);
        } catch (const ado::AdoError&) {
            refused = std::current_exception();
        }
        if (!refused) {
            AfterDelete.raise(true);
        }
    }
    if (refused) {
        failAgain(refused);
        AfterDelete.raise(false);
        return false;
    }
    arrive(State::Browsing, statusDeleting);
    return true;
}

/// Deleting drops the edit of the record; when the database refuses, the user has his values back.
void VirtualFrame::deleteFromRecordset() {
    std::vector<Value> values;
    const bool edited = recordset_->EditMode() == ado::adEditInProgress;
    if (edited) {
        for (const ado::Field& field : recordset_->Fields()) {
            values.push_back(field.Value());
        }
    }
    try {
        recordset_->Delete();
    } catch (const ado::AdoError&) {
        for (std::size_t column = 0; column < values.size(); ++column) {
            ado::Field& field = recordset_->Fields()[column];
            if (!(field.Value() == values[column])) {
                field.Value(values[column]);
            }
        }
        throw;
    }
}

void VirtualFrame::standNear(std::int64_t position) {
    if (const std::int64_t count = recordset_->RecordCount(); count > 0) {
        recordset_->AbsolutePosition(std::clamp<std::int64_t>(position, 1, count));
    }
}

/// A save after which a handler still knows of something unsaved has not made the record ready to be left.
bool VirtualFrame::saveToLeave() {
    return update() && !IsRecordChanged();
}

bool VirtualFrame::settle() {
    if (!IsRecordChanged()) {
        if (state_ != State::Browsing) {
            const FrameStatus previous = Status();
            recordset_->CancelUpdate();
            arrive(State::Browsing, previous);
        }
        return true;
    }
    if (policy_ == LeavePolicy::Save) {
        return saveToLeave();
    }
    return leaveAsTheUserSays();
}

bool VirtualFrame::leaveAsTheUserSays() {
    switch (prompts_.askLeave()) {
    case FramePrompts::Leaving::Save:
        return saveToLeave();
    case FramePrompts::Leaving::Discard:
        return undo();
    case FramePrompts::Leaving::Stay:
        break;
    }
    return false;
}

bool VirtualFrame::MoveFirst() {
    return guarded([this] { return moveTo(1); });
}

bool VirtualFrame::MoveLast() {
    return guarded([this] { return HasRecords() && moveTo(recordset_->RecordCount()); });
}

bool VirtualFrame::MoveBy(std::int64_t records) {
    return guarded([&] {
        if (!hasRecord()) {
            return false;
        }
        const std::int64_t target = recordset_->AbsolutePosition() + records;
        return target >= 1 && target <= recordset_->RecordCount() && moveTo(target);
    });
}

bool VirtualFrame::moveTo(std::int64_t position) {
    if (!HasRecords()) {
        return false;
    }
    if (position == recordset_->AbsolutePosition()) {
        return true;
    }
    if (!settle()) {
        return false;
    }
    try {
        standNear(position); // a new record given up is not there any more
    } catch (const ado::AdoError& failure) {
        fail(failure);
        return false;
    }
    arrive(State::Browsing, statusBrowsing);
    return HasRecords();
}

bool VirtualFrame::MoveTo(const ado::Bookmark& record) {
    if (hasRecord() && recordset_->Bookmark() == record) {
        return true;
    }
    return guarded([&] {
        if (!settle()) {
            return false;
        }
        try {
            recordset_->Bookmark(record);
        } catch (const ado::AdoError& failure) {
            fail(failure);
            return false;
        }
        arrive(State::Browsing, statusBrowsing);
        return true;
    });
}

bool VirtualFrame::UpdateBatch() {
    return guarded([this] {
        if (isChangedHere() && !update()) {
            return false;
        }
        bool written = false;
        try {
            UpdateBatchAll.raise(written);
        } catch (...) {
            AttachData();
            throw;
        }
        AttachData(); // of a handler that did not get as far
        if (const State state = stateOfRecordset(); state != state_) {
            arrive(state, Status());
        } else {
            stateChanged();
        }
        return written;
    });
}

bool VirtualFrame::QueryUnload(bool mayPrompt, bool discardSilently, bool withDetail) {
    if (state_ == State::Closed) {
        return true;
    }
    return guarded([&] {
        if (!(withDetail ? IsRecordChanged() : isChangedHere())) {
            return true;
        }
        if (discardSilently) {
            return undo();
        }
        if (!mayPrompt) {
            return false;
        }
        return leaveAsTheUserSays();
    });
}

bool VirtualFrame::isUnique() const {
    if (unique_.empty()) {
        return true;
    }
    const std::string value = nullSafeText(recordset_->Fields()[unique_].Value());
    const ado::Bookmark own = recordset_->Bookmark();
    const auto others = recordset_->Clone(ado::adLockReadOnly);
    for (; !others->EndOfFile(); others->MoveNext()) {
        if (!(others->Bookmark() == own) &&
            compareBlindly(nullSafeText(others->Fields()[unique_].Value()), value) == 0) {
            return false;
        }
    }
    return true;
}

bool VirtualFrame::takePendingTexts() {
    for (std::size_t index = 0; index < bindings_.size(); ++index) {
        FieldBinding& binding = *bindings_[index];
        if (!binding.hasPendingText()) {
            continue;
        }
        bool taken = false;
        try {
            taken = binding.takePendingText();
        } catch (const std::exception& failure) {
            fail(failure);
            taken = !binding.hasPendingText();
        }
        if (!taken) {
            binding.control().SetFocus();
            return false;
        }
    }
    return true;
}

} // namespace veldran::frames
