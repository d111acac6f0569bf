#include "RegisterChange.h"

#include <utility>

namespace showcase {

RegisterChange::RegisterChange(RegisterBook& book, const QString& text) : QUndoCommand(text), _book(book) {}

void RegisterChange::insert(int row, const Transaction& transaction)
{
    _book._insert(row, transaction);
    _steps.append({Kind::Insert, row, row, {}, transaction});
}

void RegisterChange::remove(int row)
{
    const Transaction before = _book.at(row);
    _book._remove(row);
    _steps.append({Kind::Remove, row, row, before, {}});
}

int RegisterChange::replace(int row, const Transaction& transaction)
{
    const Transaction before = _book.at(row);
    const int to = before.date == transaction.date ? row : _book._placeFor(transaction.date, row);
    _book._replace(row, to, transaction);
    _steps.append({Kind::Replace, row, to, before, transaction});
    return to;
}

void RegisterChange::undo()
{
    for (auto step = _steps.crbegin(); step != _steps.crend(); ++step) {
        switch (step->kind) {
        case Kind::Insert:
            _book._remove(step->row);
            break;
        case Kind::Remove:
            _book._insert(step->row, step->before);
            break;
        case Kind::Replace:
            _book._replace(step->to, step->row, step->before);
            break;
        }
    }
    _applied = false;
}

void RegisterChange::redo()
{
    if (std::exchange(_applied, true))
        return;
    for (const Step& step : _steps) {
        switch (step.kind) {
        case Kind::Insert:
            _book._insert(step.row, step.after);
            break;
        case Kind::Remove:
            _book._remove(step.row);
            break;
        case Kind::Replace:
            _book._replace(step.row, step.to, step.after);
            break;
        }
    }
}

} // namespace showcase
