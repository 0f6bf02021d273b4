#include "shell/lookup_dialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

namespace veldran::shell {
namespace {

constexpr QSize openingSize(620, 480);
constexpr int codeMargin = 16; ///< on both sides of a code together, and between it and its description

QTableView* makeTable(LookupModel* model, QWidget* parent) {
    auto* table = new QTableView(parent);
    table->setObjectName(QStringLiteral("elenco"));
    table->setAccessibleName(QStringLiteral("Elenco dei codici"));
    table->setModel(model);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->verticalHeader()->hide();
    // One fixed height for all rows: measuring each of them would be felt on long lists.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setStretchLastSection(true);
    const int longest = table->fontMetrics().horizontalAdvance(model->longestDisplay());
    const int usual = table->fontMetrics().horizontalAdvance(QStringLiteral("00/00/00/00/00"));
    table->setColumnWidth(LookupModel::codeColumn, std::max(longest, usual) + codeMargin);
    return table;
}

} // namespace

LookupDialog::LookupDialog(std::vector<LookupRow> rows, const QString& title, const QString& openAt,
                           const QString& restriction, QWidget* parent)
    : QDialog(parent), model_(new LookupModel(std::move(rows), this)), code_(new QLineEdit(this)),
      words_(new QLineEdit(this)), table_(makeTable(model_, this)), count_(new QLabel(this)) {
    setObjectName(QStringLiteral("ricercaCodici"));
    setWindowTitle(title.isEmpty() ? QStringLiteral("Ricerca") : title);
    resize(openingSize);

    code_->setObjectName(QStringLiteral("filtroCodice"));
    code_->setPlaceholderText(QStringLiteral("inizio del codice"));
    words_->setObjectName(QStringLiteral("filtroDescrizione"));
    words_->setPlaceholderText(QStringLiteral("parole della descrizione, in qualsiasi ordine"));
    count_->setObjectName(QStringLiteral("conteggio"));
    for (QLineEdit* field : {code_, words_}) {
        field->setClearButtonEnabled(true);
        field->installEventFilter(this);
        connect(field, &QLineEdit::textChanged, this, &LookupDialog::applyFilter);
    }
    table_->installEventFilter(this);
    connect(table_, &QTableView::doubleClicked, this, &LookupDialog::takeCurrent);

    auto* filters = new QFormLayout;
    filters->addRow(QStringLiteral("&Codice:"), code_);
    filters->addRow(QStringLiteral("&Descrizione:"), words_);
    auto* buttons = new QDialogButtonBox(this);
    accept_ = buttons->addButton(QStringLiteral("&Scegli"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("&Annulla"), QDialogButtonBox::RejectRole);
    accept_->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &LookupDialog::takeCurrent);
    connect(buttons, &QDialogButtonBox::rejected, this, &LookupDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    if (!restriction.isEmpty()) {
        auto* note = new QLabel(restriction, this);
        note->setObjectName(QStringLiteral("restrizione"));
        note->setTextFormat(Qt::PlainText);
        note->setWordWrap(true);
        layout->addWidget(note);
    }
    layout->addWidget(table_, 1);
    layout->addWidget(count_);
    layout->addWidget(buttons);

    showCount();
    select(openAt.isEmpty() ? 0 : std::max(0, model_->rowAtOrAfter(openAt)));
    words_->setFocus();
}

void LookupDialog::applyFilter() {
    model_->setFilter(code_->text(), words_->text());
    showCount();
    select(0);
}

void LookupDialog::showCount() {
    const QLocale locale;
    const int shown = model_->rowCount();
    accept_->setEnabled(shown > 0);
    if (shown == 0) {
        count_->setText(model_->total() == 0 ? QStringLiteral("L'elenco è vuoto.")
                                             : QStringLiteral("Nessun codice corrisponde ai filtri."));
    } else {
        count_->setText(
            QStringLiteral("%1 di %2").arg(locale.toString(shown), locale.toString(model_->total())));
    }
}

void LookupDialog::select(int row) {
    if (row < model_->rowCount()) {
        table_->setCurrentIndex(model_->index(row, LookupModel::codeColumn));
        table_->scrollTo(table_->currentIndex(), QAbstractItemView::PositionAtCenter);
    }
}

void LookupDialog::takeCurrent() {
    const QModelIndex current = table_->currentIndex();
    if (current.isValid()) {
        chosen_ = model_->row(current.row());
        accept();
    }
}

bool LookupDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        takeCurrent();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        if (watched != table_) {
            QCoreApplication::sendEvent(table_, event);
            return true;
        }
        break;
    default:
        // Typing while the list has the focus goes on filtering.
        if (watched == table_ && !key->text().isEmpty() && key->text().at(0).isPrint() &&
            !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
            words_->setFocus();
            QCoreApplication::sendEvent(words_, event);
            return true;
        }
        break;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace veldran::shell
