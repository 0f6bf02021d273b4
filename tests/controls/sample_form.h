#pragma once

#include "platform/controls/container.h"
#include "platform/controls/form.h"
#include "platform/controls/simple_controls.h"

#include <string>
#include <vector>

namespace veldran::controls {

/// A form with a button of its own, a layout with a button and a group inside it with another.
struct SampleForm : Form {
    SampleForm() : Form("FRM_SAMPLE") {}

    Layout layout{*this, "LAY_AREA"};
    GroupBox group{layout, "GRB_GROUP"};
    Button plain{*this, "CMD_PLAIN"};
    Button inLayout{layout, "CMD_INLAYOUT"};
    Button inGroup{group, "CMD_INGROUP"};
};

/// Writes down the focus events of controls in the order in which they happen.
class FocusLog {
public:
    void follow(Control& control) {
        kept_.push_back(
            control.GotFocus.subscribe([this, &control] { lines.push_back("+" + control.Name()); }));
        kept_.push_back(
            control.LostFocus.subscribe([this, &control] { lines.push_back("-" + control.Name()); }));
    }
    void follow(Form& form) {
        kept_.push_back(form.FocusMoved.subscribe([this](Control* control) {
            lines.push_back(">" + (control != nullptr ? control->Name() : ""));
        }));
    }

    std::vector<std::string> lines;

private:
    std::vector<Subscription> kept_;
};

} // namespace veldran::controls
