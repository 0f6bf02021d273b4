#include "shell/script_control.h"

#include "adapters/qt/text.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/tree_view.h"

#include <QJSEngine>
#include <algorithm>

namespace veldran::shell {

using qt::toQt;

using namespace controls;

ScriptedForm::ScriptedForm(Form& form)
    : form_(&form), unloading_(form.Unloading.subscribe([this] { form_ = nullptr; })) {}

ScriptControl::ScriptControl(const ScriptedForm& form, Control& control, QObject* parent)
    : QObject(parent), form_(form), control_(control), name_(toQt(control.Name())) {}

void ScriptControl::fail(const QString& what) const {
    if (QJSEngine* engine = qjsEngine(this)) {
        engine->throwError(QJSValue::TypeError, what);
    }
}

Control* ScriptControl::control() const {
    if (!form_.form()) {
        fail(QStringLiteral("la maschera di %1 è stata chiusa").arg(name_));
        return nullptr;
    }
    return &control_;
}

template<class Kind>
Kind* ScriptControl::as(const char* property) const {
    Control* any = control();
    auto* wanted = dynamic_cast<Kind*>(any);
    if (any && !wanted) {
        fail(QStringLiteral("il controllo %1 non ha la proprietà %2").arg(name_, QLatin1String(property)));
    }
    return wanted;
}

QString ScriptControl::caption() const {
    const Control* c = control();
    return c ? toQt(c->Caption()) : QString();
}

void ScriptControl::setCaption(const QString& caption) {
    if (Control* c = control()) {
        c->SetCaption(caption.toStdString());
    }
}

QString ScriptControl::toolTip() const {
    const Control* c = control();
    return c ? toQt(c->ToolTipText()) : QString();
}

void ScriptControl::setToolTip(const QString& toolTip) {
    if (Control* c = control()) {
        c->SetToolTipText(toolTip.toStdString());
    }
}

bool ScriptControl::isEnabled() const {
    const Control* c = control();
    return c && c->Enabled();
}

void ScriptControl::setEnabled(bool enabled) {
    if (Control* c = control()) {
        c->SetEnabled(enabled);
    }
}

bool ScriptControl::isVisible() const {
    const Control* c = control();
    return c && c->Visible();
}

void ScriptControl::setVisible(bool visible) {
    if (Control* c = control()) {
        c->SetVisible(visible);
    }
}

int ScriptControl::tabIndex() const {
    const Control* c = control();
    return c ? c->TabIndex() : 0;
}

void ScriptControl::setTabIndex(int index) {
    if (Control* c = control()) {
        c->SetTabIndex(index);
    }
}

bool ScriptControl::isFocused() const {
    const Control* c = control();
    return c && c->HasFocus();
}

void ScriptControl::setFocus() {
    if (Control* c = control()) {
        c->SetFocus();
    }
}

QString ScriptControl::text() const {
    const Control* c = control();
    if (const auto* field = dynamic_cast<const LookupField*>(c)) {
        return toQt(field->Text());
    }
    if (const auto* combo = dynamic_cast<const ComboBox*>(c)) {
        return toQt(combo->Text());
    }
    if (const auto* number = dynamic_cast<const NumericField*>(c)) {
        return toQt(number->GetValue().toText());
    }
    if (const auto* tree = dynamic_cast<const TreeView*>(c)) {
        return tree->SelectedItem() ? toQt(tree->SelectedItem()->Text()) : QString();
    }
    if (const auto* strip = dynamic_cast<const TabStrip*>(c)) {
        return strip->SelectedTab() ? toQt(strip->SelectedTab()->caption) : QString();
    }
    return c ? toQt(c->Caption()) : QString();
}

void ScriptControl::setText(const QString& text) {
    Control* c = control();
    if (auto* field = dynamic_cast<LookupField*>(c)) {
        field->SetText(text.toStdString());
    } else if (auto* combo = dynamic_cast<ComboBox*>(c)) {
        const auto& items = combo->Items();
        const auto found = std::find_if(items.begin(), items.end(), [&](const ComboBox::Item& item) {
            return item.text == text.toStdString();
        });
        if (found == items.end()) {
            fail(QStringLiteral("il controllo %1 non offre la scelta «%2»").arg(name_, text));
        } else {
            combo->SetListIndex(static_cast<int>(found - items.begin()));
        }
    } else if (dynamic_cast<NumericField*>(c)) {
        setValue(text);
    } else if (dynamic_cast<TreeView*>(c) || dynamic_cast<TabStrip*>(c)) {
        fail(QStringLiteral("la proprietà text del controllo %1 si può solo leggere").arg(name_));
    } else if (c) {
        c->SetCaption(text.toStdString());
    }
}

QVariant ScriptControl::value() const {
    const auto* number = as<NumericField>("value");
    return number && !number->GetValue().isNull() ? QVariant(number->GetValue().toDouble()) : QVariant();
}

void ScriptControl::setValue(const QVariant& value) {
    auto* number = as<NumericField>("value");
    if (!number) {
        return;
    }
    bool isNumber = false;
    const double parsed = value.toDouble(&isNumber);
    if (isNumber) {
        number->SetValue(Value(parsed));
    } else if (!value.isValid() || value.isNull() || value.toString().trimmed().isEmpty()) {
        number->SetValue(Value());
    } else {
        fail(QStringLiteral("«%1» non è un numero per il controllo %2").arg(value.toString(), name_));
    }
}

int ScriptControl::selectedIndex() const {
    const Control* c = control();
    if (const auto* combo = dynamic_cast<const ComboBox*>(c)) {
        return combo->ListIndex();
    }
    const auto* strip = as<TabStrip>("selectedIndex");
    return strip ? strip->SelectedIndex() : 0;
}

void ScriptControl::setSelectedIndex(int index) {
    Control* c = control();
    if (auto* combo = dynamic_cast<ComboBox*>(c)) {
        if (index < -1 || index >= static_cast<int>(combo->Items().size())) {
            fail(QStringLiteral("il controllo %1 non ha una voce numero %2").arg(name_).arg(index));
        } else {
            combo->SetListIndex(index);
        }
        return;
    }
    if (auto* strip = as<TabStrip>("selectedIndex")) {
        if (index < 1 || index > static_cast<int>(strip->Tabs().size())) {
            fail(QStringLiteral("il controllo %1 non ha una scheda numero %2").arg(name_).arg(index));
        } else {
            strip->Select(index);
        }
    }
}

QString ScriptControl::selectedKey() const {
    const auto* tree = as<TreeView>("selectedKey");
    return tree && tree->SelectedItem() ? toQt(tree->SelectedItem()->Key()) : QString();
}

bool ScriptControl::isSelectedChecked() const {
    const auto* tree = as<TreeView>("selectedChecked");
    return tree && tree->SelectedItem() && tree->SelectedItem()->Checked();
}

} // namespace veldran::shell
