#pragma once

#include "BE/IUndoHistory.h"
#include "BE/UndoMode.h"

#include <functional>
#include <memory>
#include <string_view>

namespace platform::core {

class EditRecorder;
class ModelEdit;

// The project's history over a QUndoStack. Every model change runs through
// Execute, so that changes with and without an undo step share one code path.
class UndoStack final : public BE::IUndoHistory {
public:
    // onChanged runs after every change of what the IUndoHistory queries answer.
    explicit UndoStack(std::function<void()> onChanged);
    ~UndoStack();

    // Applies the edit; with kAsUndoStep it becomes one step named by the
    // localisation key actionName. Throws KSL::Exception when the edit cannot
    // apply, and for an undo step requested while another change is applied,
    // undone or redone: a listener of its change messages must not start a
    // step inside it. Changes without a step are allowed there.
    void Execute(std::unique_ptr<ModelEdit> edit, BE::UndoMode mode,
                 std::u16string_view actionName);

    // The recorder hears every change, undo, redo and clearing of the history
    // before it happens; null for none. It must outlive its use here.
    void SetRecorder(EditRecorder* recorder);

    // True while a change is applied, undone or redone.
    bool IsApplyingStep() const;

    bool CanUndo() const override;
    bool CanRedo() const override;
    zelcore::UTF16String GetUndoStepName() const override;
    zelcore::UTF16String GetRedoStepName() const override;
    void Undo() override;
    void Redo() override;
    std::size_t GetStepCount() const override;
    std::size_t GetDoneStepCount() const override;
    bool IsClean() const override;
    void MarkClean() override;
    void Clear() override;

    // Forgets the steps that were undone, as a new step would, without
    // telling the recorder: for a replayed journal whose history cannot
    // redo them in the order they were recorded in.
    void DropRedoSteps();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace platform::core
