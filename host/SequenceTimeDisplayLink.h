#pragma once

#include "BE/IProject.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Listener.h"
#include "zelmediatypes/TimeDisplay.h"

#include <functional>

namespace host {

// Makes the sequence time display one setting: the selected sequence's own (its settings, as
// the sequence settings dialog edits them). Selecting a sequence or changing its settings
// announces its displays on the sequence time display station, where View > Time Display >
// Sequence follows them; a display announced there (the menu's choice) is written into the
// selected sequence's settings as an undo step.
class SequenceTimeDisplayLink : private KSL::Listener {
public:
    using ProjectGetter = std::function<KSL::InterfaceRef<BE::IProject>()>;

    explicit SequenceTimeDisplayLink(ProjectGetter project);
    ~SequenceTimeDisplayLink() override;

private:
    bool HandleMessage(const KSL::Message& message) override;
    void AnnounceSettings();
    void WriteDisplay(zelmediatypes::TimeDisplay display);

    ProjectGetter project_;
    KSL::InterfaceRef<BE::ISequence> sequence_;
};

} // namespace host
