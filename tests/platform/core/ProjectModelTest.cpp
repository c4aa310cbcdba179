#include "BE/IProject.h"

#include "BE/CaptioningStreamQueries.h"
#include "BE/ProjectMessages.h"
#include "BE/StreamMessages.h"
#include "KSL/Exception.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/MasterClipActions.h"
#include "MZ/MergeClipUtils.h"
#include "MZ/Project.h"
#include "MZ/SequenceActions.h"
#include "MZ/Stations.h"
#include "ModelTestSupport.h"
#include "PlatformTestSupport.h"
#include "zelcaptioning/StreamFormat.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace {

using platform_test::RecordingListener;
using testing::ElementsAre;
using zelcaptioning::StreamFormat;

constexpr StreamFormat kCea608 = zelcaptioning::kStreamFormat_CEA608;
constexpr StreamFormat kCea708 = zelcaptioning::kStreamFormat_CEA708;
constexpr StreamFormat kOpen = zelcaptioning::kStreamFormat_OpenCaptions;

class ProjectModelTest : public testing::Test {
protected:
    platform_test::ClipFixture fixture = platform_test::MakeClipFixture();
    BE::IProject& project = *fixture.project;
    RecordingListener clipListener;

    ProjectModelTest() {
        KSL::StationUtils::AddListener(KSL::StationOf(fixture.clip), &clipListener);
    }

    std::set<StreamFormat> Formats() const {
        std::set<StreamFormat> formats;
        BE::QueryAvailableCaptioningStreamFormats(fixture.clip, formats);
        return formats;
    }
};

TEST_F(ProjectModelTest, StreamsAreKeptOnePerFormatInFormatOrder) {
    auto open = project.AddCaptioningStream(fixture.clip, kOpen, BE::UndoMode::kAsUndoStep);
    auto cea608 = project.AddCaptioningStream(fixture.clip, kCea608, BE::UndoMode::kAsUndoStep);
    EXPECT_THAT(Formats(), ElementsAre(kCea608, kOpen));
    EXPECT_EQ(fixture.clip->GetCaptioningStream(0), cea608);
    EXPECT_EQ(BE::CaptioningStreamFromMasterClip(fixture.clip, kOpen), open);
    EXPECT_FALSE(BE::CaptioningStreamFromMasterClip(fixture.clip, kCea708));
    EXPECT_EQ(open->GetMasterClip(), fixture.clip);
    EXPECT_THROW(project.AddCaptioningStream(fixture.clip, kOpen, BE::UndoMode::kAsUndoStep),
                 KSL::Exception);
    EXPECT_THROW(project.ChangeCaptioningStreamFormat(open, kCea608, BE::UndoMode::kAsUndoStep),
                 KSL::Exception);
    EXPECT_EQ(open->GetGridRowCount(), 0);
    EXPECT_GT(cea608->GetGridRowCount(), 0);
}

TEST_F(ProjectModelTest, StreamChangesAreAnnouncedOnTheClipStationAndUndoneInKind) {
    auto stream = project.AddCaptioningStream(fixture.clip, kCea608, BE::UndoMode::kAsUndoStep);
    project.ChangeCaptioningStreamFormat(stream, kOpen, BE::UndoMode::kAsUndoStep);
    project.RemoveCaptioningStream(stream, BE::UndoMode::kAsUndoStep);
    EXPECT_THAT(Formats(), ElementsAre());
    EXPECT_FALSE(stream->GetMasterClip());
    project.GetUndoHistory().Undo();
    project.GetUndoHistory().Undo();
    EXPECT_THAT(Formats(), ElementsAre(kCea608));
    EXPECT_EQ(BE::CaptioningStreamFromMasterClip(fixture.clip, kCea608), stream);

    std::vector<std::string> kinds;
    for (const auto id : clipListener.received) {
        kinds.push_back(id == BE::CaptioningStreamChangedMessage::ID()          ? "changed"
                        : id == BE::CaptioningStreamFormatModifiedMessage::ID() ? "format"
                                                                                : "other");
    }
    EXPECT_THAT(kinds, ElementsAre("changed", "format", "changed", "changed", "changed", "format",
                                   "changed"));
}

