// XML and CSV escaping: decoding never fails, encoding round-trips.
#include <WQGeneral/encoding/WQEscaping.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)wq::xml_decodedFromXML(text);
    (void)wq::csv_decodedFromCSV(text);
    (void)wq::validXMLString(text);
    (void)wq::url_encodedForURL(text);
    (void)wq::xml_boolValue(text);
    return 0;
}
