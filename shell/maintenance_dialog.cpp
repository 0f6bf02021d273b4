#include "shell/maintenance_dialog.h"

#include "adapters/qt/text.h"
#include "platform/ado/errors.h"
#include "platform/text.h"
#include "shell/cost_kinds.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace veldran::shell {

using qt::fromQt;
using qt::toQt;

namespace {

constexpr int descriptionColumns = 52; ///< letters of the description seen at once

/// Text below the fields that breaks where the window ends.
QLabel* makeText(const QString& name, QWidget* parent) {
    auto* text = new QLabel(parent);
    text->setObjectName(name);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    return text;
}

/// What cannot be chosen from stays readable.
void freeze(QComboBox& choice) {
    choice.setEnabled(false);
    QPalette palette = choice.palette();
    for (const auto role : {QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Active, role));
    }
    choice.setPalette(palette);
}

/// What cannot be typed in looks like the window it stands in.
void freeze(QLineEdit& edit) {
    edit.setReadOnly(true);
    QPalette palette = edit.palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    edit.setPalette(palette);
}

} // namespace

MaintenanceDialog::MaintenanceDialog(CostCodes codes, services::CodeStructure structure,
                                     const std::string& typed, const UserRights& rights, QWidget* parent)
    : QDialog(parent), codes_(std::move(codes)), structure_(std::move(structure)) {
    setObjectName(QStringLiteral("gestioneCodice"));
    setWindowTitle(codes_.items() ? QStringLiteral("Gestione voci di spesa")
                                  : QStringLiteral("Gestione conti"));
    const std::string code = withRaisedCase(structure_.codeOf(typed));
    CostCode shown;
    shown.code = code;
    if (!code.empty()) {
        const auto found = codes_.find(code);
        foreign_ = found && found->company != commonToAll && found->company != codes_.company();
        if (found && !foreign_) {
            stored_ = found;
            shown = *found;
        }
    }
    build(toQt(codes_.chartName().value_or(std::string())));
    fill(shown);
    allow(rights);
    (code.empty() || foreign_ ? code_ : description_)->setFocus();
}

void MaintenanceDialog::build(const QString& chart) {
    auto* chartName = new QLabel(QString::number(codes_.chart()) + QStringLiteral(" – ") + chart, this);
    chartName->setTextFormat(Qt::PlainText);
    code_ = new QLineEdit(this);
    code_->setObjectName(QStringLiteral("codice"));
    code_->setAccessibleName(QStringLiteral("Codice"));
    description_ = new QLineEdit(this);
    description_->setObjectName(QStringLiteral("descrizione"));
    description_->setAccessibleName(QStringLiteral("Descrizione"));
    description_->setMaxLength(costDescriptionSize);
    description_->setMinimumWidth(description_->fontMetrics().averageCharWidth() * descriptionColumns);

    auto* form = new QFormLayout;
    fields_ = form;
    form->addRow(QStringLiteral("Piano:"), chartName);
    form->addRow(QStringLiteral("&Codice:"), code_);
    form->addRow(QStringLiteral("&Descrizione:"), description_);
    if (!codes_.items()) {
        addKinds(*form);
    }
    group_ = new QCheckBox(QStringLiteral("&Raggruppamento di altri codici"), this);
    group_->setObjectName(QStringLiteral("raggruppamento"));
    connect(group_, &QCheckBox::toggled, this, &MaintenanceDialog::followGroup);
    reserved_ = new QCheckBox(QStringLiteral("Ri&servato alla ditta %1").arg(toQt(codes_.company())), this);
    reserved_->setObjectName(QStringLiteral("riservato"));
    form->addRow(QString(), group_);
    form->addRow(QString(), reserved_);
    note_ = makeText(QStringLiteral("nota"), this);
    buildRefusal();

    auto* buttons = new QDialogButtonBox(this);
    ok_ = buttons->addButton(QStringLiteral("&OK"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("&Annulla"), QDialogButtonBox::RejectRole);
    ok_->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &MaintenanceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &MaintenanceDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(note_);
    layout->addWidget(refusalPanel_);
    layout->addStretch(1);
    layout->addWidget(buttons);
}

void MaintenanceDialog::buildRefusal() {
    refusalPanel_ = new QFrame(this);
    refusalPanel_->setFrameShape(QFrame::StyledPanel);
    auto* sign = new QLabel(refusalPanel_);
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(side));
    refusal_ = makeText(QStringLiteral("rifiuto"), refusalPanel_);
    auto* row = new QHBoxLayout(refusalPanel_);
    row->addWidget(sign, 0, Qt::AlignTop);
    row->addWidget(refusal_, 1);
    refusalPanel_->hide();
}

void MaintenanceDialog::addKinds(QFormLayout& form) {
    kind_ = new QComboBox(this);
    kind_->setObjectName(QStringLiteral("tipo"));
    kind_->setAccessibleName(QStringLiteral("Tipo"));
    for (const CostKind& kind : costKinds()) {
        kind_->addItem(QString::fromUtf8(kind.name), kind.bit);
    }
    kind_->setMaxVisibleItems(kind_->count());
    form.addRow(QStringLiteral("&Tipo:"), kind_);
}

