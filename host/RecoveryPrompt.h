#pragma once

#include "ProjectJournal.h"

#include <functional>
#include <string>

namespace host {

// How the command line asked to treat unsaved changes found at start.
enum class RecoveryRequest { kAsk, kRecover, kDiscard };

// Asks the person, in one message box, whether to recover the unsaved changes
// of a project (Yes, the default) or to set them aside (No).
RecoveryChoice AskToRecover(const RecoveryOffer& offer);

// The journal policy of a host run: the request decides when given; otherwise
// an interactive run asks and a run without a window (a screenshot) leaves a
// journal it finds alone and keeps none.
JournalPolicy MakeJournalPolicy(RecoveryRequest request, bool interactive,
                                std::function<void(const std::string&)> reportProblem);

} // namespace host
