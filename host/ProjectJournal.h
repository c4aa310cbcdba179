#pragma once

#include "BE/EditJournal.h"
#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace host {

// What to do with the changes a journal holds when its project is opened.
enum class RecoveryChoice {
    kRecover,    // apply them; the journal goes on recording
    kDiscard,    // set the journal aside under a dated name and start a new one
    kLeaveAlone, // keep no journal this time; the old one stays as it is
};

struct RecoveryOffer {
    std::string projectPath;     // UTF-8
    std::size_t changeCount = 0; // the journal's intact records
};

struct JournalPolicy {
    std::function<RecoveryChoice(const RecoveryOffer&)> choose;
    // Hears what was wrong with a journal and where a set-aside one went.
    std::function<void(const std::string&)> reportProblem;
    // False keeps no journal for a project that has none (a run that shows
    // nothing and changes nothing).
    bool journalNewChanges = true;
};

// The edit journal of the project a ProjectDocument has open. A project that
// has a file is journalled beside it from the moment it is opened until it is
// closed; a clean close deletes the journal, a close with unsaved changes
// keeps it for the next open to offer.
class ProjectJournal {
public:
    ~ProjectJournal();

    // Nothing is journalled until a policy is set.
    void SetPolicy(JournalPolicy policy) { policy_ = std::move(policy); }

    // For a project just read from its file, before anything listens to it: a
    // journal found beside the file is recovered into the project or set
    // aside as the policy chooses (one for another content of the file is
    // always set aside), then the project's changes are recorded.
    void Open(const KSL::InterfaceRef<BE::IProject>& project, const std::string& pathUtf8,
              const std::string& fileDigest);
    // The project was saved to the path with that content.
    void Saved(const KSL::InterfaceRef<BE::IProject>& project, const std::string& pathUtf8,
               const std::string& fileDigest);
    // The project closes; its journal is deleted when nothing is unsaved.
    void Close(bool projectClean);

    // The journal's path, empty when none is kept.
    std::string GetPath() const;

private:
    void Report(const std::string& problem) const;
    void SetAside(const std::string& journalPath, const std::string& why) const;
    void Start(const KSL::InterfaceRef<BE::IProject>& project, const std::string& journalPath,
               const std::string& fileDigest);

    std::optional<JournalPolicy> policy_;
    std::unique_ptr<BE::EditJournal> journal_;
};

} // namespace host
