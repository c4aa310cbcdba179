#include "CompositeEdit.h"

#include "journal/EditTargets.h"

namespace platform::core {

CompositeEdit::CompositeEdit(std::vector<std::unique_ptr<ModelEdit>> parts)
    : parts_(std::move(parts)) {}

bool CompositeEdit::Apply() {
    for (std::size_t done = 0; done < parts_.size(); ++done) {
        if (!parts_[done]->Apply()) {
            while (done > 0) {
                parts_[--done]->Revert();
            }
            return false;
        }
    }
    return true;
}

bool CompositeEdit::Revert() {
    for (std::size_t left = parts_.size(); left > 0; --left) {
        if (!parts_[left - 1]->Revert()) {
            for (std::size_t redo = left; redo < parts_.size(); ++redo) {
                parts_[redo]->Apply();
            }
            return false;
        }
    }
    return true;
}

std::string CompositeEdit::Describe() const {
    std::string parts = "[";
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        parts += (i == 0 ? "" : ",") + parts_[i]->Describe();
    }
    parts += ']';
    EditDescription description("composite");
    return std::move(description.Json("parts", parts)).Finish();
}

} // namespace platform::core
