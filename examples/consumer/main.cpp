// Links WQGeneral::Core from an installed prefix and uses a piece of each
// dependency it brings: Qt (notifications), ICU (regional settings, dates)
// and OpenSSL (encrypted documents).
#include <WQGeneral/crypto/WQEncryptedDocument.h>
#include <WQGeneral/dates/WQDate.h>
#include <WQGeneral/platform/WQNotificationCenter.h>
#include <WQGeneral/platform/WQRegionalSettings.h>

#include <cstdio>

int main()
{
    int received = 0;
    int token = 0;
    auto& center = wq::WQNotificationCenter::defaultCenter();
    center.addObserver(&token, QStringLiteral("ping"), nullptr, [&](const wq::WQNotification&) { ++received; });
    center.postNotificationName(QStringLiteral("ping"));

    wq::WQRegionalSettings::setAllLocales(QStringLiteral("de_DE"));
    const QString pattern = wq::WQRegionalSettings::datePattern(wq::WQRegionalSettings::DateStyle::Short);
    const QString due = wq::WQDate::dateWithYear(2024, 1, 31).dateByAddingYears(0, 1, 0).optimizedStringXMLFormat();

    const QString document = QStringLiteral("<ledger>Grüße</ledger>");
    const auto opened = wq::xml_decryptDocumentWithPassword(
        wq::xml_encryptDocumentWithPassword(document, QStringLiteral("secret")), QStringLiteral("secret"));

    std::printf("consumer: linked WQGeneral: %d notification, de_DE short date %s, 2024-01-31 + 1 month = %s, "
                "envelope round trip %s\n",
                received, qPrintable(pattern), qPrintable(due), opened.ok() ? "ok" : "failed");
    return received == 1 && pattern == QStringLiteral("dd.MM.yy") && !due.isEmpty() && opened.ok()
                   && opened.document == document
               ? 0
               : 1;
}
