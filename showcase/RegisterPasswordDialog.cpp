#include "RegisterPasswordDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace showcase {

RegisterPasswordDialog::RegisterPasswordDialog(Purpose purpose, const QString& problem, QWidget* parent)
    : QDialog(parent), _purpose(purpose)
{
    setObjectName(QStringLiteral("registerPasswordDialog"));
    setWindowTitle(QStringLiteral("Register password"));
    auto* layout = new QVBoxLayout(this);
    auto* intro = new QLabel(purpose == Purpose::Open
                                 ? QStringLiteral("The register is encrypted. Its password:")
                                 : QStringLiteral("A password for the register file, typed twice (none: the file is "
                                                  "not encrypted)."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    auto* form = new QFormLayout;
    const auto field = [this](const char* name, const QString& accessible) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QString::fromLatin1(name));
        edit->setEchoMode(QLineEdit::Password);
        edit->setAccessibleName(accessible);
        connect(edit, &QLineEdit::textChanged, this, &RegisterPasswordDialog::_check);
        return edit;
    };
    _first = field("password", QStringLiteral("Password"));
    form->addRow(QStringLiteral("&Password:"), _first);
    if (purpose == Purpose::Choose) {
        _again = field("passwordAgain", QStringLiteral("Password again"));
        form->addRow(QStringLiteral("&Again:"), _again);
    }
    layout->addLayout(form);

    _problem = new QLabel(problem, this);
    _problem->setObjectName(QStringLiteral("problem"));
    _problem->setStyleSheet(QStringLiteral("color: #b00020;"));
    _problem->setWordWrap(true);
    _problem->setVisible(!problem.isEmpty());
    layout->addWidget(_problem);

    _buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(_buttons);
    _check();
    // Wide enough for its title and the longest problem on two lines.
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("The password is wrong, or the encrypted")) + 80);
}

QString RegisterPasswordDialog::password() const
{
    return _first->text();
}

void RegisterPasswordDialog::_check()
{
    if (_purpose != Purpose::Choose)
        return;
    // A typing slip in a password nobody sees would lock the register for good.
    const bool agree = _first->text() == _again->text();
    _buttons->button(QDialogButtonBox::Ok)->setEnabled(agree);
    const bool both = !_first->text().isEmpty() && !_again->text().isEmpty();
    _problem->setText(agree || !both ? QString() : QStringLiteral("The two passwords differ."));
    _problem->setVisible(!_problem->text().isEmpty());
}

} // namespace showcase
