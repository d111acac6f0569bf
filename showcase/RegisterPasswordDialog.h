#pragma once
// The register's password, asked as a user expects: once to open an
// encrypted register (saying so when the last one was wrong), twice to set a
// new one (OK only while the two agree).

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace showcase {

class RegisterPasswordDialog : public QDialog {
    Q_OBJECT
public:
    enum class Purpose {
        Open,     // one field; problem, when given, says what went wrong last time
        Choose,   // two fields that must agree; both empty: no password
    };
    RegisterPasswordDialog(Purpose purpose, const QString& problem, QWidget* parent);

    QString password() const;

private:
    void _check();

    Purpose _purpose;
    QLineEdit* _first = nullptr;
    QLineEdit* _again = nullptr;
    QLabel* _problem = nullptr;
    QDialogButtonBox* _buttons = nullptr;
};

} // namespace showcase
