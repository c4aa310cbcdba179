#pragma once

#include <string>

namespace platform::core {

// One reversible change of the project model. Apply and Revert each bring the
// model from one state to the other and broadcast the change messages that
// describe the transition, the same messages in both directions' terms.
class ModelEdit {
public:
    virtual ~ModelEdit() = default;

    // Returns false, changing nothing, when the model no longer holds what the
    // edit acts on (a change made without an undo step removed it).
    virtual bool Apply() = 0;
    virtual bool Revert() = 0;

    // What Apply would do, for the edit journal (platform/PROJECT_FORMAT.md),
    // as the text of a compact JSON object: the edit's kind, its target by its
    // place in the project, and its new content. Called before Apply, while
    // the target is still where the model found it; throws JsonValueError for
    // content a project file cannot hold.
    virtual std::string Describe() const = 0;

    // What Revert would do, in the same terms: called before Revert, while
    // the edit is applied. A journal records it for an undo that its replay
    // cannot perform from its own records (the step was made before the
    // journal began), so it must reproduce the reverted state exactly.
    virtual std::string DescribeRevert() const = 0;
};

} // namespace platform::core
