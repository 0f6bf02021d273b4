#include "adapters/qt/tree_model.h"

#include "adapters/qt/text.h"
#include "adapters/qt/tree_icons.h"

#include <QColor>
#include <QFont>

namespace veldran::qt {

using controls::TreeNode;

namespace {

QColor colourOf(std::int32_t bgr) {
    return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF);
}

} // namespace

TreeModel::TreeModel(controls::TreeView& tree, QObject* parent) : QAbstractItemModel(parent), tree_(tree) {}

TreeNode* TreeModel::nodeOf(const QModelIndex& index) {
    return static_cast<TreeNode*>(index.internalPointer());
}

QModelIndex TreeModel::indexOf(const TreeNode* node) const {
    return node == nullptr ? QModelIndex() : createIndex(node->IndexInParent(), 0, node);
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    const TreeNode* owner = nodeOf(parent);
    if (column != 0 || row < 0 || row >= tree_.ShownChildren(owner)) {
        return {};
    }
    return createIndex(row, 0, owner != nullptr ? owner->ChildAt(row) : tree_.RootAt(row));
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(nodeOf(child)->Parent()) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : tree_.ShownChildren(nodeOf(parent));
}

int TreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const TreeNode& node = *nodeOf(index);
    switch (role) {
    case Qt::DisplayRole:
        return toQt(node.Text());
    case Qt::DecorationRole: {
        const int image = tree_.SelectedItem() == &node ? node.SelectedImage() : node.Image();
        return image == 0 ? QVariant() : treeIcon(image);
    }
    case Qt::AccessibleDescriptionRole:
        return spokenTreeIcon(node.SelectedImage());
    case Qt::CheckStateRole:
        return static_cast<int>(node.Checked() ? Qt::Checked : Qt::Unchecked);
    case Qt::FontRole:
        if (node.Bold()) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    case Qt::ForegroundRole:
        return node.ForeColor() == 0 ? QVariant() : colourOf(node.ForeColor());
    default:
        return {};
    }
}

bool TreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid()) {
        return false;
    }
    TreeNode& node = *nodeOf(index);
    if (node.Checked() != (value.toInt() == Qt::Checked)) {
        tree_.CheckFromView(node);
    }
    return true;
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable
                           : Qt::ItemFlags();
}

void TreeModel::beforeAppend(const TreeNode* parent, int first, int count) {
    beginInsertRows(indexOf(parent), first, first + count - 1);
}

void TreeModel::beforeRemove(const TreeNode& node) {
    beginRemoveRows(indexOf(node.Parent()), node.IndexInParent(), node.IndexInParent());
}

void TreeModel::nodeChanged(const TreeNode& node) {
    const QModelIndex index = indexOf(&node);
    emit dataChanged(index, index);
}

} // namespace veldran::qt
