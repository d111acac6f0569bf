#pragma once
// wq-showcase --keys FIELD KEYS: types real key events into a field of the
// register window and prints, after each key, what the field shows (and the
// calculator's tape while one is open).
//
// KEYS is typed as written, except for named keys in angle brackets: <Esc>,
// <Tab>, <Return>, <Enter>, <BS> (Backspace), <Del>, <Left>, <Right>, <Up>,
// <Down>, <Home>, <End>, <Space>, <lt> (a literal "<"), each optionally with
// modifiers: <Alt+=>, <Ctrl+a>, <Shift+Tab>.

#include <QList>
#include <QString>
#include <Qt>

#include <optional>

namespace showcase {

class RegisterWindow;

struct KeyStroke {
    QString label;  // as written in KEYS
    Qt::Key key = Qt::Key_unknown;
    Qt::KeyboardModifiers modifiers;
    QString text;   // what the key produces
};

// The strokes of KEYS, or nullopt (with the reason) when a name is unknown.
std::optional<QList<KeyStroke>> parseKeys(const QString& keys, QString* error);

// Answers the exit status: 0, or 2 for an unknown field or key name.
int runKeys(RegisterWindow& window, const QString& fieldName, const QString& keys);

} // namespace showcase
