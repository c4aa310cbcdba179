#pragma once

#include "BE/UndoMode.h"

#include <cstdint>
#include <string_view>

namespace platform::core {

class ModelEdit;

// Hears every change of a project's model before it is applied and announced:
// the undo history calls it first, then changes the model. The edit journal is
// the one implementation.
class EditRecorder {
public:
    // A place in the record, to go back to with Retract.
    using Mark = std::uint64_t;

    virtual ~EditRecorder() = default;

    // Returns the place before the record, for an edit that then does not apply.
    // Throws KSL::Exception, refusing the edit, for one whose target is not
    // part of the project.
    virtual Mark RecordEdit(const ModelEdit& edit, BE::UndoMode mode,
                            std::u16string_view actionName) = 0;
    // The step's edit is about to be reverted (undo) or applied again (redo).
    virtual void RecordUndo(const ModelEdit& step) = 0;
    virtual void RecordRedo(const ModelEdit& step) = 0;
    virtual void RecordHistoryCleared() = 0;
    // Forgets everything recorded since the mark.
    virtual void Retract(Mark mark) = 0;
};

} // namespace platform::core
