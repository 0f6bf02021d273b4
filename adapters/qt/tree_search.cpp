#include "adapters/qt/tree_search.h"

#include "adapters/qt/text.h"
#include "platform/controls/tree_view.h"

namespace veldran::qt {

using controls::TreeNode;
using controls::TreeView;

namespace {

/// Without case and accents.
QString folded(const QString& text) {
    QString plain = text.normalized(QString::NormalizationForm_D);
    plain.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    return plain.toCaseFolded();
}

TreeNode* nextOpenRow(const TreeView& tree, TreeNode* node) {
    if (node->Expanded() && node->Children() > 0) {
        return node->Child();
    }
    for (; node != nullptr; node = node->Parent()) {
        if (TreeNode* next = node->Next()) {
            return next;
        }
    }
    return tree.FirstRoot();
}

bool wordBeginsWith(const QString& text, const QString& typed) {
    for (qsizetype at = text.indexOf(typed); at >= 0; at = text.indexOf(typed, at + 1)) {
        if (at == 0 || !text.at(at - 1).isLetterOrNumber()) {
            return true;
        }
    }
    return false;
}

bool codeBeginsWith(const QString& text, QString typed) {
    QString code = text.section(QStringLiteral(" - "), 0, 0);
    if (code.startsWith(typed)) {
        return true;
    }
    code.remove(QLatin1Char('/'));
    return !typed.contains(QLatin1Char('/')) && code.startsWith(typed);
}

} // namespace

TreeNode* findTyped(const TreeView& tree, TreeNode* start, bool afterStart, const QString& typed) {
    const QString wanted = folded(typed);
    if (start == nullptr) {
        start = tree.FirstRoot();
        afterStart = false;
    }
    if (start == nullptr || wanted.isEmpty()) {
        return nullptr;
    }
    TreeNode* const first = afterStart ? nextOpenRow(tree, start) : start;
    TreeNode* node = first;
    do {
        const QString text = folded(toQt(node->Text()));
        if (codeBeginsWith(text, wanted) || wordBeginsWith(text, wanted)) {
            return node;
        }
        node = nextOpenRow(tree, node);
    } while (node != first);
    return nullptr;
}

} // namespace veldran::qt
