#pragma once

#include "platform/controls/form.h"
#include "platform/services/global_object.h"
#include "platform/services/navigator.h"
#include "tests/support/journal.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The host's services without a desktop: each does what its contract says and records that it was asked.
namespace veldran::test {

/// \throws std::runtime_error unless `failure` is empty.
void failWith(const std::string& failure);

/// Shows forms in no window at all. A form that has unloaded is let go of at the next turn of the host, as a
/// window system does, never from inside the form's own event.
class HeadlessWindows final : public services::WindowService {
public:
    explicit HeadlessWindows(SharedJournal journal) : journal_(std::move(journal)) {}

    void ShowForm(std::shared_ptr<controls::Form> form, bool modal, std::intptr_t parent) override;
    void DoEvents() override;

    /// Forms being shown, oldest first.
    const std::vector<std::shared_ptr<controls::Form>>& forms() const { return forms_; }
    /// The form shown last; nullptr when none is.
    controls::Form* current() const { return forms_.empty() ? nullptr : forms_.back().get(); }

    struct Showing {
        bool modal = false;
        std::intptr_t parent = 0;
        controls::FormWindowState state = controls::windowNormal;
        std::string caption;
    };
    const std::vector<Showing>& showings() const { return showings_; }
    /// What the user does while a modal form stands; it has to end with the form unloaded.
    std::function<void(controls::Form&)> whileModal;
    /// What the user does while pending messages run, once.
    std::function<void()> whileEvents;
    /// Called with a form that is about to be shown; may throw, as a window system in trouble does.
    std::function<void(controls::Form&)> beforeShowing;

private:
    void settle();

    SharedJournal journal_;
    std::vector<std::shared_ptr<controls::Form>> forms_; // shared with the component
    std::vector<std::shared_ptr<controls::Form>> leaving_;
    std::vector<std::pair<controls::Form*, Subscription>> unloads_;
    std::vector<Showing> showings_;
};

/// Remembers every pointer that was set.
class ScreenRecorder final : public services::Screen {
public:
    int GetMousePointer() const override { return pointer_; }
    void SetMousePointer(int pointer) override;
    int TwipsPerPixelX() const override { return 15; }
    int TwipsPerPixelY() const override { return 12; }

    std::vector<int> pointers; ///< every value set, in order

private:
    int pointer_ = services::mouseDefault;
};

class ThesaurusFake final : public services::Thesaurus {
public:
    std::optional<std::string> Entry(std::int32_t number) const override;
    std::optional<std::string> ControlCaption(const std::string& form,
                                              const std::string& control) const override;

    std::map<std::int32_t, std::string> entries;
    std::map<std::string, std::string> captions; ///< by control name
    std::string failure;                         ///< what both calls fail with; "" for none
};

/// A lookup service that knows the codes it was given.
class LookupFake final : public services::LookupService {
public:
    std::optional<std::string> Decode(const services::LookupRequest& request) override;
    std::optional<services::LookupChoice> Choose(const services::LookupRequest& request) override;
    void Maintain(const services::LookupRequest& request) override;
    services::CodeFormatter NewCodeFormatter(const std::shared_ptr<ado::Connection>& connection,
                                             std::int32_t pdc) override;

    std::map<std::string, std::string> descriptions; ///< by code
    std::optional<services::LookupChoice> choice;    ///< what the user picks from the list
    std::optional<ado::Error> failure;               ///< what both calls fail with while it is set
    bool keepsRequests = true;                       ///< without, nothing is added to the lists below
    std::vector<services::LookupRequest> decodes;
    std::vector<services::LookupRequest> lists;
    std::vector<services::LookupRequest> maintained;
    std::map<std::int32_t, services::CodeStructure> structures; ///< by chart, of the formatters it makes

private:
    void keep(std::vector<services::LookupRequest>& list, const services::LookupRequest& request) const;
    void failWhenTold() const;
};

class NavigatorFake final : public services::Navigator {
public:
    explicit NavigatorFake(SharedJournal journal) : journal_(std::move(journal)) {}
    void SetStatus(std::int16_t status) override;
    std::shared_ptr<services::ScriptObject> Script() const override;
    void SetScript(std::shared_ptr<services::ScriptObject> script) override;
    void ScreenClosing() override;

    std::vector<std::int16_t> statuses;
    mutable std::string nextScriptFailure; ///< what the next `Script` fails with; "" for none
    int closings = 0;
    std::string closingFailure; ///< what `ScreenClosing` fails with; "" for none

private:
    SharedJournal journal_;
    std::shared_ptr<services::ScriptObject> script_; // shared with the form
};

/// An editing frame of the host as seen from outside: an object with a "Status".
class FrameFake final : public services::Object {
public:
    explicit FrameFake(std::int16_t initial) : status(initial) {}
    Value GetProperty(std::string_view name) const override;
    std::int16_t status;
};

class AnalyticParametersFake final : public services::AnalyticParameters {
public:
    explicit AnalyticParametersFake(Value initial) : value(std::move(initial)) {}
    Value GetValue() const override { return value; }
    Value value;
};

} // namespace veldran::test
