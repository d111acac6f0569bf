#pragma once
// One undoable change of the register: the steps it was made of as it was
// made (rows inserted, removed, replaced and moved), done again in order and
// undone in reverse.

#include "RegisterBook.h"

#include <QUndoCommand>

namespace showcase {

class RegisterChange : public QUndoCommand {
public:
    RegisterChange(RegisterBook& book, const QString& text);

    // Each applies the step to the book at once and keeps it.
    void insert(int row, const Transaction& transaction);
    void remove(int row);
    // The row it went to (another when its date moved it).
    int replace(int row, const Transaction& transaction);
    bool isEmpty() const { return _steps.isEmpty(); }

    void undo() override;
    // Done already when pushed: only a redo after an undo applies the steps.
    void redo() override;

private:
    enum class Kind { Insert, Remove, Replace };
    struct Step {
        Kind kind;
        int row;
        int to;
        Transaction before;
        Transaction after;
    };

    RegisterBook& _book;
    QList<Step> _steps;
    bool _applied = true;
};

} // namespace showcase
