#pragma once

#include <functional>
#include <string>

class QWidget;

namespace host {

class FileChooser;
class ProjectDocument;

// The File menu's project commands. Problems are reported in message boxes
// titled "Corvala"; each command returns whether it was carried out.
class ProjectFileActions {
public:
    // allowClose asks the plug-ins' handlers whether the project may close.
    ProjectFileActions(ProjectDocument& document, FileChooser& chooser, QWidget* dialogParent,
                       std::function<bool()> allowClose);

    bool NewProject();
    bool OpenProject();
    bool OpenProjectFile(const std::string& pathUtf8);
    // Opens a project of File > Open Recent; one that cannot be opened is
    // reported and leaves the recent list.
    bool OpenRecentProject(const std::string& pathUtf8);
    // Asks for a path first when the project has no file. Projects opened and
    // saved join the recent projects.
    bool Save();
    bool SaveAs();

    // Before the project is closed or replaced: true when it may go. A project
    // with changes asks whether to save them (Save saves, and a failed or
    // cancelled save keeps the project; Don't Save discards; Cancel keeps it).
    bool ConfirmClose();

private:
    void ReportError(const std::string& problem) const;

    ProjectDocument& document_;
    FileChooser& chooser_;
    QWidget* dialogParent_;
    std::function<bool()> allowClose_;
};

} // namespace host
