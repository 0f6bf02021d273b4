#pragma once

#include "platform/ado/recordset.h"
#include "platform/frames/field_binding.h"
#include "platform/frames/frame_events.h"
#include "platform/frames/frame_prompts.h"
#include "platform/frames/frame_status.h"
#include "platform/frames/navigator_binding.h"
#include "platform/services/object.h"

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldran::controls {
class DataGrid;
} // namespace veldran::controls

namespace veldran::frames {

/// An editing controller over a record set: moves between its records, shows the current one in bound
/// controls, in a grid and in a navigator, follows what the user changes, and raises events around each
/// change. Its states and events are drawn in docs/frames.md; they are one machine, and so this is one header
/// longer than others.
///
/// An operation answers true when it is done, false when it was refused (by the user, by a handler, because
/// another operation of this frame is under way) or has failed in the database. A failure is told by
/// `Failed`, or to the user where nobody listens; record and controls then keep the user's values. A frame is
/// not destroyed from inside its own events; what it is given outlives it.
class VirtualFrame final : public services::Object, public FrameEvents, private BindingOwner {
public:
    /// \param noun of a record with its article ("la correlazione"), for prompts.
    VirtualFrame(services::MessageService& messages, std::string noun, LeavePolicy policy = LeavePolicy::Ask);
    ~VirtualFrame() override;
    VirtualFrame(const VirtualFrame&) = delete;
    VirtualFrame& operator=(const VirtualFrame&) = delete;

    /// \name What the frame is bound to, before or after `Open`.
    ///@{
    void Bind(controls::FrameNavigator& navigator);
    void Bind(controls::DataGrid& grid);
    /// `description` shows what the field's lookup service says of each record's code; it is bound to no
    /// column.
    void Bind(controls::LookupField& field, std::string column, controls::Label* description = nullptr);
    void Bind(controls::ComboBox& combo, std::string column);
    void Bind(controls::NumericField& field, std::string column);
    /// No two records may hold the same value in `column`: a new record that would is refused, with a
    /// message, before `BeforeUpdate`. Texts are compared blind to case and trailing blanks.
    void Unique(std::string column) { unique_ = std::move(column); }
    /// Changes of `detail` are followed: this frame's navigator is brought up to date after each.
    void Follow(VirtualFrame& detail);
    ///@}

    /// \name The record set. These throw AdoError when the database refuses; everything is then as it was.
    /// `Requery` and `Reopen` give up what was not saved, without asking, and stand on the first record; they
    /// throw std::logic_error while an operation of this frame is under way. Each leaves a new object in
    /// `Recordset`.
    ///@{
    /// Opens a text; nothing is announced before `SetStatus`.
    void Open(const std::string& source, std::shared_ptr<ado::Connection> connection, ado::LockTypeEnum lock);
    const std::string& Source() const { return source_; }
    /// What the next `Requery` opens; nothing is read now.
    void SetSource(std::string source) { source_ = std::move(source); }
    /// Empty while the frame is closed. Shared with whoever walks its rows.
    const std::shared_ptr<ado::Recordset>& Recordset() const { return recordset_; }
    void Reopen(const std::string& source);
    void Requery() { Reopen(source_); }
    /// Shows the record set as it is, after its values or its position were changed by code: what the user is
    /// typing stays.
    void Refresh();
    /// Gives up what was not saved, closes and disconnects the record set. Nothing happens while closed.
    void Close();
    /// Lets go of the grid and of the record set's position while code renumbers and writes all rows;
    /// `AttachData` takes them up again, on the same record if it is still there.
    void DetachData();
    void AttachData();
    ///@}

    /// \name What the frame is doing.
    ///@{
    FrameStatus Status() const;
    /// "Status" as a number. \throws std::out_of_range for another name.
    Value GetProperty(std::string_view name) const override;
    bool HasRecords() const; ///< a pending new one counts
    /// The frame's own test (an edit in progress, a new record with content, something being typed) or what
    /// handlers of `RecordChanged` say.
    bool IsRecordChanged() const;
    /// Some record was changed or deleted here and is not in the table yet.
    bool HasChangedRow() const;
    /// Some record was added here and is not in the table yet; a new one without content does not count.
    bool HasNewRow() const;
    bool HasPendingRow() const; ///< an edit or a new record is in progress
    ///@}

