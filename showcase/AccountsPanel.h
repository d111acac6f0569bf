#pragma once
// The accounts of the document as a tree, with Expand All and Collapse All
// and a line naming the selected account's parent. A self-contained widget:
// it can sit beside the register or in any panel container.

#include <QStandardItemModel>
#include <QWidget>

class QLabel;
class QTreeView;

namespace showcase {

class AccountsPanel : public QWidget {
    Q_OBJECT
public:
    explicit AccountsPanel(QWidget* parent = nullptr);

    QTreeView& tree() const { return *_tree; }
    // What the line under the tree says.
    QString parentLine() const;

public slots:
    void expandAll();
    void collapseAll();
    // Selects the account of that name (the first found), if any.
    void selectAccount(const QString& name);

private:
    void _showParent();

    QStandardItemModel _model;
    QTreeView* _tree = nullptr;
    QLabel* _parent = nullptr;
};

} // namespace showcase