TEST_F(ProjectModelTest, FormatModifiedMessageNamesTheOldFormat) {
    auto stream = project.AddCaptioningStream(fixture.clip, kCea608, BE::UndoMode::kAsUndoStep);
    std::vector<StreamFormat> oldFormats;
    clipListener.onMessage = [&](const KSL::Message& m) {
        if (const auto* modified = m.As<BE::CaptioningStreamFormatModifiedMessage>()) {
            EXPECT_EQ(modified->GetStream(), stream);
            EXPECT_EQ(modified->GetMasterClip(), fixture.clip);
            oldFormats.push_back(modified->GetOldFormat());
        }
    };
    project.ChangeCaptioningStreamFormat(stream, kOpen, BE::UndoMode::kAsUndoStep);
    project.GetUndoHistory().Undo();
    EXPECT_THAT(oldFormats, ElementsAre(kCea608, kOpen));
    EXPECT_EQ(stream->GetStreamFormat(), kCea608);
}

TEST_F(ProjectModelTest, ObjectsOfAnotherProjectOrEmptyReferencesAreRefused) {
    platform_test::ClipFixture other = platform_test::MakeClipFixture();
    EXPECT_THROW(project.AddCaptioningStream(other.clip, kCea608, BE::UndoMode::kAsUndoStep),
                 KSL::Exception);
    EXPECT_THROW(project.AddMasterClip(other.bin, platform_test::TestClipSettings("x"),
                                       BE::UndoMode::kAsUndoStep),
                 KSL::Exception);
    EXPECT_THROW(project.RemoveMasterClip(nullptr, BE::UndoMode::kAsUndoStep), KSL::Exception);
    EXPECT_EQ(project.GetUndoHistory().GetStepCount(), 0u);
}

TEST_F(ProjectModelTest, RemovingAClipClosesItAndUndoPutsItBackInPlace) {
    auto second = project.AddMasterClip(fixture.bin, platform_test::TestClipSettings("second"),
                                        BE::UndoMode::kAsUndoStep);
    RecordingListener activation;
    KSL::StationUtils::AddListener(MZ::kStation_MasterClipActivation, &activation);
    project.RemoveMasterClip(fixture.clip, BE::UndoMode::kAsUndoStep);
    EXPECT_THAT(activation.received, ElementsAre(MZ::MasterClipClosedMessage::ID()));
    EXPECT_EQ(fixture.bin->GetMasterClipCount(), 1u);
    EXPECT_FALSE(fixture.clip->GetBin());
    project.GetUndoHistory().Undo();
    EXPECT_EQ(fixture.bin->GetMasterClip(0), fixture.clip);
    EXPECT_EQ(fixture.bin->GetMasterClip(1), second);
}

TEST_F(ProjectModelTest, RenamingNamesTheStepByKindAndRefusesStreamsAndEmptyNames) {
    const auto sequence = project.AddSequence(fixture.bin, {}, BE::UndoMode::kWithoutUndoStep);
    const auto stream = project.AddCaptioningStream(
        fixture.clip, zelcaptioning::kStreamFormat_CEA608, BE::UndoMode::kWithoutUndoStep);
    const std::pair<KSL::InterfaceRef<BE::IProjectItem>, std::string> cases[] = {
        {fixture.bin, "Rename Bin"},
        {fixture.clip, "Rename Master Clip"},
        {sequence, "Rename Sequence"}};
    for (const auto& [item, step] : cases) {
        const zelcore::UTF16String before = item->GetName();
        project.RenameItem(item, zelcore::ToUTF16("new name"), BE::UndoMode::kAsUndoStep);
        EXPECT_EQ(zelcore::ToUTF8(item->GetName()), "new name");
        EXPECT_EQ(zelcore::ToUTF8(project.GetUndoHistory().GetUndoStepName()), step);
        project.GetUndoHistory().Undo();
        EXPECT_EQ(item->GetName(), before);
    }
    const std::size_t steps = project.GetUndoHistory().GetStepCount();
    EXPECT_THROW(project.RenameItem(stream, zelcore::ToUTF16("x"), BE::UndoMode::kAsUndoStep),
                 KSL::Exception);
    EXPECT_THROW(project.RenameItem(fixture.clip, {}, BE::UndoMode::kAsUndoStep), KSL::Exception);
    EXPECT_EQ(project.GetUndoHistory().GetStepCount(), steps);
}

