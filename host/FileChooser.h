#pragma once

#include <string>

class QWidget;

namespace host {

// Asks the user for files. The host shows file dialogs; tests answer with paths.
// Each function returns a UTF-8 path, or an empty string when the user cancels.
class FileChooser {
public:
    virtual ~FileChooser() = default;
    virtual std::string ChooseProjectToOpen(QWidget* parent) = 0;
    virtual std::string ChooseProjectSavePath(QWidget* parent,
                                              const std::string& suggestedPath) = 0;
    virtual std::string ChooseMediaToImport(QWidget* parent) = 0;
};

// The file dialogs of the platform. Each kind of dialog (projects, media)
// opens in the folder it last chose from, in this run or an earlier one.
class DialogFileChooser : public FileChooser {
public:
    std::string ChooseProjectToOpen(QWidget* parent) override;
    std::string ChooseProjectSavePath(QWidget* parent, const std::string& suggestedPath) override;
    std::string ChooseMediaToImport(QWidget* parent) override;
};

} // namespace host
