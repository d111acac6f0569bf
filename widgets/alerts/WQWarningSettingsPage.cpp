#include <WQGeneral/alerts/WQWarningSettingsPage.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wq {

WQWarningSettingsPage::WQWarningSettingsPage(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(WQStrings::tr("Warnings you have silenced with \"Don't show again\":"), this);
    title->setWordWrap(true);
    layout->addWidget(title);
    auto* rows = new QWidget(this);
    _wq_rows = new QVBoxLayout(rows);
    _wq_rows->setContentsMargins(12, 4, 0, 4);
    layout->addWidget(rows);
    _wq_showAll = new QPushButton(WQStrings::tr("Show all warnings again"), this);
    _wq_showAll->setObjectName(QStringLiteral("showAll"));
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(_wq_showAll);
    layout->addLayout(bottom);
    layout->addStretch();

    connect(_wq_showAll, &QPushButton::clicked, this, [] { WQWarningSuppression::showAllAgain(); });
    connect(&WQWarningSuppression::notifier(), &WQWarningSuppression::changed, this,
            &WQWarningSettingsPage::_wq_rebuild);
    _wq_rebuild();
}

void WQWarningSettingsPage::_wq_rebuild()
{
    while (QLayoutItem* item = _wq_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QStringList silenced = WQWarningSuppression::suppressedKeys();
    for (const QString& key : silenced) {
        auto* row = new QWidget;
        auto* line = new QHBoxLayout(row);
        line->setContentsMargins(0, 0, 0, 0);
        auto* text = new QLabel(WQWarningSuppression::describe(key), row);
        text->setWordWrap(true);
        line->addWidget(text, 1);
        auto* again = new QPushButton(WQStrings::tr("Show again"), row);
        // Named after its key, so that each row can be found.
        again->setObjectName(key);
        line->addWidget(again);
        connect(again, &QPushButton::clicked, this, [key] { WQWarningSuppression::showAgain(key); });
        _wq_rows->addWidget(row);
    }
    if (silenced.isEmpty()) {
        auto* none = new QLabel(WQStrings::tr("None: every warning is shown."));
        none->setEnabled(false);
        _wq_rows->addWidget(none);
    }
    _wq_showAll->setEnabled(!silenced.isEmpty());
}

} // namespace wq