TEST_F(ProjectModelTest, ARemovedSequenceReturnsToItsPlaceWhenUndone) {
    const auto first = project.AddSequence(fixture.bin, {}, BE::UndoMode::kWithoutUndoStep);
    const auto second = project.AddSequence(fixture.bin, {}, BE::UndoMode::kWithoutUndoStep);
    project.RemoveSequence(first, BE::UndoMode::kAsUndoStep);
    ASSERT_EQ(fixture.bin->GetSequenceCount(), 1u);
    EXPECT_EQ(zelcore::ToUTF8(project.GetUndoHistory().GetUndoStepName()), "Remove Sequence");
    project.GetUndoHistory().Undo();
    EXPECT_EQ(fixture.bin->GetSequence(0), first);
    EXPECT_EQ(fixture.bin->GetSequence(1), second);
    EXPECT_THROW(project.RemoveSequence(nullptr, BE::UndoMode::kAsUndoStep), KSL::Exception);
}

TEST_F(ProjectModelTest, SequenceSettingsChangesReachInfoAndSequenceStations) {
    BE::SequenceSettings settings;
    settings.name = zelcore::ToUTF16("Edit");
    auto sequence = project.AddSequence(fixture.bin, settings, BE::UndoMode::kAsUndoStep);
    RecordingListener info, activation, own;
    bool concernsSequence = false;
    info.onMessage = [&](const KSL::Message& m) {
        if (const auto* changed = m.As<BE::PropertiesChangedMessage>()) {
            concernsSequence = changed->Concerns(sequence.Get());
        }
    };
    KSL::StationUtils::AddListener(MZ::kStation_Info, &info);
    KSL::StationUtils::AddListener(MZ::kStation_SequenceActivation, &activation);
    KSL::StationUtils::AddListener(KSL::StationOf(sequence), &own);
    settings.frameAlignment = BE::FrameAlignment::kFree;
    project.SetSequenceSettings(sequence, settings, BE::UndoMode::kAsUndoStep);
    EXPECT_TRUE(concernsSequence);
    EXPECT_THAT(activation.received, ElementsAre(MZ::SequenceSettingsChangedMessage::ID()));
    EXPECT_THAT(own.received, ElementsAre(MZ::SequenceSettingsChangedMessage::ID()));
    project.GetUndoHistory().Undo();
    EXPECT_EQ(sequence->GetSettings().frameAlignment, BE::FrameAlignment::kAlignedToFrames);
}

TEST_F(ProjectModelTest, SequenceActionsAnswerTheSequenceTimeDisplays) {
    using namespace zelmediatypes;
    namespace actions = MZ::SequenceActions;
    BE::SequenceSettings settings;
    settings.frameRate = kFrameRate_25;
    settings.videoTimeDisplay = kTimeDisplay_Unknown;
    settings.audioTimeDisplay = kTimeDisplay_Milliseconds;
    settings.frameAlignment = BE::FrameAlignment::kFree;
    auto sequence = project.AddSequence(fixture.bin, settings, BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(sequence, false), kTimeDisplay_Unknown);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(sequence, true), kTimeDisplay_25Timecode);
    EXPECT_EQ(actions::GetAudioTimeDisplayFormat(sequence), kTimeDisplay_Milliseconds);
    EXPECT_FALSE(actions::GetFrameAlignment(sequence));

    settings.frameRate = FrameRate::FromFramesPerSecond(15, 1).value();
    project.SetSequenceSettings(sequence, settings, BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(sequence, true), kTimeDisplay_Frames);
    settings.frameRate = kFrameRate_5994;
    settings.videoTimeDisplay = kTimeDisplay_5994NonDropTimecode;
    settings.frameAlignment = BE::FrameAlignment::kAlignedToFrames;
    project.SetSequenceSettings(sequence, settings, BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(sequence, true), kTimeDisplay_5994NonDropTimecode);
    EXPECT_TRUE(actions::GetFrameAlignment(sequence));

    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(nullptr, true), kTimeDisplay_Unknown);
    EXPECT_EQ(actions::GetAudioTimeDisplayFormat(nullptr), kTimeDisplay_Unknown);
    EXPECT_FALSE(actions::GetFrameAlignment(nullptr));
}

