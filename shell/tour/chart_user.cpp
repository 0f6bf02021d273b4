#include "shell/tour/chart_user.h"

#include "adapters/qt/text.h"
#include "adapters/qt/tree_widget.h"
#include "shell/tour/stage.h"

#include <QFont>
#include <QLineEdit>

namespace veldran::shell {

using qt::toQt;

qt::TreeWidget& ChartUser::tree() const {
    return stage_.find<qt::TreeWidget>(QStringLiteral("TRW_CONTI"));
}

QModelIndex ChartUser::row(const std::string& text) const {
    const qt::TreeWidget& view = tree();
    for (QModelIndex index = view.model()->index(0, 0); index.isValid(); index = view.indexBelow(index)) {
        if (index.data().toString().startsWith(toQt(text))) {
            return index;
        }
    }
    throw TourFailure("l'albero non mostra la riga " + text);
}

bool ChartUser::hasRow(const std::string& text) const {
    try {
        return row(text).isValid();
    } catch (const TourFailure&) {
        return false;
    }
}

bool ChartUser::isChecked(const std::string& text) const {
    return row(text).data(Qt::CheckStateRole).toInt() == Qt::Checked;
}

bool ChartUser::isSelected(const std::string& text) const {
    return tree().currentIndex() == row(text);
}

bool ChartUser::isMarked(const std::string& text) const {
    return row(text).data(Qt::FontRole).value<QFont>().bold();
}

void ChartUser::clickRow(const std::string& text, int hitFlag) {
    qt::TreeWidget& view = tree();
    const QModelIndex index = row(text);
    view.scrollTo(index);
    const int y = view.visualRect(index).center().y();
    for (int x = 0; x < view.viewport()->width(); ++x) {
        // Two pixels into the part, clear of its edge.
        if (view.hitTest(x, y).flags == hitFlag && view.hitTest(x + 2, y).flags == hitFlag) {
            stage_.click(*view.viewport(), {x + 2, y});
            return;
        }
    }
    throw TourFailure("la riga " + text + " non mostra la parte da premere");
}

void ChartUser::typeIntoSearch(const QString& code) {
    auto& field = stage_.find<QWidget>(QStringLiteral("TXT_CONTORICERCA"));
    stage_.click(*field.findChild<QLineEdit*>());
    stage_.press(Qt::Key_A, Qt::ControlModifier);
    stage_.type(code);
}

void ChartUser::searchNow(const std::string& selectedText) {
    stage_.press(Qt::Key_Return);
    stage_.waitUntil([&] { return tree().currentIndex().data().toString().startsWith(toQt(selectedText)); },
                     "la ricerca non arriva al conto " + selectedText);
    stage_.require(tree().viewport()->rect().intersects(tree().visualRect(tree().currentIndex())),
                   "il conto trovato non è in vista");
}

} // namespace veldran::shell
