#pragma once

#include "ProjectJournal.h"

#include <functional>
#include <string>

namespace host {

// How the command line asked to treat unsaved changes found at start.
enum class RecoveryRequest { kAsk, kRecover, kDiscard };

// Asks the person, in one message box, whether to recover the unsaved changes
// of a project, or of the untitled project (Yes, the default), or to set them
// aside (No).
RecoveryChoice AskToRecover(const RecoveryOffer& offer);

// Tells the person, in a message box, that the journal stopped recording,
// which file and why, and that the work is unprotected until the next save.
void TellJournalStopped(const std::string& journalPath, const std::string& reason);

// Where this user's untitled project keeps its journal: "untitled.journal" in
// the application's data folder (QStandardPaths::AppDataLocation, under
// $XDG_DATA_HOME on Linux); empty when there is no such folder.
std::string UntitledJournalPath();

// The journal policy of a host run: the request decides when given; otherwise
// an interactive run asks and a run without a window (a screenshot) leaves a
// journal it finds alone and keeps none. An interactive run tells of a
// journal that stopped in a message box, another reports it.
JournalPolicy MakeJournalPolicy(RecoveryRequest request, bool interactive,
                                std::function<void(const std::string&)> reportProblem);

} // namespace host
