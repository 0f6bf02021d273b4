#include "shell/navigator_bar.h"

#include "adapters/qt/navigator_icons.h"
#include "adapters/qt/text.h"
#include "platform/controls/frame_navigator.h"
#include "shell/toolbar_icons.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QSignalBlocker>
#include <array>

namespace veldran::shell {

using qt::toQt;

namespace {

namespace keys = controls::navigatorKeys;

struct ButtonDesign {
    NavigatorButton index;
    QIcon icon;
    const char* text;
    const char* toolTip;
    bool startsGroup;
};

std::array<ButtonDesign, 11> design() {
    using qt::navigatorIcon;
    return {{
        {buttonFirst, navigatorIcon(keys::primo), "Primo", "Primo record", true},
        {buttonPrevious, navigatorIcon(keys::precedente), "Precedente", "Record precedente", false},
        {buttonNext, navigatorIcon(keys::successivo), "Successivo", "Record successivo", false},
        {buttonLast, navigatorIcon(keys::ultimo), "Ultimo", "Ultimo record", false},
        {buttonNew, navigatorIcon(keys::nuovo), "Nuovo", "Nuovo record", true},
        {buttonConfirm, navigatorIcon(keys::conferma), "Conferma", "Conferma le modifiche", false},
        {buttonUndo, navigatorIcon(keys::annulla), "Annulla", "Annulla le modifiche", false},
        {buttonDelete, navigatorIcon(keys::elimina), "Elimina", "Elimina il record", false},
        {buttonExport, toolbarIcon(ToolbarIcon::Export), "Esporta", "Esporta verso il foglio di calcolo",
         true},
        {buttonPrintCard, toolbarIcon(ToolbarIcon::PrintCard), "Stampa scheda", "Stampa la scheda", false},
        {buttonCloseScreen, toolbarIcon(ToolbarIcon::CloseScreen), "Chiudi", "Chiudi la maschera (Ctrl+F4)",
         true},
    }};
}

} // namespace

NavigatorBar::NavigatorBar(QWidget* parent)
    : QToolBar(QStringLiteral("Navigatore"), parent), companies_(new QComboBox(this)) {
    setObjectName(QStringLiteral("navigatore"));
    setMovable(false);
    auto* label = new QLabel(QStringLiteral(" &Ditta: "), this);
    label->setBuddy(companies_);
    companies_->setObjectName(QStringLiteral("ditta"));
    companies_->setAccessibleName(QStringLiteral("Ditta corrente"));
    companies_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    addWidget(label);
    addWidget(companies_);
    connect(companies_, &QComboBox::activated, this, [this](int index) {
        if (onCompanyChosen) {
            onCompanyChosen(index);
        }
    });
    for (const ButtonDesign& one : design()) {
        if (one.startsGroup) {
            addSeparator();
        }
        QAction* action = addAction(one.icon, toQt(one.text));
        action->setToolTip(toQt(one.toolTip));
        action->setObjectName(QStringLiteral("pulsante%1").arg(one.index));
        actions_[one.index] = action;
        connect(action, &QAction::triggered, this, [this, index = one.index] {
            if (onButton) {
                onButton(index);
            }
        });
    }
    showState(false, std::nullopt);
}

void NavigatorBar::setCompanies(const std::vector<std::string>& names, int current) {
    const QSignalBlocker quiet(companies_);
    companies_->clear();
    for (const std::string& name : names) {
        companies_->addItem(toQt(name));
    }
    companies_->setCurrentIndex(current);
    companies_->setEnabled(!names.empty());
}

void NavigatorBar::showState(bool active, std::optional<std::int16_t> status) {
    const bool browsing = active && status == 0;
    const bool changing = active && status && *status != 0;
    for (const NavigatorButton index :
         {buttonFirst, buttonPrevious, buttonNext, buttonLast, buttonNew, buttonDelete}) {
        actions_[index]->setEnabled(browsing);
    }
    for (const NavigatorButton index : {buttonConfirm, buttonUndo}) {
        actions_[index]->setEnabled(changing);
    }
    for (const NavigatorButton index : {buttonExport, buttonPrintCard, buttonCloseScreen}) {
        actions_[index]->setEnabled(active);
    }
}

} // namespace veldran::shell
