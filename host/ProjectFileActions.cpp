#include "ProjectFileActions.h"

#include "FileChooser.h"
#include "ProjectDocument.h"
#include "QtText.h"
#include "RecentProjects.h"
#include "UIF/MessageBox.h"

#include <QFileInfo>

namespace host {
namespace {

const zelcore::UTF16String& MessageTitle() {
    static const zelcore::UTF16String title =
        ToUTF16(Localized("$$$/Corvala/Host/AppName=Corvala"));
    return title;
}

} // namespace

ProjectFileActions::ProjectFileActions(ProjectDocument& document, FileChooser& chooser,
                                       QWidget* dialogParent, std::function<bool()> allowClose)
    : document_(document)
    , chooser_(chooser)
    , dialogParent_(dialogParent)
    , allowClose_(std::move(allowClose)) {}

bool ProjectFileActions::NewProject() {
    if (!ConfirmClose()) {
        return false;
    }
    document_.NewProject();
    return true;
}

bool ProjectFileActions::OpenProject() {
    if (!ConfirmClose()) {
        return false;
    }
    const std::string path = chooser_.ChooseProjectToOpen(dialogParent_);
    return !path.empty() && OpenProjectFile(path);
}

bool ProjectFileActions::OpenRecentProject(const std::string& pathUtf8) {
    if (!ConfirmClose()) {
        return false;
    }
    if (!OpenProjectFile(pathUtf8)) {
        ForgetRecentProject(pathUtf8);
        return false;
    }
    return true;
}

bool ProjectFileActions::OpenProjectFile(const std::string& pathUtf8) {
    if (const auto error = document_.Open(pathUtf8)) {
        ReportError(
            Localized("$$$/Corvala/Host/File/OpenFailed=The project %1 could not be "
                      "opened.\n\n%2")
                .arg(QString::fromStdString(pathUtf8), QString::fromStdString(error->ToString()))
                .toStdString());
        return false;
    }
    NoteRecentProject(pathUtf8);
    return true;
}

bool ProjectFileActions::Save() {
    if (document_.GetFilePath().empty()) {
        return SaveAs();
    }
    if (const auto error = document_.Save()) {
        ReportError(Localized("$$$/Corvala/Host/File/SaveFailed=The project could not be "
                              "saved.\n\n%1")
                        .arg(QString::fromStdString(error->ToString()))
                        .toStdString());
        return false;
    }
    NoteRecentProject(document_.GetFilePath());
    return true;
}

bool ProjectFileActions::SaveAs() {
    const std::string path = chooser_.ChooseProjectSavePath(dialogParent_, document_.GetFilePath());
    if (path.empty()) {
        return false;
    }
    if (const auto error = document_.SaveAs(path)) {
        ReportError(Localized("$$$/Corvala/Host/File/SaveFailed=The project could not be "
                              "saved.\n\n%1")
                        .arg(QString::fromStdString(error->ToString()))
                        .toStdString());
        return false;
    }
    NoteRecentProject(path);
    return true;
}

bool ProjectFileActions::ConfirmClose() {
    if (allowClose_ && !allowClose_()) {
        return false;
    }
    if (!document_.IsModified()) {
        return true;
    }
    const QString name =
        document_.GetFilePath().empty()
            ? Localized("$$$/Corvala/Host/File/Untitled=Untitled")
            : QFileInfo(QString::fromStdString(document_.GetFilePath())).fileName();
    const UIF::MBResult::Type answer = UIF::MessageBoxW(
        ToUTF16(Localized("$$$/Corvala/Host/File/AskSave=Save the changes to the project "
                          "\"%1\" before closing it?")
                    .arg(name)),
        MessageTitle(), UIF::MBFlag::kSaveDontSaveCancel, UIF::MBIcon::kWarning,
        UIF::MBResult::kYes);
    switch (answer) {
    case UIF::MBResult::kYes:
        return Save();
    case UIF::MBResult::kNo:
        document_.DiscardUnsavedChanges();
        return true;
    default:
        return false;
    }
}

void ProjectFileActions::ReportError(const std::string& problem) const {
    UIF::MessageBoxW(zelcore::ToUTF16(problem), MessageTitle(), UIF::MBFlag::kOK,
                     UIF::MBIcon::kError, UIF::MBResult::kOK);
}

} // namespace host
