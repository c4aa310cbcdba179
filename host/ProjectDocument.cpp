#include "ProjectDocument.h"

#include "BE/ProjectMessages.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Project.h"
#include "MZ/Stations.h"

namespace host {
namespace {

void Notify(const std::function<void()>& callback) {
    if (callback) {
        callback();
    }
}

} // namespace

ProjectDocument::ProjectDocument() {
    Replace(BE::CreateProject(), {});
}

ProjectDocument::~ProjectDocument() {
    journal_.Close(!IsModified());
    if (MZ::GetProject() == project_) {
        MZ::SetProject({});
    }
}

bool ProjectDocument::IsModified() const {
    return !project_->GetUndoHistory().IsClean();
}

void ProjectDocument::NewProject() {
    journal_.Close(!IsModified());
    KSL::InterfaceRef<BE::IProject> project = BE::CreateProject();
    journal_.OpenUntitled(project);
    Replace(std::move(project), {});
}

std::optional<BE::ProjectFileError> ProjectDocument::Open(const std::string& pathUtf8) {
    BE::OpenProjectResult opened = BE::ReadProjectFile(pathUtf8);
    if (opened.error) {
        return opened.error;
    }
    journal_.Close(!IsModified());
    journal_.Open(opened.project, pathUtf8, opened.fileDigest);
    Replace(std::move(opened.project), pathUtf8);
    return std::nullopt;
}

std::optional<BE::ProjectFileError> ProjectDocument::OpenCopy(const std::string& pathUtf8) {
    BE::OpenProjectResult opened = BE::ReadProjectFile(pathUtf8);
    if (opened.error) {
        return opened.error;
    }
    journal_.Close(!IsModified());
    journal_.OpenCopy(opened.project, opened.fileDigest);
    Replace(std::move(opened.project), {});
    return std::nullopt;
}

std::optional<BE::ProjectFileError> ProjectDocument::Save() {
    return SaveAs(filePath_);
}

std::optional<BE::ProjectFileError> ProjectDocument::SaveAs(const std::string& pathUtf8) {
    // Caption editors hold typed text until they commit it; the file must have it.
    CommitPendingEdits();
    std::string digest;
    if (auto error = BE::WriteProjectFile(project_, pathUtf8, &digest)) {
        return error;
    }
    journal_.Saved(project_, pathUtf8, digest);
    filePath_ = pathUtf8;
    Notify(observer_.documentStateChanged);
    return std::nullopt;
}

void ProjectDocument::Undo() {
    CommitPendingEdits();
    project_->GetUndoHistory().Undo();
}

void ProjectDocument::Redo() {
    CommitPendingEdits();
    project_->GetUndoHistory().Redo();
}

void ProjectDocument::CommitPendingEdits() {
    KSL::StationUtils::BroadcastMessage(MZ::kStation_Info, MZ::CaptionCommitEditsMessage());
}

bool ProjectDocument::HandleMessage(const KSL::Message& message) {
    if (message.As<BE::UndoHistoryChangedMessage>()) {
        Notify(observer_.documentStateChanged);
        return true;
    }
    return false;
}

void ProjectDocument::Replace(KSL::InterfaceRef<BE::IProject> project, std::string pathUtf8) {
    Notify(observer_.projectAboutToBeReplaced);
    if (project_) {
        KSL::StationUtils::RemoveListener(KSL::StationOf(project_), this);
    }
    project_ = std::move(project);
    filePath_ = std::move(pathUtf8);
    MZ::SetProject(project_);
    KSL::StationUtils::AddListener(KSL::StationOf(project_), this);
    Notify(observer_.projectReplaced);
    Notify(observer_.documentStateChanged);
}

} // namespace host
