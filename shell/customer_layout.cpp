#include "shell/customer_layout.h"

#include "platform/controls/form.h"
#include "platform/text.h"

namespace veldran::shell {
namespace {

void applyTo(controls::Control& control, const DataObject& settings) {
    settings.refuseKeysOtherThan({"didascalia", "suggerimento", "visibile", "abilitato", "ordine"});
    if (const auto caption = settings.text("didascalia")) {
        control.SetCaption(*caption);
    }
    if (const auto toolTip = settings.text("suggerimento")) {
        control.SetToolTipText(*toolTip);
    }
    if (const auto visible = settings.boolean("visibile")) {
        control.SetVisible(*visible);
    }
    if (const auto enabled = settings.boolean("abilitato")) {
        control.SetEnabled(*enabled);
    }
    if (const auto order = settings.integer("ordine")) {
        if (*order < 1) {
            settings.problem("ordine", "il posto nell'ordine di tabulazione parte da 1.");
        } else {
            control.SetTabIndex(*order);
        }
    }
}

void apply(controls::Form& form, const std::filesystem::path& path, Problems& problems) {
    const DataObject file = DataObject::fromFile(path, problems);
    for (const std::string& formName : file.keys()) {
        if (!equalsIgnoringAsciiCase(formName, form.Name())) {
            continue; // one file serves all screens of the customer
        }
        const auto settings = file.object(formName);
        if (!settings) {
            continue;
        }
        for (const std::string& name : settings->keys()) {
            controls::Control* control =
                equalsIgnoringAsciiCase(name, form.Name()) ? &form : form.FindControl(name);
            if (!control) {
                settings->problem(name, "la maschera non ha un controllo con questo nome.");
            } else if (const auto controlSettings = settings->object(name)) {
                applyTo(*control, *controlSettings);
            }
        }
    }
}

} // namespace

void CustomerLayout::ApplyLayout(controls::Form& form) {
    if (file_.empty()) {
        return;
    }
    services::ObjectModel model;
    navigator_.InitializeLayoutObjectModel.raise(model);
    Problems problems;
    try {
        apply(model.form ? *model.form : form, file_, problems);
    } catch (const DataFileError& error) {
        problems.emplace_back(error.what());
    }
    if (!problems.empty()) {
        report_("Il layout del cliente non è stato applicato per intero.\n\n" + joinProblems(problems));
    }
}

} // namespace veldran::shell
