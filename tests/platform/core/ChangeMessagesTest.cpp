#include "BE/CaptionMessages.h"
#include "BE/IProject.h"
#include "BE/ProjectMessages.h"
#include "BE/StreamMessages.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Captioning.h"
#include "MZ/Stations.h"
#include "ModelTestSupport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using platform_test::MakeCaption;
using platform_test::Seconds;
using testing::ElementsAreArray;

template <typename M> std::pair<KSL::MessageID, std::string> Named(const char* name) {
    return {M::ID(), name};
}

// Records "station: message" for the model's change messages on one station,
// leaving out the undo history's own announcements.
class StationTap : public KSL::Listener {
public:
    StationTap(std::vector<std::string>& lines, KSL::StationID station, std::string name)
        : lines_(lines)
        , name_(std::move(name)) {
        KSL::StationUtils::AddListener(station, this);
    }

protected:
    bool HandleMessage(const KSL::Message& message) override {
        static const std::map<KSL::MessageID, std::string> kNames{
            Named<BE::CaptionsChangedMessage>("CaptionsChanged"),
            Named<BE::CaptionsMovedMessage>("CaptionsMoved"),
            Named<BE::CaptioningStreamChangedMessage>("StreamChanged"),
            Named<BE::CaptioningStreamFormatModifiedMessage>("StreamFormatModified"),
            Named<BE::MasterClipClipChangedMessage>("ClipChanged"),
            Named<BE::PropertiesChangedMessage>("PropertiesChanged"),
            Named<BE::ProjectStructureChangedMessage>("StructureChanged"),
            Named<MZ::MasterClipClosedMessage>("MasterClipClosed"),
            Named<MZ::SequenceSettingsChangedMessage>("SequenceSettingsChanged"),
        };
        if (message.GetMessageID() == BE::UndoHistoryChangedMessage::ID()) {
            return true;
        }
        const auto found = kNames.find(message.GetMessageID());
        lines_.push_back(name_ + ": " + (found == kNames.end() ? "?" : found->second));
        return true;
    }

private:
    std::vector<std::string>& lines_;
    std::string name_;
};

struct MutationCase {
    const char* name;
    std::function<void()> mutate;
    std::vector<std::string> applied;
    std::vector<std::string> undone;
};

class ChangeMessagesTest : public testing::Test {
protected:
    platform_test::ClipFixture fixture = platform_test::MakeClipFixture();
    BE::IProject& project = *fixture.project;
    KSL::InterfaceRef<BE::ICaptioningStream> stream = project.AddCaptioningStream(
        fixture.clip, zelcaptioning::kStreamFormat_CEA608, BE::UndoMode::kWithoutUndoStep);
    KSL::InterfaceRef<BE::ISequence> sequence =
        project.AddSequence(fixture.bin, {}, BE::UndoMode::kWithoutUndoStep);
    zelcaptioning::CaptionPtr first = MakeCaption(Seconds(1), Seconds(2), "first");
    zelcaptioning::CaptionPtr second = MakeCaption(Seconds(3), Seconds(4), "second");
    std::vector<std::string> lines;
    std::vector<std::unique_ptr<StationTap>> taps;

    ChangeMessagesTest() {
        MZ::Captioning captioning(stream);
        captioning.AddCaption(first);
        captioning.AddCaption(second);
        const std::pair<KSL::StationID, const char*> stations[] = {
            {KSL::StationOf(fixture.project), "project"},
            {KSL::StationOf(fixture.clip), "clip"},
            {KSL::StationOf(stream), "stream"},
            {KSL::StationOf(sequence), "sequence"},
            {MZ::kStation_Info, "info"},
            {MZ::kStation_MasterClipActivation, "clipActivation"},
            {MZ::kStation_SequenceActivation, "sequenceActivation"},
        };
        for (const auto& [station, name] : stations) {
            taps.push_back(std::make_unique<StationTap>(lines, station, name));
        }
    }

    std::vector<std::string> Take() { return std::exchange(lines, {}); }
};

