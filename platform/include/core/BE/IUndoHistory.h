#pragma once

#include "zelcore/UTF16String.h"

#include <cstddef>

namespace BE {

// A project's undo history, as the host's Edit menu sees it. Every change asked
// to be undoable is one named step; undo and redo broadcast the same change
// messages as the change itself. A BE::UndoHistoryChangedMessage on the
// project's station announces every change of what these queries answer.
class IUndoHistory {
public:
    virtual bool CanUndo() const = 0;
    virtual bool CanRedo() const = 0;

    // The localised name of the step Undo (Redo) would take back (do again);
    // empty when there is none or the step has no name.
    virtual zelcore::UTF16String GetUndoStepName() const = 0;
    virtual zelcore::UTF16String GetRedoStepName() const = 0;

    // Does nothing when there is nothing to undo (redo).
    virtual void Undo() = 0;
    virtual void Redo() = 0;

    // Steps in the history, and how many of them are done (the rest can be redone).
    virtual std::size_t GetStepCount() const = 0;
    virtual std::size_t GetDoneStepCount() const = 0;

    // Clean: nothing changed since MarkClean (the host calls it after a save).
    // A change made without an undo step makes the history unclean until the
    // next MarkClean, since no undo can take it back.
    virtual bool IsClean() const = 0;
    virtual void MarkClean() = 0;

    // Forgets every step (the project's content stays as it is).
    virtual void Clear() = 0;

protected:
    ~IUndoHistory() = default;
};

} // namespace BE
