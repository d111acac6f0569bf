#include "AccountsPanel.h"
#include "ShowcaseText.h"

#include <WQGeneral/menus/WQTreeViewExtensions.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace showcase {
namespace {

struct Account {
    const char* name;
    std::initializer_list<Account> children;
};

void add(QStandardItem& parent, const Account& account)
{
    auto* item = new QStandardItem(QString::fromUtf8(account.name));
    item->setEditable(false);
    for (const Account& child : account.children)
        add(*item, child);
    parent.appendRow(item);
}

} // namespace

AccountsPanel::AccountsPanel(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("accounts"));
    const Account chart[] = {
        {"Assets", {{"Checking", {}}, {"Savings", {{"Emergency Fund", {}}, {"Vacation", {}}}}, {"Cash", {}}}},
        {"Liabilities", {{"Credit Card", {}}, {"Car Loan", {}}}},
        {"Income", {{"Salary", {}}, {"Interest", {}}}},
        {"Expenses",
         {{"Groceries", {}}, {"Utilities", {{"Power", {}}, {"Water", {}}, {"Internet", {}}}}, {"Rent", {}}}},
    };
    for (const Account& account : chart)
        add(*_model.invisibleRootItem(), account);
    _model.setHorizontalHeaderLabels({Text::tr("Accounts")});

    auto* expand = new QToolButton(this);
    expand->setObjectName(QStringLiteral("expandAll"));
    expand->setText(Text::tr("Expand All"));
    auto* collapse = new QToolButton(this);
    collapse->setObjectName(QStringLiteral("collapseAll"));
    collapse->setText(Text::tr("Collapse All"));
    expand->setToolTip(Text::tr("Show every account"));
    collapse->setToolTip(Text::tr("Show the top-level accounts only"));
    connect(expand, &QToolButton::clicked, this, &AccountsPanel::expandAll);
    connect(collapse, &QToolButton::clicked, this, &AccountsPanel::collapseAll);

    // Made after the buttons above it: Tab reads them first.
    _tree = new QTreeView(this);
    _tree->setObjectName(QStringLiteral("accountsTree"));
    _tree->setAccessibleName(Text::tr("Accounts"));
    _tree->setAccessibleDescription(Text::tr("The document's accounts; Right and Left open and close one"));
    _tree->setModel(&_model);
    _tree->setUniformRowHeights(true);
    _tree->header()->setSectionResizeMode(QHeaderView::Stretch);
    _tree->setMinimumWidth(190);

    _parent = new QLabel(this);
    _parent->setObjectName(QStringLiteral("parentLine"));
    _parent->setStyleSheet(QStringLiteral("color: #555;"));
    // Long names (and other languages) wrap rather than run out of the panel.
    _parent->setWordWrap(true);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(expand);
    buttons->addWidget(collapse);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(buttons);
    layout->addWidget(_tree, 1);
    layout->addWidget(_parent);

    connect(_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &AccountsPanel::_showParent);
    // Rows shift when items open and close; the parent row is found again.
    connect(_tree, &QTreeView::expanded, this, &AccountsPanel::_showParent);
    connect(_tree, &QTreeView::collapsed, this, &AccountsPanel::_showParent);
    _showParent();
}

void AccountsPanel::expandAll()
{
    wq::expandAll(*_tree, true, 0);
}

void AccountsPanel::collapseAll()
{
    wq::expandAll(*_tree, false, 0);
}

void AccountsPanel::selectAccount(const QString& name)
{
    const QModelIndexList found =
        _model.match(_model.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
    if (found.isEmpty())
        return;
    _tree->scrollTo(found.first());
    _tree->setCurrentIndex(found.first());
}

QString AccountsPanel::parentLine() const
{
    return _parent->text();
}

void AccountsPanel::_showParent()
{
    const QModelIndex current = _tree->currentIndex();
    if (!current.isValid()) {
        _parent->setText(Text::tr("Select an account to see where it belongs."));
        return;
    }
    // Found the way the outline shows it: the nearest row above at a lower level.
    const int row = wq::rowForItem(*_tree, current);
    const int parentRow = wq::parentRowForRow(*_tree, row);
    const QString name = current.data().toString();
    if (row < 0)
        _parent->setText(Text::tr("%1 is inside a collapsed account.").arg(name));
    else if (parentRow < 0)
        _parent->setText(Text::tr("%1 is a top-level account (row %2).").arg(name).arg(row));
    else
        _parent->setText(Text::tr("%1 (row %2) belongs to %3 (row %4).")
                             .arg(name)
                             .arg(row)
                             .arg(wq::itemAtRow(*_tree, parentRow).data().toString())
                             .arg(parentRow));
}

} // namespace showcase
