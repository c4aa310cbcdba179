#pragma once

#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

#include <cstdint>
#include <random>

namespace host_test {

// A seeded run of the edits a captioner makes on the demo project, through the
// project model: typing (live updates without an undo step), committed text,
// added, deleted and retimed captions, undo and redo, sequence settings. The
// same seed gives the same edits on the same project, so a test can rebuild
// the project as it was after any number of them.
class JournalEditScript {
public:
    explicit JournalEditScript(std::uint32_t seed)
        : random_(seed) {}

    // Applies the next edit: one change of the project or one undo or redo,
    // announced before the call returns.
    void ApplyNext(const KSL::InterfaceRef<BE::IProject>& project);

private:
    std::mt19937 random_;
    std::uint32_t typed_ = 0;
    // Keystrokes still to type into one caption, by stream and caption index.
    int pendingKeystrokes_ = 0;
    std::size_t typingStream_ = 0;
    std::size_t typingCaption_ = 0;
};

} // namespace host_test
