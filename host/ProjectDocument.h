#pragma once

#include "BE/IProject.h"
#include "BE/ProjectFile.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Listener.h"
#include "ProjectJournal.h"

#include <functional>
#include <optional>
#include <string>

namespace host {

// The project the host has open, the file it belongs to, and whether it has
// changed since it was opened or saved. Replacing the project makes it the
// platform's current project (MZ::SetProject).
class ProjectDocument : private KSL::Listener {
public:
    // What the host window hears of the document.
    struct Observer {
        // Around every replacement of the project (new and open).
        std::function<void()> projectAboutToBeReplaced;
        std::function<void()> projectReplaced;
        // The file path or the modified state changed.
        std::function<void()> documentStateChanged;
    };

    // Starts with a new, empty project.
    ProjectDocument();
    ProjectDocument(const ProjectDocument&) = delete;
    ProjectDocument& operator=(const ProjectDocument&) = delete;
    ~ProjectDocument() override;

    void SetObserver(Observer observer) { observer_ = std::move(observer); }
    // Journals the changes of projects opened from here on (see ProjectJournal).
    void SetJournalPolicy(JournalPolicy policy) { journal_.SetPolicy(std::move(policy)); }
    // The open project's journal file; empty when none is kept.
    std::string GetJournalPath() const { return journal_.GetPath(); }
    // The person chose to close the project without saving: its journal goes too.
    void DiscardUnsavedChanges() { journal_.Close(true); }

    const KSL::InterfaceRef<BE::IProject>& GetProject() const { return project_; }
    // UTF-8; empty while the project has never been saved.
    const std::string& GetFilePath() const { return filePath_; }
    // Whether the project changed since it was created, opened or saved.
    bool IsModified() const;

    // A new, empty project, journalled as the untitled project: the policy
    // is offered the untitled journal's changes first.
    void NewProject();
    // On failure the open project stays as it was.
    std::optional<BE::ProjectFileError> Open(const std::string& pathUtf8);
    // The file's project as an unsaved copy: saving it asks for a file, and
    // neither the file nor anything beside it is ever written.
    std::optional<BE::ProjectFileError> OpenCopy(const std::string& pathUtf8);
    // Saves to the project's file; the caller asks for a path first when there is none.
    std::optional<BE::ProjectFileError> Save();
    // Saves to the path, which becomes the project's file on success.
    std::optional<BE::ProjectFileError> SaveAs(const std::string& pathUtf8);

    // Undo and redo of the project's history. Caption editors commit the text
    // they hold first (MZ::CaptionCommitEditsMessage), so it is part of the history.
    void Undo();
    void Redo();

private:
    bool HandleMessage(const KSL::Message& message) override;
    static void CommitPendingEdits();
    void Replace(KSL::InterfaceRef<BE::IProject> project, std::string pathUtf8);

    KSL::InterfaceRef<BE::IProject> project_;
    std::string filePath_;
    Observer observer_;
    ProjectJournal journal_;
};

} // namespace host
