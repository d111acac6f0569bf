#pragma once
// A translator installed for one scope that knows a few texts of one
// translation context; every other text stays as it is.

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QTranslator>

namespace wq::test {

class ScopedTranslations : public QTranslator {
public:
    ScopedTranslations(QByteArray context, QHash<QByteArray, QString> texts)
        : _context(std::move(context)), _texts(std::move(texts))
    {
        QCoreApplication::installTranslator(this);
    }
    ~ScopedTranslations() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return _context == context ? _texts.value(source) : QString();
    }

private:
    QByteArray _context;
    QHash<QByteArray, QString> _texts;
};

} // namespace wq::test
