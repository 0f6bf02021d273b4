#include "tests/support/host_fakes.h"

#include "platform/controls/data_grid.h"
#include "platform/text.h"

#include <algorithm>
#include <stdexcept>

namespace veldran::test {

void failWith(const std::string& failure) {
    if (!failure.empty()) {
        throw std::runtime_error(failure);
    }
}

void HeadlessWindows::ShowForm(std::shared_ptr<controls::Form> form, bool modal, std::intptr_t parent) {
    settle();
    if (beforeShowing) {
        beforeShowing(*form);
    }
    showings_.push_back({modal, parent, form->WindowState(), form->Caption()});
    journal_->push_back(modal ? "show modal" : "show");
    controls::Form* shown = form.get();
    forms_.push_back(std::move(form));
    unloads_.emplace_back(shown, shown->Unloaded.subscribe([this, shown] {
        const auto at = std::find_if(forms_.begin(), forms_.end(),
                                     [shown](const auto& candidate) { return candidate.get() == shown; });
        if (at != forms_.end()) {
            leaving_.push_back(std::move(*at));
            forms_.erase(at);
        }
        journal_->push_back("form unloaded");
    }));
    shown->Load();
    if (const auto* container = dynamic_cast<controls::MdiContainer*>(shown->FindControl("MDIActiveX1"))) {
        container->FormLoad.raise();
    }
    shown->Activate();
    if (modal && shown->IsLoaded()) {
        if (whileModal) {
            whileModal(*shown);
        }
        if (std::any_of(forms_.begin(), forms_.end(),
                        [shown](const auto& candidate) { return candidate.get() == shown; })) {
            throw std::logic_error("a modal form was left standing");
        }
    }
}

void HeadlessWindows::DoEvents() {
    journal_->push_back("events");
    settle(); // a form that is closed now leaves at the next turn
    if (const auto act = std::exchange(whileEvents, nullptr)) {
        act();
    }
}

void HeadlessWindows::settle() {
    for (const auto& form : leaving_) {
        std::erase_if(unloads_, [&form](const auto& entry) { return entry.first == form.get(); });
    }
    leaving_.clear();
}

void ScreenRecorder::SetMousePointer(int pointer) {
    pointer_ = pointer;
    pointers.push_back(pointer);
}

std::optional<std::string> ThesaurusFake::Entry(std::int32_t number) const {
    failWith(failure);
    const auto found = entries.find(number);
    return found == entries.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> ThesaurusFake::ControlCaption(const std::string&,
                                                         const std::string& control) const {
    failWith(failure);
    const auto found = captions.find(control);
    return found == captions.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::string> LookupFake::Decode(const services::LookupRequest& request) {
    keep(decodes, request);
    failWhenTold();
    const auto found = descriptions.find(request.code);
    return found == descriptions.end() ? std::nullopt : std::optional(found->second);
}

std::optional<services::LookupChoice> LookupFake::Choose(const services::LookupRequest& request) {
    keep(lists, request);
    failWhenTold();
    return choice;
}

void LookupFake::Maintain(const services::LookupRequest& request) {
    keep(maintained, request);
    failWhenTold();
}

services::CodeFormatter LookupFake::NewCodeFormatter(const std::shared_ptr<ado::Connection>&,
                                                     std::int32_t pdc) {
    failWhenTold();
    return services::CodeFormatter(structures[pdc]);
}

void LookupFake::keep(std::vector<services::LookupRequest>& list,
                      const services::LookupRequest& request) const {
    if (keepsRequests) {
        list.push_back(request);
    }
}

void LookupFake::failWhenTold() const {
    if (failure) {
        throw ado::AdoError(*failure);
    }
}

void NavigatorFake::SetStatus(std::int16_t status) {
    statuses.push_back(status);
    journal_->push_back("navigator status");
}

std::shared_ptr<services::ScriptObject> NavigatorFake::Script() const {
    failWith(std::exchange(nextScriptFailure, {}));
    return script_;
}

void NavigatorFake::SetScript(std::shared_ptr<services::ScriptObject> script) {
    script_ = std::move(script);
}

void NavigatorFake::ScreenClosing() {
    ++closings;
    journal_->push_back("navigator told");
    failWith(closingFailure);
}

Value FrameFake::GetProperty(std::string_view name) const {
    if (equalsIgnoringAsciiCase(name, "Status")) {
        return status;
    }
    return Object::GetProperty(name);
}

} // namespace veldran::test
