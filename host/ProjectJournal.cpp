#include "ProjectJournal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QString>

namespace host {

ProjectJournal::ProjectJournal() = default;
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

void ProjectJournal::TellStopped(const std::string& journalPath, const std::string& reason) const {
    if (policy_ && policy_->tellStopped) {
        policy_->tellStopped(journalPath, reason);
    } else {
        Report("the edit journal " + journalPath + " stopped recording: " + reason +
               "; the work since the last save is not protected until the project is saved");
    }
}

void ProjectJournal::Adopt(std::unique_ptr<BE::EditJournal> journal, const std::string& error) {
    journal_ = std::move(journal);
    if (!journal_) {
        Report("changes to this project are not journalled: " + error);
        return;
    }
    journal_->SetStopHandler([this, path = journal_->GetPath()](const std::string& reason) {
        TellStopped(path, reason);
    });
}

void ProjectJournal::Start(const KSL::InterfaceRef<BE::IProject>& project,
                           const std::string& journalPath, const std::string& fileDigest) {
    std::string error;
    std::unique_ptr<BE::EditJournal> journal =
        BE::EditJournal::Start(project, journalPath, fileDigest, error);
    Adopt(std::move(journal), error);
}

void ProjectJournal::Drop() {
    journal_.reset();
    untitledLock_.reset();
}

void ProjectJournal::Open(const KSL::InterfaceRef<BE::IProject>& project,
                          const std::string& pathUtf8, const std::string& fileDigest) {
    Drop();
    if (policy_) {
        Attach(project, pathUtf8, BE::JournalPathFor(pathUtf8), fileDigest);
    }
}

// An untitled project's changes start from an empty project, which the
// journal names by an empty digest.
void ProjectJournal::OpenUntitled(const KSL::InterfaceRef<BE::IProject>& project) {
    Drop();
    if (policy_ && !policy_->untitledJournalPath.empty()) {
        AttachUnsaved(project, policy_->untitledJournalPath, std::string());
    }
}

void ProjectJournal::OpenCopy(const KSL::InterfaceRef<BE::IProject>& project,
                              const std::string& fileDigest) {
    Drop();
    if (policy_ && !policy_->untitledJournalPath.empty()) {
        const QFileInfo untitled(QString::fromStdString(policy_->untitledJournalPath));
        AttachUnsaved(project,
                      untitled.dir().filePath(QStringLiteral("copy.journal")).toStdString(),
                      fileDigest);
    }
}

void ProjectJournal::AttachUnsaved(const KSL::InterfaceRef<BE::IProject>& project,
                                   const std::string& journalPath, const std::string& baseDigest) {
    const QString path = QString::fromStdString(journalPath);
    QDir().mkpath(QFileInfo(path).absolutePath());
    // A lock left by a run that died is stale, and taken over.
    auto lock = std::make_unique<QLockFile>(path + QStringLiteral(".lock"));
    if (!lock->tryLock(0)) {
        Report("the untitled project's journal " + journalPath +
               " is in use by another run of Corvala: this project's changes are not "
               "journalled until it is saved");
        return;
    }
    untitledLock_ = std::move(lock);
    Attach(project, std::string(), journalPath, baseDigest);
}

void ProjectJournal::Attach(const KSL::InterfaceRef<BE::IProject>& project,
                            const std::string& pathUtf8, const std::string& journalPath,
                            const std::string& fileDigest) {
    const std::string name = pathUtf8.empty() ? std::string("the untitled project") : pathUtf8;
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
        SetAside(journalPath, "the unsaved changes of " + name + " were not recovered");
        Start(project, journalPath, fileDigest);
        return;
    }
    const BE::ReplayResult replayed = BE::ReplayJournal(project, journal);
    if (journal.problem) {
        Report("recovering " + name + ": " + *journal.problem);
    }
    if (replayed.problem) {
        Report("recovering " + name + " stopped at " + *replayed.problem);
    }
    std::string error;
    std::unique_ptr<BE::EditJournal> continued =
        BE::EditJournal::Continue(project, journalPath, journal, replayed.appliedRecords, error);
    Adopt(std::move(continued), error);
}

void ProjectJournal::Saved(const KSL::InterfaceRef<BE::IProject>& project,
                           const std::string& pathUtf8, const std::string& fileDigest) {
    if (!policy_) {
        return;
    }
    const std::string journalPath = BE::JournalPathFor(pathUtf8);
    // A journal that stopped recording is started again rather than restarted.
    if (journal_ && journal_->GetPath() == journalPath && !journal_->GetProblem()) {
        journal_->Restart(fileDigest);
        return;
    }
    if (journal_) {
        journal_->Remove();
    }
    untitledLock_.reset();
    Start(project, journalPath, fileDigest);
}

void ProjectJournal::Close(bool projectClean) {
    if (journal_ && projectClean) {
        journal_->Remove();
    }
    Drop();
}

} // namespace host
