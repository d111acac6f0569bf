#pragma once
/// \class wq::WQCalculateMoneyFormatter
/// The money formatter of fields that calculate. Typing "+", "-", "*" or "/"
/// after a number keeps only the number in the field, all selected, and on
/// the next pass of the event loop the toolkit's pop-up calculator opens
/// beside the field with that number and operator (or, typed in the
/// calculator itself, extends it). "=" tells the open calculator to finish.
/// Everything else is the money formatter's.
///
/// Obtain it with moneyFormatterForDelegate(owner, places, true). The
/// calculator keeps the formatter alive, so it must be owned by a shared_ptr
/// (the registry's and the fields' are); one owned otherwise still trims its
/// text but opens no calculator.

#include <WQGeneral/WQCoreExport.h>
#include <WQGeneral/money/WQMoneyFormatter.h>

#include <memory>
#include <optional>

namespace wq {

/// \addtogroup money
/// @{

class WQ_CORE_EXPORT WQCalculateMoneyFormatter : public WQMoneyFormatter,
                                  public std::enable_shared_from_this<WQCalculateMoneyFormatter> {
public:
    /// A formatter of the delegate's currency; usually obtained from moneyFormatterForDelegate() with canCalculate.
    explicit WQCalculateMoneyFormatter(WQMoneyFormatterDelegate* delegate = nullptr);
    ~WQCalculateMoneyFormatter() override;

    /// The five characters that act: + - * / =, in ASCII only.
    static bool isMathOperator(QChar c) noexcept
    {
        const char16_t u = c.unicode();
        return u == u'+' || u == u'-' || u == u'*' || u == u'/' || u == u'=';
    }

    /// The calculating judgement; the money formatter's for everything else.
    bool isPartialStringValid(QString* partialString, WQRange* proposedSelectedRange,
                              const QString& originalString, WQRange originalSelectedRange,
                              QString* errorDescription) override;

    /// The operator waiting for the calculator to open; null when none is.
    const QString& pendingMathOperator() const noexcept { return _wq_temp_math_operator; }

private:
    void _tv_delayed_window_setup(std::optional<double> number);

    QString _wq_temp_math_operator;
    /// Deferred steps find the formatter through this, so one that has gone
    /// away by then is skipped.
    std::shared_ptr<WQCalculateMoneyFormatter*> _wq_alive = std::make_shared<WQCalculateMoneyFormatter*>(this);
};

/// @}

} // namespace wq