TEST_F(ProjectModelTest, ClipsStartInTheTimecodeOfTheirOwnRate) {
    using namespace zelmediatypes;
    namespace actions = MZ::MasterClipActions;
    BE::MasterClipSettings settings = fixture.clip->GetSettings();
    settings.frameRate = kFrameRate_25;
    project.SetMasterClipSettings(fixture.clip, settings, BE::UndoMode::kWithoutUndoStep);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(fixture.clip), kTimeDisplay_25Timecode);
    settings.frameRate = kFrameRate_2997;
    project.SetMasterClipSettings(fixture.clip, settings, BE::UndoMode::kWithoutUndoStep);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(fixture.clip), kTimeDisplay_2997DropTimecode);
    EXPECT_EQ(actions::GetAudioTimeDisplayFormat(fixture.clip), kTimeDisplay_AudioSamples48kHz);
    EXPECT_EQ(actions::GetVideoTimeDisplayFormat(nullptr), kTimeDisplay_Unknown);
    EXPECT_EQ(actions::GetAudioTimeDisplayFormat(nullptr), kTimeDisplay_Unknown);
}

TEST_F(ProjectModelTest, ClipSettingsChangeIsAnnouncedAsAClipChange) {
    BE::MasterClipSettings relinked = fixture.clip->GetSettings();
    relinked.media = {BE::MediaSource::Kind::kFile, "/media/interview.mov"};
    relinked.kind = BE::MasterClipKind::kMerged;
    project.SetMasterClipSettings(fixture.clip, relinked, BE::UndoMode::kAsUndoStep);
    EXPECT_THAT(clipListener.received, ElementsAre(BE::MasterClipClipChangedMessage::ID()));
    EXPECT_TRUE(MZ::MergeClipUtils::IsMergedClip(fixture.clip));
    project.GetUndoHistory().Undo();
    EXPECT_FALSE(MZ::MergeClipUtils::IsMergedClip(fixture.clip));
    EXPECT_FALSE(MZ::MergeClipUtils::IsMergedClip(nullptr));
}

TEST_F(ProjectModelTest, UndoHistoryChangesAreAnnouncedOnTheProjectStation) {
    RecordingListener projectListener;
    KSL::StationUtils::AddListener(KSL::StationOf(fixture.project), &projectListener);
    project.AddBin(zelcore::ToUTF16("More"), BE::UndoMode::kAsUndoStep);
    project.GetUndoHistory().Undo();
    EXPECT_THAT(projectListener.received, ElementsAre(BE::ProjectStructureChangedMessage::ID(),
                                                      BE::UndoHistoryChangedMessage::ID(),
                                                      BE::ProjectStructureChangedMessage::ID(),
                                                      BE::UndoHistoryChangedMessage::ID()));
    EXPECT_EQ(project.GetBinCount(), 1u);
}

TEST_F(ProjectModelTest, CurrentProjectIsSetAndClearedByTheHost) {
    EXPECT_FALSE(MZ::GetProject());
    MZ::SetProject(fixture.project);
    EXPECT_EQ(MZ::GetProject(), fixture.project);
}

} // namespace
