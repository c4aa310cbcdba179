#pragma once

#include "BE/EditJournal.h"
#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

class QLockFile;

namespace host {

// What to do with the changes a journal holds when its project is opened.
enum class RecoveryChoice {
    kRecover,    // apply them; the journal goes on recording
    kDiscard,    // set the journal aside under a dated name and start a new one
    kLeaveAlone, // keep no journal this time; the old one stays as it is
};

struct RecoveryOffer {
    std::string projectPath;     // UTF-8; empty for a project never saved
    std::size_t changeCount = 0; // the journal's intact records
};

struct JournalPolicy {
    std::function<RecoveryChoice(const RecoveryOffer&)> choose;
    // Hears what was wrong with a journal and where a set-aside one went.
    std::function<void(const std::string&)> reportProblem;
    // Tells the person, once, that the journal stopped recording and why:
    // the work since the last save is unprotected until the next save, which
    // starts a journal again. Without it, reportProblem hears of it.
    std::function<void(const std::string& journalPath, const std::string& reason)> tellStopped;
    // False keeps no journal for a project that has none (a run that shows
    // nothing and changes nothing).
    bool journalNewChanges = true;
    // Where the journal of a project never saved lives (UTF-8); empty for none.
    std::string untitledJournalPath;
};

// The edit journal of the project a ProjectDocument has open. A project that
// has a file is journalled beside it from the moment it is opened until it is
// closed; a new project, never saved, in the policy's untitled journal until
// it is saved. A clean close deletes the journal, a close with unsaved
// changes keeps it for the next open (or the next new project) to offer.
class ProjectJournal {
public:
    ProjectJournal();
    ~ProjectJournal();

    // Nothing is journalled until a policy is set.
    void SetPolicy(JournalPolicy policy) { policy_ = std::move(policy); }

    // For a project just read from its file, before anything listens to it: a
    // journal found beside the file is recovered into the project or set
    // aside as the policy chooses (one for another content of the file is
    // always set aside), then the project's changes are recorded.
    void Open(const KSL::InterfaceRef<BE::IProject>& project, const std::string& pathUtf8,
              const std::string& fileDigest);
    // The same for a new, empty project, with the untitled journal, which
    // one run at a time uses: while another has it, the project keeps none.
    void OpenUntitled(const KSL::InterfaceRef<BE::IProject>& project);
    // The same for an unsaved copy of a file's project (the example a demo run
    // opens): its journal lives beside the untitled one, never beside the file
    // copied, and its changes start from that file's content.
    void OpenCopy(const KSL::InterfaceRef<BE::IProject>& project, const std::string& fileDigest);
    // The project was saved to the path with that content.
    void Saved(const KSL::InterfaceRef<BE::IProject>& project, const std::string& pathUtf8,
               const std::string& fileDigest);
    // The project closes; its journal is deleted when nothing is unsaved.
    void Close(bool projectClean);

    // The journal's path, empty when none is kept.
    std::string GetPath() const;

private:
    // Open's work for the journal at journalPath; pathUtf8 is empty for an
    // untitled project.
    void Attach(const KSL::InterfaceRef<BE::IProject>& project, const std::string& pathUtf8,
                const std::string& journalPath, const std::string& fileDigest);
    // Attach for a project without a file, with the journal at journalPath
    // locked so that one run at a time uses it.
    void AttachUnsaved(const KSL::InterfaceRef<BE::IProject>& project,
                       const std::string& journalPath, const std::string& baseDigest);
    void Report(const std::string& problem) const;
    // Arms the journal just made, or reports why there is none.
    void Adopt(std::unique_ptr<BE::EditJournal> journal, const std::string& error);
    void TellStopped(const std::string& journalPath, const std::string& reason) const;
    void SetAside(const std::string& journalPath, const std::string& why) const;
    void Start(const KSL::InterfaceRef<BE::IProject>& project, const std::string& journalPath,
               const std::string& fileDigest);

    // Drops the journal, and the untitled journal's lock with it.
    void Drop();

    std::optional<JournalPolicy> policy_;
    std::unique_ptr<BE::EditJournal> journal_;
    // Held while this run uses the untitled journal.
    std::unique_ptr<QLockFile> untitledLock_;
};

} // namespace host
