#include "ClipActions.h"

#include "FileChooser.h"
#include "KSL/Exception.h"
#include "ML/MediaProbe.h"
#include "ProjectDocument.h"
#include "ProjectGestures.h"
#include "ProjectPanel.h"
#include "QtText.h"
#include "SequenceSettingsDialog.h"
#include "zelmediatypes/TimeDisplay.h"

namespace host {
namespace {

// The bin holding the sequence, or an empty reference.
KSL::InterfaceRef<BE::IBin> BinOfSequence(const BE::IProject& project,
                                          const BE::ISequence* sequence) {
    for (std::size_t b = 0; b < project.GetBinCount(); ++b) {
        KSL::InterfaceRef<BE::IBin> bin = project.GetBin(b);
        for (std::size_t s = 0; s < bin->GetSequenceCount(); ++s) {
            if (bin->GetSequence(s).Get() == sequence) {
                return bin;
            }
        }
    }
    return {};
}

} // namespace

ClipActions::ClipActions(ProjectDocument& document, ProjectPanel& panel, FileChooser& chooser,
                         QWidget* dialogParent, ProblemReporter reportProblem)
    : document_(document)
    , panel_(panel)
    , chooser_(chooser)
    , dialogParent_(dialogParent)
    , reportProblem_(std::move(reportProblem)) {}

bool ClipActions::ImportMedia() {
    const std::string path = chooser_.ChooseMediaToImport(dialogParent_);
    return !path.empty() && ImportMediaFile(path);
}

bool ClipActions::ImportMediaFile(const std::string& pathUtf8) {
    const ML::MediaProbe probe = ML::ProbeMediaFile(pathUtf8);
    if (!probe.settings) {
        reportProblem_(Localized("$$$/Corvala/Host/Import/Failed=The media file could not be "
                                 "imported.\n\n%1")
                           .arg(QString::fromStdString(probe.problem))
                           .toStdString());
        return false;
    }
    const KSL::InterfaceRef<BE::IBin> bin = TargetBin();
    const auto clip =
        document_.GetProject()->AddMasterClip(bin, *probe.settings, BE::UndoMode::kAsUndoStep);
    panel_.SelectItem(clip.Get());
    return true;
}

bool ClipActions::CanAddCaptionStream(zelcaptioning::StreamFormat format) const {
    const auto clip = panel_.GetSelectedMasterClip();
    return clip && !clip->FindCaptioningStream(format);
}

void ClipActions::AddCaptionStream(zelcaptioning::StreamFormat format) {
    const auto clip = panel_.GetSelectedMasterClip();
    if (!clip) {
        return;
    }
    try {
        document_.GetProject()->AddCaptioningStream(clip, format, BE::UndoMode::kAsUndoStep);
    } catch (const KSL::Exception& error) {
        reportProblem_(error.what());
    }
}

bool ClipActions::CanCloseClip() const {
    return static_cast<bool>(panel_.GetSelectedMasterClip());
}

void ClipActions::CloseClip() {
    if (const auto clip = panel_.GetSelectedMasterClip()) {
        ProjectGestures::AnnounceClipClosed(clip);
    }
}

void ClipActions::NewSequence() {
    const KSL::InterfaceRef<BE::IProject>& project = document_.GetProject();
    std::size_t sequences = 0;
    for (std::size_t b = 0; b < project->GetBinCount(); ++b) {
        sequences += project->GetBin(b)->GetSequenceCount();
    }
    BE::SequenceSettings settings;
    settings.name =
        ToUTF16(Localized("$$$/Corvala/Host/Sequence/NewName=Sequence %1").arg(sequences + 1));
    settings.frameRect = {0, 0, 1920, 1080};
    if (const auto clip = panel_.GetSelectedMasterClip()) {
        settings.frameRect = clip->GetSettings().frameRect;
        settings.frameRate = clip->GetSettings().frameRate;
        settings.videoTimeDisplay = zelmediatypes::TimecodeDisplayForFrameRate(settings.frameRate);
    }
    const auto sequence = project->AddSequence(TargetBin(), settings, BE::UndoMode::kAsUndoStep);
    panel_.SelectItem(sequence.Get());
}

void ClipActions::EditSequenceSettings(const KSL::InterfaceRef<BE::ISequence>& sequence) {
    if (!sequence) {
        return;
    }
    SequenceSettingsDialog dialog(sequence->GetSettings(), dialogParent_);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const BE::SequenceSettings settings = dialog.GetSettings();
    if (settings != sequence->GetSettings()) {
        document_.GetProject()->SetSequenceSettings(sequence, settings, BE::UndoMode::kAsUndoStep);
    }
}

KSL::InterfaceRef<BE::IBin> ClipActions::TargetBin() {
    const KSL::InterfaceRef<BE::IProject>& project = document_.GetProject();
    const KSL::InterfaceRef<BE::IProjectItem> selected = panel_.GetSelectedItem();
    if (auto bin = selected.QueryInterface<BE::IBin>()) {
        return bin;
    }
    if (auto clip = panel_.GetSelectedMasterClip(); clip && clip->GetBin()) {
        return clip->GetBin();
    }
    if (auto bin = BinOfSequence(*project, selected.QueryInterface<BE::ISequence>().Get())) {
        return bin;
    }
    if (project->GetBinCount() > 0) {
        return project->GetBin(0);
    }
    return project->AddBin(ToUTF16(Localized("$$$/Corvala/Host/Import/BinName=Media")),
                           BE::UndoMode::kAsUndoStep);
}

} // namespace host
