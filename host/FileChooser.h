#pragma once

#include "captionformats/CaptionFileFormat.h"

#include <string>
#include <vector>

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
    // A chooser that offers no caption files answers as a cancel.
    virtual std::string ChooseCaptionFileToImport(QWidget* parent);
    // The path ends with the extension of one of the offered formats.
    virtual std::string
    ChooseCaptionExportPath(QWidget* parent, const std::string& suggestedPath,
                            const std::vector<captionformats::CaptionFileFormat>& offered);
};

// The file dialogs of the platform. Each kind of dialog (projects, media)
// opens in the folder it last chose from, in this run or an earlier one.
class DialogFileChooser : public FileChooser {
public:
    std::string ChooseProjectToOpen(QWidget* parent) override;
    std::string ChooseProjectSavePath(QWidget* parent, const std::string& suggestedPath) override;
    std::string ChooseMediaToImport(QWidget* parent) override;
    std::string ChooseCaptionFileToImport(QWidget* parent) override;
    std::string
    ChooseCaptionExportPath(QWidget* parent, const std::string& suggestedPath,
                            const std::vector<captionformats::CaptionFileFormat>& offered) override;
};

} // namespace host
