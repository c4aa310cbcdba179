#pragma once

#include "ModelEdit.h"

#include <memory>
#include <vector>

namespace platform::core {

// Several edits as one change: applied in order, reverted in reverse order.
// When one of them cannot apply (or revert), those already done are taken
// back, so the model is left as it was and the change reports false.
class CompositeEdit final : public ModelEdit {
public:
    explicit CompositeEdit(std::vector<std::unique_ptr<ModelEdit>> parts);
    bool Apply() override;
    bool Revert() override;
    // Its parts' descriptions, each of the model before any part applies, as
    // the parts were made.
    std::string Describe() const override;

private:
    std::vector<std::unique_ptr<ModelEdit>> parts_;
};

} // namespace platform::core
