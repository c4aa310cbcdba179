#pragma once

#include "BE/IBin.h"
#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/ISequence.h"
#include "BE/IUndoHistory.h"
#include "BE/MasterClipSettings.h"
#include "BE/SequenceSettings.h"
#include "BE/UndoMode.h"
#include "KSL/IObject.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/Caption.h"
#include "zelcaptioning/StreamFormat.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace BE {

// A project: bins of master clips (with their caption streams) and sequences,
// and the undo history of every change made to them. All changes of the
// project's structure go through these operations (caption edits through
// MZ::Captioning); each announces itself on the stations its message classes
// name, whoever made it, and again in the same terms when it is undone or
// redone. Operations throw KSL::Exception when an argument is empty or not part
// of this project, or the change is not possible; they then change nothing.
// The project answers KSL::IStation: its station carries
// BE::ProjectStructureChangedMessage and BE::UndoHistoryChangedMessage.
class IProject : public KSL::IObject {
public:
    static constexpr const char* kInterfaceID = "{E4B2C6D8-3A1F-4E5C-8B7A-9D0C1E2F3A06}";

    virtual std::size_t GetBinCount() const = 0;
    virtual KSL::InterfaceRef<IBin> GetBin(std::size_t index) const = 0;

    virtual IUndoHistory& GetUndoHistory() = 0;

    virtual KSL::InterfaceRef<IBin> AddBin(const zelcore::UTF16String& name, UndoMode mode) = 0;

    virtual KSL::InterfaceRef<IMasterClip> AddMasterClip(const KSL::InterfaceRef<IBin>& bin,
                                                         const MasterClipSettings& settings,
                                                         UndoMode mode) = 0;
    // Announces MZ::MasterClipClosedMessage: a removed clip is closed everywhere.
    virtual void RemoveMasterClip(const KSL::InterfaceRef<IMasterClip>& clip, UndoMode mode) = 0;
    // Replaces the clip's media and picture facts (a relink); announced with
    // BE::MasterClipClipChangedMessage. The caption streams stay.
    virtual void SetMasterClipSettings(const KSL::InterfaceRef<IMasterClip>& clip,
                                       const MasterClipSettings& settings, UndoMode mode) = 0;

    // Renames a bin, master clip or sequence, announced with
    // BE::PropertiesChangedMessage on MZ::kStation_Info. Throws for a caption
    // stream (it has no name) and for an empty name.
    virtual void RenameItem(const KSL::InterfaceRef<IProjectItem>& item,
                            const zelcore::UTF16String& name, UndoMode mode) = 0;

    virtual KSL::InterfaceRef<ISequence> AddSequence(const KSL::InterfaceRef<IBin>& bin,
                                                     const SequenceSettings& settings,
                                                     UndoMode mode) = 0;
    virtual void SetSequenceSettings(const KSL::InterfaceRef<ISequence>& sequence,
                                     const SequenceSettings& settings, UndoMode mode) = 0;
    // Takes the sequence out of its bin; undone, it returns to its place.
    virtual void RemoveSequence(const KSL::InterfaceRef<ISequence>& sequence, UndoMode mode) = 0;

    // A clip has at most one stream per format: adding a format it has, or
    // changing a stream to one, throws.
    virtual KSL::InterfaceRef<ICaptioningStream>
    AddCaptioningStream(const KSL::InterfaceRef<IMasterClip>& clip,
                        zelcaptioning::StreamFormat format, UndoMode mode) = 0;
    virtual void RemoveCaptioningStream(const KSL::InterfaceRef<ICaptioningStream>& stream,
                                        UndoMode mode) = 0;
    virtual void ChangeCaptioningStreamFormat(const KSL::InterfaceRef<ICaptioningStream>& stream,
                                              zelcaptioning::StreamFormat format,
                                              UndoMode mode) = 0;
    // Gives the clip a new stream of the format holding these caption objects
    // (not copies), in the place of the clip's stream of that format if it has
    // one. One change, announced as the old stream's removal and the new one's
    // addition; with kAsUndoStep one step named by the localisation key
    // actionName. Throws, changing nothing, when a caption is in a stream.
    virtual KSL::InterfaceRef<ICaptioningStream>
    PutCaptioningStream(const KSL::InterfaceRef<IMasterClip>& clip,
                        zelcaptioning::StreamFormat format,
                        const std::vector<zelcaptioning::CaptionPtr>& captions, UndoMode mode,
                        std::u16string_view actionName) = 0;
};

// A new, empty project with a clean, empty undo history.
KSL::InterfaceRef<IProject> CreateProject();

} // namespace BE
