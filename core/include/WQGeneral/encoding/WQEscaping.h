#pragma once
/// \file
/// Escaping text for XML, CSV fields and URL queries, and undoing it.
/// Every function answers its input itself (sharing its data) when nothing
/// had to change, so escaping clean text costs no copy.

#include <WQGeneral/WQCoreExport.h>

#include <QString>
#include <QStringView>

namespace wq {

/// \addtogroup encoding
/// @{

/// The XML declaration for UTF-8 documents, with a line feed: 39 characters.
inline constexpr char kXML_UTF8_EncodingString[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

// --- XML ---------------------------------------------------------------

/// The text without the characters XML 1.0 forbids. Stored documents were
/// cleaned with a set whose three upper bounds are one short of XML's
/// (U+D7FF, U+FFFD and U+10FFFF go too), so that set is kept.
WQ_CORE_EXPORT QString validXMLString(const QString& string);
/// validXMLString, then & < > " ' become entities.
WQ_CORE_EXPORT QString xml_encodedForXML(const QString& string);
/// Undoes the five entities and "&#38;"; "&amp;" goes last, so "&amp;lt;"
/// gives "&lt;". No other entity is decoded.
WQ_CORE_EXPORT QString xml_decodedFromXML(const QString& string);
/// "true" or "yes" in any case, or exactly "1".
WQ_CORE_EXPORT bool xml_boolValue(QStringView string);
/// Appends xml_encodedForXML(string).
WQ_CORE_EXPORT void xml_appendStringEncodedForXML(QString& receiver, const QString& string);
/// Appends `<tag>escaped value</tag>`; the tag itself is taken as it is.
WQ_CORE_EXPORT void xml_appendTag(QString& receiver, const QString& tag, const QString& value);

// --- CSV ---------------------------------------------------------------

/// Doubles quotation marks, then encloses the field in quotation marks only
/// when it holds a comma: the applications' readers expect exactly that.
WQ_CORE_EXPORT QString csv_encodedForCSV(const QString& string);
/// Turns doubled quotation marks back into one; enclosing marks stay.
WQ_CORE_EXPORT QString csv_decodedFromCSV(const QString& string);
/// Appends string encoded for CSV as csv_encodedForCSV() does.
WQ_CORE_EXPORT void csv_appendStringEncodedForCSV(QString& receiver, const QString& string);

// --- URL ---------------------------------------------------------------

/// Percent-escapes (UTF-8, upper-case hex) every character that may not stand
/// in a URL at all. Letters, digits and ! $ & ' ( ) * + , - . / : ; = ? @ _ ~
/// stay as they are, so values must not carry & = + ? / of their own.
WQ_CORE_EXPORT QString url_encodedForURL(const QString& string);
/// Appends string encoded for a URL as url_encodedForURL() does.
WQ_CORE_EXPORT void url_appendStringEncodedForURL(QString& receiver, const QString& string);
/// Appends "?" (first) or "&", the escaped name, "=" and the escaped value.
WQ_CORE_EXPORT void url_appendValue(QString& receiver, const QString& value, const QString& paramName, bool firstParam);

/// @}

} // namespace wq
