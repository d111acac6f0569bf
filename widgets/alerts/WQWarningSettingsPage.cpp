#include <WQGeneral/alerts/WQWarningSettingsPage.h>
#include <WQGeneral/alerts/WQWarningSuppression.h>
#include <WQGeneral/platform/WQLocalizedText.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace wq {

class WQWarningSettingsPagePrivate {
public:
    // Refills the list from the stored suppressions.
    void rebuild(WQWarningSettingsPage* page);

    QVBoxLayout* rows = nullptr;
    QPushButton* showAll = nullptr;
};

WQWarningSettingsPage::WQWarningSettingsPage(QWidget* parent)
    : QWidget(parent), _wq_d(std::make_unique<WQWarningSettingsPagePrivate>())
{
    Q_D(WQWarningSettingsPage);
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel(WQStrings::tr("Warnings you have silenced with \"Don't show again\":"), this);
    title->setWordWrap(true);
    layout->addWidget(title);
    auto* rows = new QWidget(this);
    d->rows = new QVBoxLayout(rows);
    d->rows->setContentsMargins(12, 4, 0, 4);
    layout->addWidget(rows);
    d->showAll = new QPushButton(WQStrings::tr("Show all warnings again"), this);
    d->showAll->setObjectName(QStringLiteral("showAll"));
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(d->showAll);
    layout->addLayout(bottom);
    layout->addStretch();

    connect(d->showAll, &QPushButton::clicked, this, [] { WQWarningSuppression::showAllAgain(); });
    connect(&WQWarningSuppression::notifier(), &WQWarningSuppression::changed, this,
            [this] { _wq_d->rebuild(this); });
    d->rebuild(this);
}

WQWarningSettingsPage::~WQWarningSettingsPage() = default;

QPushButton* WQWarningSettingsPage::showAllButton() const
{
    return _wq_d->showAll;
}

void WQWarningSettingsPagePrivate::rebuild(WQWarningSettingsPage* page)
{
    while (QLayoutItem* item = rows->takeAt(0)) {
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
        QObject::connect(again, &QPushButton::clicked, page, [key] { WQWarningSuppression::showAgain(key); });
        rows->addWidget(row);
    }
    if (silenced.isEmpty()) {
        auto* none = new QLabel(WQStrings::tr("None: every warning is shown."));
        none->setEnabled(false);
        rows->addWidget(none);
    }
    showAll->setEnabled(!silenced.isEmpty());
}

} // namespace wq
