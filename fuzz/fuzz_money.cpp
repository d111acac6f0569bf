// Money text: the forgiving parser, the display of what it read, and both
// typing modes on arbitrary edits, under arbitrary settings and places.
#include "FuzzEdit.h"
#include "FuzzMoneyOwner.h"

#include <WQGeneral/money/WQMoneyFormatter.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    wq::fuzz::Input in(data, size);
    const std::uint8_t mode = in.byte();
    wq::WQMoneyFormatterOwner owner = wq::fuzz::ownerFrom(mode, in);
    wq::WQMoneyFormatter formatter(&owner);
    // The patterns the shared formatters get for 0, 2 and 18 places.
    if (const int places = (mode >> 3) % 4; places > 0) {
        const QString negative = places == 1 ? QStringLiteral("-$#,##0")
                                             : QStringLiteral("-$#,##0.") + QString(places == 2 ? 2 : 18, u'0');
        formatter.setNegativeFormat(negative);
        formatter.setPositiveFormat(negative.mid(1));
    }
    if (mode & 4) {
        QVariant value;
        QString error;
        if (formatter.getObjectValue(&value, in.text(), &error))
            (void)formatter.stringForObjectValue(value);
        return 0;
    }
    wq::fuzz::judgeEdit(formatter, in);
    return 0;
}