// Each mutation kind announces itself on its stations; undo announces the
// reverse change and redo the change again, in the same terms.
TEST_F(ChangeMessagesTest, EveryMutationKindAnnouncesItselfAndItsUndoAndRedo) {
    const BE::UndoMode step = BE::UndoMode::kAsUndoStep;
    const std::vector<MutationCase> cases = {
        {"add bin",
         [&] { project.AddBin(zelcore::ToUTF16("b"), step); },
         {"project: StructureChanged"},
         {"project: StructureChanged"}},
        {"add clip",
         [&] { project.AddMasterClip(fixture.bin, platform_test::TestClipSettings("c"), step); },
         {"project: StructureChanged"},
         // Taken back, the clip is gone, so it is closed everywhere.
         {"clipActivation: MasterClipClosed", "project: StructureChanged"}},
        {"remove clip",
         [&] { project.RemoveMasterClip(fixture.clip, step); },
         {"clipActivation: MasterClipClosed", "project: StructureChanged"},
         {"project: StructureChanged"}},
        {"clip settings",
         [&] {
             project.SetMasterClipSettings(fixture.clip, platform_test::TestClipSettings("r"),
                                           step);
         },
         {"clip: ClipChanged", "info: PropertiesChanged"},
         {"clip: ClipChanged", "info: PropertiesChanged"}},
        {"add sequence",
         [&] { project.AddSequence(fixture.bin, {}, step); },
         {"project: StructureChanged"},
         {"project: StructureChanged"}},
        {"sequence settings",
         [&] {
             BE::SequenceSettings settings;
             settings.frameAlignment = BE::FrameAlignment::kFree;
             project.SetSequenceSettings(sequence, settings, step);
         },
         {"info: PropertiesChanged", "sequence: SequenceSettingsChanged",
          "sequenceActivation: SequenceSettingsChanged"},
         {"info: PropertiesChanged", "sequence: SequenceSettingsChanged",
          "sequenceActivation: SequenceSettingsChanged"}},
        {"rename clip",
         [&] { project.RenameItem(fixture.clip, zelcore::ToUTF16("renamed"), step); },
         {"info: PropertiesChanged"},
         {"info: PropertiesChanged"}},
        {"remove sequence",
         [&] { project.RemoveSequence(sequence, step); },
         {"project: StructureChanged"},
         {"project: StructureChanged"}},
        {"add stream",
         [&] {
             project.AddCaptioningStream(fixture.clip, zelcaptioning::kStreamFormat_Teletext, step);
         },
         {"clip: StreamChanged"},
         {"clip: StreamChanged"}},
        {"remove stream",
         [&] { project.RemoveCaptioningStream(stream, step); },
         {"clip: StreamChanged"},
         {"clip: StreamChanged"}},
        {"stream format",
         [&] {
             project.ChangeCaptioningStreamFormat(stream, zelcaptioning::kStreamFormat_CEA708,
                                                  step);
         },
         {"clip: StreamFormatModified", "clip: StreamChanged"},
         {"clip: StreamFormatModified", "clip: StreamChanged"}},
        {"add caption",
         [&] { MZ::Captioning(stream).AddCaption(MakeCaption(Seconds(5), Seconds(6), "new")); },
         {"stream: CaptionsChanged"},
         {"stream: CaptionsChanged"}},
        {"replace caption",
         [&] { MZ::Captioning(stream).ReplaceCaption(first, second, true, zelcore::ToUTF16("")); },
         {"stream: CaptionsChanged"},
         {"stream: CaptionsChanged"}},
        {"retime caption",
         [&] {
             MZ::Captioning(stream).UpdateCaption(first, Seconds(7), Seconds(1), false,
                                                  zelmediatypes::kTimeDisplay_Unknown);
         },
         {"stream: CaptionsChanged"},
         {"stream: CaptionsChanged"}},
        {"remove caption",
         [&] { MZ::Captioning(stream).RemoveCaption(second, false); },
         {"stream: CaptionsChanged"},
         {"stream: CaptionsChanged"}},
        {"ripple remove caption",
         [&] { MZ::Captioning(stream).RemoveCaption(first, true); },
         {"stream: CaptionsChanged", "stream: CaptionsMoved"},
         {"stream: CaptionsMoved", "stream: CaptionsChanged"}},
    };
    for (const MutationCase& c : cases) {
        SCOPED_TRACE(c.name);
        c.mutate();
        EXPECT_THAT(Take(), ElementsAreArray(c.applied));
        project.GetUndoHistory().Undo();
        EXPECT_THAT(Take(), ElementsAreArray(c.undone));
        project.GetUndoHistory().Redo();
        EXPECT_THAT(Take(), ElementsAreArray(c.applied));
        project.GetUndoHistory().Undo();
        Take();
    }
}

TEST_F(ChangeMessagesTest, ChangesWithoutAnUndoStepAreAnnouncedAlike) {
    const std::size_t stepsBefore = project.GetUndoHistory().GetStepCount();
    MZ::Captioning(stream).ReplaceCaption(first, second, false, zelcore::ToUTF16(""));
    project.AddBin(zelcore::ToUTF16("b"), BE::UndoMode::kWithoutUndoStep);
    EXPECT_THAT(Take(), ElementsAreArray({"stream: CaptionsChanged", "project: StructureChanged"}));
    EXPECT_EQ(project.GetUndoHistory().GetStepCount(), stepsBefore);
}

} // namespace
