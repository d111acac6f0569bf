// The whole-number and decimal formatters: the finished-text parse, the
// display of what it read, and the keystroke judgement on arbitrary edits.
#include "FuzzEdit.h"

#include <WQGeneral/numbers/WQDecimalFormatter.h>
#include <WQGeneral/numbers/WQPositiveIntegerFormatter.h>

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    wq::fuzz::Input in(data, size);
    const std::uint8_t mode = in.byte();
    std::unique_ptr<wq::WQFormatter> formatter;
    if (mode & 1)
        formatter = std::make_unique<wq::WQDecimalFormatter>();
    else
        formatter = std::make_unique<wq::WQPositiveIntegerFormatter>();
    if (mode & 2) {
        QVariant value;
        QString error;
        if (formatter->getObjectValue(&value, in.text(), &error))
            (void)formatter->stringForObjectValue(value);
        return 0;
    }
    wq::fuzz::judgeEdit(*formatter, in);
    return 0;
}