void MaintenanceDialog::fill(const CostCode& code) {
    code_->setText(toQt(structure_.display(code.code)));
    description_->setText(toQt(code.description));
    group_->setChecked(code.group);
    reserved_->setChecked(code.company != commonToAll);
    if (kind_) {
        kind_->setCurrentIndex(kind_->findData(code.kind));
    }
    followGroup();
    if (stored_) { // what cannot change is said in the note
        freeze(*code_);
        fields_->setRowVisible(group_, false);
        fields_->setRowVisible(reserved_, false);
        if (kind_) {
            fields_->setRowVisible(kind_, !code.group);
        }
    }
}

void MaintenanceDialog::allow(const UserRights& rights) {
    const bool allowed = stored_ ? rights.update : rights.insert;
    QString text = note();
    if (!allowed) {
        text = stored_ ? text + QStringLiteral("\nManca il diritto di modificare i dati.")
                       : QStringLiteral("%1 non esiste e manca il diritto di inserire dati.").arg(noun());
    }
    note_->setText(text);
    if (allowed) {
        return;
    }
    ok_->setEnabled(false);
    freeze(*code_);
    freeze(*description_);
    if (kind_) {
        freeze(*kind_);
    }
    group_->setEnabled(false);
    reserved_->setEnabled(false);
}

QString MaintenanceDialog::noun() const {
    return codes_.items() ? QStringLiteral("La voce di spesa") : QStringLiteral("Il conto");
}

QString MaintenanceDialog::note() const {
    if (stored_) {
        const QString what = stored_->group
                                 ? QStringLiteral("%1 è un raggruppamento di altri codici.\n").arg(noun())
                                 : QString();
        return what + (stored_->company == commonToAll
                           ? QStringLiteral("Codice comune a tutte le ditte: le modifiche valgono per tutte.")
                           : QStringLiteral("Codice riservato alla ditta %1.").arg(toQt(stored_->company)));
    }
    if (foreign_) {
        return QStringLiteral(
            "Il codice è riservato a un'altra ditta: per crearne uno nuovo indicarne un altro.");
    }
    return code_->text().isEmpty() ? QStringLiteral("Indicare il codice da creare.")
                                   : QStringLiteral("%1 non esiste: con OK si crea.").arg(noun());
}

/// A group has no kind.
void MaintenanceDialog::followGroup() {
    if (!kind_) {
        return;
    }
    const bool group = group_->isChecked();
    if (group) {
        kind_->setCurrentIndex(-1);
    }
    kind_->setEnabled(!group);
    kind_->setPlaceholderText(group ? QStringLiteral("un raggruppamento non ha tipo")
                                    : QStringLiteral("tipo del conto"));
}

CostCode MaintenanceDialog::filledIn() const {
    CostCode code;
    code.code = stored_ ? stored_->code : withRaisedCase(structure_.codeOf(fromQt(code_->text())));
    code.description = fromQt(description_->text().trimmed());
    code.group = group_->isChecked();
    code.company = reserved_->isChecked() ? codes_.company() : commonToAll;
    code.kind = kind_ && !code.group ? kind_->currentData().toInt() : 0;
    return code;
}

QWidget* MaintenanceDialog::fieldOf(CostCodeObjection::Place place) const {
    switch (place) {
    case CostCodeObjection::Code:
        return code_;
    case CostCodeObjection::Kind:
        return kind_;
    case CostCodeObjection::Description:
        break;
    }
    return description_;
}

void MaintenanceDialog::refuse(const QString& text, QWidget* field) {
    refusal_->setText(text);
    refusalPanel_->show();
    resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
    QAccessibleEvent alert(refusal_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    if (field) {
        field->setFocus();
        if (auto* edit = qobject_cast<QLineEdit*>(field)) {
            edit->selectAll();
        }
    }
}

void MaintenanceDialog::accept() {
    const CostCode code = filledIn();
    try {
        if (const auto objection = objectionTo(code, !stored_, codes_, structure_)) {
            refuse(toQt(objection->text), fieldOf(objection->place));
            return;
        }
        if (!stored_) {
            codes_.insert(code);
        } else if (code != *stored_ && !codes_.update(*stored_, code)) {
            refuse(QStringLiteral("Nel frattempo un altro utente ha modificato o eliminato il codice: "
                                  "annulla e riapri la gestione."),
                   nullptr);
            return;
        }
    } catch (const ado::AdoError& error) {
        refuse(
            QStringLiteral("Il salvataggio non è riuscito; i dati restano in questa finestra.\nErrore %1: %2")
                .arg(error.first().Number)
                .arg(toQt(error.first().Description)),
            nullptr);
        return;
    }
    QDialog::accept();
}

} // namespace veldran::shell
