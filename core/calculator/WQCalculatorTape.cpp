#include <WQGeneral/calculator/WQCalculatorTape.h>

#include <cmath>

namespace wq {

double WQCalculatorTape::total(double live) const
{
    if (numbers.isEmpty())
        return 0;
    double total = numbers.front();
    const qsizetype n = operators.size();
    for (qsizetype i = 0; i < n; ++i) {
        const double operand = i == n - 1 ? live : (i + 1 < numbers.size() ? numbers[i + 1] : 0.0);
        const QString& op = operators[i];
        if (op == u"-")
            total -= operand;
        else if (op == u"+")
            total += operand;
        else if (op == u"*")
            total *= operand;
        else if (op == u"/")
            total = std::fabs(operand) < 1e-7 ? 0.0 : total / operand;
    }
    return total;
}

QStringList WQCalculatorTape::lines(const QString& liveText, double live,
                                     const std::function<QString(double)>& display) const
{
    QStringList out;
    if (numbers.isEmpty())
        return out;
    out << display(numbers.front());
    for (qsizetype i = 0; i < operators.size(); ++i) {
        const bool last = i == operators.size() - 1;
        out << operators[i] + u' ' + (last ? liveText : display(numbers.value(i + 1)));
    }
    out << QStringLiteral("= ") + display(total(live));
    return out;
}

} // namespace wq
