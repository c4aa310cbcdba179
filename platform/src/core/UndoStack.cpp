#include "UndoStack.h"

#include "EditRecorder.h"
#include "KSL/Exception.h"
#include "ModelEdit.h"
#include "file/JsonValues.h"
#include "zelcore/Localization.h"

#include <QString>
#include <QUndoCommand>
#include <QUndoStack>

#include <utility>

namespace platform::core {

struct UndoStack::Impl {
    QUndoStack stack;
    std::function<void()> onChanged;
    bool applyingStep = false;
    // A change without an undo step since the last MarkClean.
    bool changedOutsideHistory = false;
    EditRecorder* recorder = nullptr;
};

namespace {

class ApplyingStepScope {
public:
    explicit ApplyingStepScope(bool& flag)
        : flag_(flag)
        , previous_(std::exchange(flag, true)) {}
    ~ApplyingStepScope() { flag_ = previous_; }

private:
    bool& flag_;
    bool previous_;
};

// One undo step. The edit is already applied when the step is pushed, so the
// redo that QUndoStack::push performs is skipped. An edit that can no longer
// apply makes its step obsolete, and QUndoStack drops it.
class EditCommand final : public QUndoCommand {
public:
    EditCommand(std::unique_ptr<ModelEdit> edit, const QString& name, bool& applyingStep)
        : QUndoCommand(name)
        , edit_(std::move(edit))
        , applyingStep_(applyingStep) {}

    void redo() override {
        if (std::exchange(alreadyApplied_, false)) {
            return;
        }
        ApplyingStepScope scope(applyingStep_);
        if (!edit_->Apply()) {
            setObsolete(true);
        }
    }

    void undo() override {
        ApplyingStepScope scope(applyingStep_);
        if (!edit_->Revert()) {
            setObsolete(true);
        }
    }

    const ModelEdit& Edit() const { return *edit_; }

private:
    std::unique_ptr<ModelEdit> edit_;
    bool& applyingStep_;
    bool alreadyApplied_ = true;
};

// Makes room on the stack and then goes: pushing it drops the undone steps,
// undoing it removes it.
class DroppingCommand final : public QUndoCommand {
public:
    void redo() override {}
    void undo() override { setObsolete(true); }
};

const ModelEdit& EditOf(const QUndoStack& stack, int index) {
    return static_cast<const EditCommand*>(stack.command(index))->Edit();
}

zelcore::UTF16String FromQString(const QString& s) {
    return zelcore::UTF16String(reinterpret_cast<const char16_t*>(s.utf16()),
                                static_cast<std::size_t>(s.size()));
}

} // namespace

UndoStack::UndoStack(std::function<void()> onChanged)
    : impl_(std::make_unique<Impl>()) {
    impl_->onChanged = std::move(onChanged);
}

UndoStack::~UndoStack() = default;

void UndoStack::Execute(std::unique_ptr<ModelEdit> edit, BE::UndoMode mode,
                        std::u16string_view actionName) {
    if (mode == BE::UndoMode::kAsUndoStep && impl_->applyingStep) {
        throw KSL::Exception("an undo step was requested while another change is being applied");
    }
    const bool wasClean = IsClean();
    const EditRecorder::Mark mark =
        impl_->recorder ? impl_->recorder->RecordEdit(*edit, mode, actionName) : 0;
    {
        ApplyingStepScope scope(impl_->applyingStep);
        if (!edit->Apply()) {
            if (impl_->recorder) {
                impl_->recorder->Retract(mark);
            }
            throw KSL::Exception("the change does not apply to the project as it is");
        }
    }
    if (mode == BE::UndoMode::kAsUndoStep) {
        const QString name =
            actionName.empty() ? QString() : ToQString(zelcore::Localize(actionName));
        impl_->stack.push(new EditCommand(std::move(edit), name, impl_->applyingStep));
        impl_->onChanged();
        return;
    }
    impl_->changedOutsideHistory = true;
    if (wasClean) {
        impl_->onChanged();
    }
}

void UndoStack::SetRecorder(EditRecorder* recorder) {
    impl_->recorder = recorder;
}

bool UndoStack::IsApplyingStep() const {
    return impl_->applyingStep;
}

bool UndoStack::CanUndo() const {
    return impl_->stack.canUndo();
}
bool UndoStack::CanRedo() const {
    return impl_->stack.canRedo();
}

zelcore::UTF16String UndoStack::GetUndoStepName() const {
    return FromQString(impl_->stack.undoText());
}

zelcore::UTF16String UndoStack::GetRedoStepName() const {
    return FromQString(impl_->stack.redoText());
}

void UndoStack::Undo() {
    if (!CanUndo() || impl_->applyingStep) {
        return;
    }
    if (impl_->recorder) {
        impl_->recorder->RecordUndo(EditOf(impl_->stack, impl_->stack.index() - 1));
    }
    impl_->stack.undo();
    impl_->onChanged();
}

void UndoStack::Redo() {
    if (!CanRedo() || impl_->applyingStep) {
        return;
    }
    if (impl_->recorder) {
        impl_->recorder->RecordRedo(EditOf(impl_->stack, impl_->stack.index()));
    }
    impl_->stack.redo();
    impl_->onChanged();
}

std::size_t UndoStack::GetStepCount() const {
    return static_cast<std::size_t>(impl_->stack.count());
}

std::size_t UndoStack::GetDoneStepCount() const {
    return static_cast<std::size_t>(impl_->stack.index());
}

bool UndoStack::IsClean() const {
    return impl_->stack.isClean() && !impl_->changedOutsideHistory;
}

void UndoStack::MarkClean() {
    impl_->stack.setClean();
    impl_->changedOutsideHistory = false;
    impl_->onChanged();
}

void UndoStack::DropRedoSteps() {
    if (!CanRedo()) {
        return;
    }
    impl_->stack.push(new DroppingCommand);
    impl_->stack.undo();
    impl_->onChanged();
}

void UndoStack::Clear() {
    if (impl_->recorder) {
        impl_->recorder->RecordHistoryCleared();
    }
    impl_->stack.clear();
    impl_->onChanged();
}

} // namespace platform::core
