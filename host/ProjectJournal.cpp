#include "ProjectJournal.h"

#include <QFile>
#include <QString>

namespace host {

ProjectJournal::~ProjectJournal() = default;

std::string ProjectJournal::GetPath() const {
    return journal_ ? journal_->GetPath() : std::string();
}

void ProjectJournal::Report(const std::string& problem) const {
    if (policy_ && policy_->reportProblem) {
        policy_->reportProblem(problem);
    }
}

void ProjectJournal::SetAside(const std::string& journalPath, const std::string& why) const {
    const std::optional<std::string> aside = BE::SetJournalAside(journalPath);
    Report(why + (aside ? "; it was kept as " + *aside
                        : "; it could not be renamed and stays as " + journalPath));
}

void ProjectJournal::Start(const KSL::InterfaceRef<BE::IProject>& project,
                           const std::string& journalPath, const std::string& fileDigest) {
    std::string error;
    journal_ = BE::EditJournal::Start(project, journalPath, fileDigest, error);
    if (!journal_) {
        Report("changes to this project are not journalled: " + error);
    }
}

void ProjectJournal::Open(const KSL::InterfaceRef<BE::IProject>& project,
                          const std::string& pathUtf8, const std::string& fileDigest) {
    journal_.reset();
    if (!policy_) {
        return;
    }
    const std::string journalPath = BE::JournalPathFor(pathUtf8);
    if (!QFile::exists(QString::fromStdString(journalPath))) {
        if (policy_->journalNewChanges) {
            Start(project, journalPath, fileDigest);
        }
        return;
    }
    const BE::JournalReadResult read = BE::ReadJournalFile(journalPath);
    if (!read.journal) {
        SetAside(journalPath, "the edit journal " + journalPath + " cannot be used: " + read.error);
        Start(project, journalPath, fileDigest);
        return;
    }
    const BE::JournalReading& journal = *read.journal;
    if (journal.projectDigest != fileDigest) {
        SetAside(journalPath, "the edit journal " + journalPath +
                                  " belongs to another content of the project file and was "
                                  "not applied");
        Start(project, journalPath, fileDigest);
        return;
    }
    if (journal.records.empty() && !journal.problem) {
        Start(project, journalPath, fileDigest);
        return;
    }
    const RecoveryChoice choice = policy_->choose
                                      ? policy_->choose({pathUtf8, journal.records.size()})
                                      : RecoveryChoice::kLeaveAlone;
    if (choice == RecoveryChoice::kLeaveAlone) {
        return;
    }
    if (choice == RecoveryChoice::kDiscard) {
        SetAside(journalPath, "the unsaved changes of " + pathUtf8 + " were not recovered");
        Start(project, journalPath, fileDigest);
        return;
    }
    const BE::ReplayResult replayed = BE::ReplayJournal(project, journal);
    if (journal.problem) {
        Report("recovering " + pathUtf8 + ": " + *journal.problem);
    }
    if (replayed.problem) {
        Report("recovering " + pathUtf8 + " stopped at " + *replayed.problem);
    }
    std::string error;
    journal_ =
        BE::EditJournal::Continue(project, journalPath, journal, replayed.appliedRecords, error);
    if (!journal_) {
        Report("changes to this project are not journalled: " + error);
    }
}

void ProjectJournal::Saved(const KSL::InterfaceRef<BE::IProject>& project,
                           const std::string& pathUtf8, const std::string& fileDigest) {
    if (!policy_) {
        return;
    }
    const std::string journalPath = BE::JournalPathFor(pathUtf8);
    if (journal_ && journal_->GetPath() == journalPath) {
        journal_->Restart(fileDigest);
        return;
    }
    if (journal_) {
        journal_->Remove();
    }
    Start(project, journalPath, fileDigest);
}

void ProjectJournal::Close(bool projectClean) {
    if (journal_ && projectClean) {
        journal_->Remove();
    }
    journal_.reset();
}

} // namespace host
