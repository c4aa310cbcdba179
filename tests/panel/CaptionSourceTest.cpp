// Which stream the panel shows of a clip, as its streams come and go.
#include "CaptionSource.h"

#include "BE/IProject.h"

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionSource;
using zelcaptioning::kStreamFormat_CEA608;
using zelcaptioning::kStreamFormat_CEA708;
using zelcaptioning::kStreamFormat_OpenCaptions;

class CaptionSourceTest : public testing::Test {
protected:
    CaptionSourceTest()
        : project(BE::CreateProject()) {
        const auto bin = project->AddBin(u"Footage", BE::UndoMode::kWithoutUndoStep);
        BE::MasterClipSettings settings;
        settings.name = u"clip";
        settings.frameRect = {0, 0, 1920, 1080};
        clip = project->AddMasterClip(bin, settings, BE::UndoMode::kWithoutUndoStep);
        source.SetMasterClip(clip);
    }
    KSL::InterfaceRef<BE::ICaptioningStream> Add(zelcaptioning::StreamFormat format) {
        return project->AddCaptioningStream(clip, format, BE::UndoMode::kWithoutUndoStep);
    }

    KSL::InterfaceRef<BE::IProject> project;
    KSL::InterfaceRef<BE::IMasterClip> clip;
    CaptionSource source;
};

TEST_F(CaptionSourceTest, AClipWithoutStreamsShowsNoneUntilOneIsAdded) {
    source.ResetFormats();
    EXPECT_FALSE(source.ResolveStream());
    EXPECT_EQ(source.GetChosenFormat(), zelcaptioning::kStreamFormat_None);
    EXPECT_EQ(source.GetSourceVideoFormat(), zelmediatypes::kTimeDisplay_Unknown);
    EXPECT_FALSE(source.NeedsFormatRefresh());

    const auto added = Add(kStreamFormat_CEA708);
    EXPECT_TRUE(source.NeedsFormatRefresh());
    EXPECT_TRUE(source.RefreshFormats());
    EXPECT_EQ(source.ResolveStream(), added);
    EXPECT_FALSE(source.NeedsFormatRefresh());
}

TEST_F(CaptionSourceTest, AChosenFormatStaysWhileOfferedAndANewOneWinsOtherwise) {
    const auto closed = Add(kStreamFormat_CEA708);
    source.ResetFormats();
    ASSERT_EQ(source.GetChosenFormat(), kStreamFormat_CEA708);

    Add(kStreamFormat_CEA608);
    EXPECT_FALSE(source.RefreshFormats()) << "a smaller format does not take over";
    EXPECT_EQ(source.ResolveStream(), closed);
    EXPECT_EQ(source.GetAvailableFormats().size(), 2u);

    project->RemoveCaptioningStream(closed, BE::UndoMode::kWithoutUndoStep);
    const auto open = Add(kStreamFormat_OpenCaptions);
    EXPECT_TRUE(source.RefreshFormats());
    EXPECT_EQ(source.GetChosenFormat(), kStreamFormat_OpenCaptions)
        << "the newly added format wins over the one already there";
    EXPECT_EQ(source.ResolveStream(), open);

    source.ResetFormats();
    EXPECT_EQ(source.GetChosenFormat(), kStreamFormat_CEA608) << "a fresh look takes the smallest";
}

TEST_F(CaptionSourceTest, ATrackItemSourceOffersOnlyItsStream) {
    Add(kStreamFormat_CEA608);
    const auto open = Add(kStreamFormat_OpenCaptions);
    source.SetSource(CaptionSource::kSourceKind_TrackItem, open);
    source.ResetFormats();
    EXPECT_EQ(source.GetAvailableFormats(),
              std::set<zelcaptioning::StreamFormat>{kStreamFormat_OpenCaptions});
    EXPECT_EQ(source.ResolveStream(), open);
}

TEST_F(CaptionSourceTest, FormatSettersSayWhetherTheyChangedAnything) {
    source.ResetFormats();
    EXPECT_TRUE(source.SetSourceVideoFormat(zelmediatypes::kTimeDisplay_25Timecode));
    EXPECT_FALSE(source.SetSourceVideoFormat(zelmediatypes::kTimeDisplay_25Timecode));
    EXPECT_FALSE(source.SetSourceFlag(true)) << "flags start set";
    EXPECT_TRUE(source.SetSourceFlag(false));
    source.ResetFormats();
    EXPECT_EQ(source.GetSourceVideoFormat(), zelmediatypes::kTimeDisplay_Unknown);
    EXPECT_TRUE(source.GetSourceFlag());
}

} // namespace
