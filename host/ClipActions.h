#pragma once

#include "BE/IBin.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/StreamFormat.h"

#include <functional>
#include <string>

class QWidget;

namespace host {

class FileChooser;
class ProjectDocument;
class ProjectPanel;

// The commands on the project's content: importing media as a master clip,
// adding a caption stream to the selected clip, closing the selected clip, and
// a sequence's settings. Every change is one undo step of the project.
class ClipActions {
public:
    using ProblemReporter = std::function<void(const std::string& problem)>;

    ClipActions(ProjectDocument& document, ProjectPanel& panel, FileChooser& chooser,
                QWidget* dialogParent, ProblemReporter reportProblem);

    // Adds the chosen file's clip to the bin of the selected item (or the first
    // bin, or a new bin) and selects it.
    bool ImportMedia();
    bool ImportMediaFile(const std::string& pathUtf8);

    // Whether the selected clip can take a stream of the format (it has none yet).
    bool CanAddCaptionStream(zelcaptioning::StreamFormat format) const;
    void AddCaptionStream(zelcaptioning::StreamFormat format);

    bool CanCloseClip() const;
    // Announces the selected clip closed everywhere; it stays in the project.
    void CloseClip();

    // Adds a sequence to the bin of the selected item (or the first bin, or a
    // new bin), in the picture of the selected clip when one is selected, and
    // selects it.
    void NewSequence();

    // Shows the sequence's settings in a dialog and applies them on OK.
    void EditSequenceSettings(const KSL::InterfaceRef<BE::ISequence>& sequence);

private:
    KSL::InterfaceRef<BE::IBin> TargetBin();

    ProjectDocument& document_;
    ProjectPanel& panel_;
    FileChooser& chooser_;
    QWidget* dialogParent_;
    ProblemReporter reportProblem_;
};

} // namespace host
