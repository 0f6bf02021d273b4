#pragma once

#include "platform/controls/tree_view.h"

#include <QAbstractItemModel>

namespace veldran::qt {

/// The nodes of a tree control as a Qt model. Holds no nodes of its own: an index carries the node's address,
/// so a hundred thousand children cost nothing here. Shows only the children that the control's observer has
/// been told of.
class TreeModel : public QAbstractItemModel {
public:
    explicit TreeModel(controls::TreeView& tree, QObject* parent = nullptr);

    static controls::TreeNode* nodeOf(const QModelIndex& index);
    QModelIndex indexOf(const controls::TreeNode* node) const; ///< invalid for nullptr

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// The check state only: toggles the check box as the user's click does.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // What the control's observer hears, passed on by the view.
    void beforeAppend(const controls::TreeNode* parent, int first, int count);
    void afterAppend() { endInsertRows(); }
    void beforeRemove(const controls::TreeNode& node);
    void afterRemove() { endRemoveRows(); }
    void beforeClear() { beginResetModel(); }
    void afterClear() { endResetModel(); }
    void nodeChanged(const controls::TreeNode& node);

private:
    controls::TreeView& tree_;
};

} // namespace veldran::qt
