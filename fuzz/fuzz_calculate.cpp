// The calculating money formatter's keystroke judgement on arbitrary edits,
// with its deferred calculator opening run after each one (no toolkit is
// there to show it).
#include "FuzzEdit.h"
#include "FuzzMoneyOwner.h"

#include <WQGeneral/money/WQCalculateMoneyFormatter.h>

#include <QCoreApplication>

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz_calculate";
    static char* argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);

    wq::fuzz::Input in(data, size);
    const std::uint8_t mode = in.byte();
    wq::WQMoneyFormatterOwner owner = wq::fuzz::ownerFrom(mode, in);
    const auto formatter = std::make_shared<wq::WQCalculateMoneyFormatter>(&owner);
    // A few edits in a row, as a user types into one field.
    for (int edit = 0; edit < 1 + (mode >> 4) % 4; ++edit) {
        wq::fuzz::judgeEdit(*formatter, in);
        QCoreApplication::processEvents();
    }
    return 0;
}