    /// \name Operations. Those that leave the record settle its changes first, as the policy says; a new
    /// record without content is given up without a question.
    ///@{
    /// Browsing shows the current record anew, and is refused while it is changed; adding new is `AddNew`.
    /// \throws std::invalid_argument for another status.
    bool SetStatus(FrameStatus status);
    /// On a new record without content it stays there.
    bool AddNew();
    /// Saves. Without any change it does nothing and is done.
    bool Update();
    /// Gives up the changes; from a new record it goes back to the one that was current.
    bool Undo();
    /// Asks, deletes, and goes to the next record, or to the last one, or browses without a record.
    bool Delete();
    bool MoveFirst();
    bool MovePrevious() { return MoveBy(-1); }
    bool MoveNext() { return MoveBy(1); }
    bool MoveLast();
    bool MoveBy(std::int64_t records); ///< false when there is no such record
    bool MoveTo(const ado::Bookmark& record);
    /// Has all rows written: saves the current one if the user typed into it, then raises `UpdateBatchAll`.
    /// \return what its handler answered; false without going on when the current row was refused.
    bool UpdateBatch();
    /// May the frame be left? True when nothing is changed. Otherwise `discardSilently` undoes without a
    /// question, `mayPrompt` asks the user; with neither, the answer is false. `withDetail`: changes that
    /// only handlers of `RecordChanged` know of count as well.
    bool QueryUnload(bool mayPrompt, bool discardSilently, bool withDetail);
    ///@}

private:
    enum class State { Closed, Browsing, Editing, AddingEmpty, Adding, Deleting, Saving, Detached };
    class Passage;
    static FrameStatus statusOf(State state);

    bool userTypes(FieldBinding& binding) override;
    bool userSets(FieldBinding& binding, const Value& value) override;
    void userTypedNoNumber(FieldBinding& binding, const std::string& text) override;

    bool guarded(const std::function<bool()>& operation);
    bool addNew(const FieldBinding* source);
    bool update();
    bool undo();
    bool deleteRecord();
    bool settle();
    bool saveToLeave();
    bool leaveAsTheUserSays();
    bool moveTo(std::int64_t position);
    bool takePendingTexts();
    bool isUnique() const;
    void deleteFromRecordset();
    void standNear(std::int64_t position);

    bool isOpen() const;
    bool hasRecord() const;
    bool isChangedHere() const;
    bool isEditing() const { return state_ == State::Editing; }
    bool isAdding() const { return state_ == State::Adding || state_ == State::AddingEmpty; }
    bool rests() const { return state_ == State::Browsing || isEditing() || isAdding(); }
    State stateOfRecordset() const;
    int pendingRows(bool added) const;

    void take(std::shared_ptr<ado::Recordset> recordset, const std::string& source);
    void arrive(State state, FrameStatus previous, const FieldBinding* except = nullptr);
    void display(const FieldBinding* except, bool keepTyped);
    void displayGrid();
    void stateChanged();
    void updateNavigator();
    void fail(const std::exception& failure);
    void failAgain(const std::exception_ptr& failure);

    FramePrompts prompts_;
    LeavePolicy policy_;
    State state_ = State::Closed;
    State detachedFrom_ = State::Closed;
    bool underWay_ = false; ///< a public operation; another one of this frame is refused meanwhile
    std::shared_ptr<ado::Recordset> recordset_; // shared with the form's routines
    std::string source_;
    std::string unique_; ///< column; "" when nothing has to be unique
    std::optional<ado::Bookmark> detachedAt_;
    std::unique_ptr<NavigatorBinding> navigator_;
    controls::DataGrid* grid_ = nullptr;
    std::vector<std::unique_ptr<FieldBinding>> bindings_;
    std::vector<Subscription> kept_;
};

} // namespace veldran::frames
