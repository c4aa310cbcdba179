// The source monitor: the selected clip's real frame at the playhead with its
// caption drawn over it, following the project panel and the time display menu.
#include "SourceMonitor.h"
#include "HostCommands.h"
#include "HostTestSupport.h"
#include "MZ/Captioning.h"
#include "MonitorPicture.h"
#include "TimeDisplayMenu.h"
#include "UIF/HotTimecodeControl.h"

#include <QLabel>

#include <gmock/gmock.h>

namespace {

using host_test::HostWindowTest;
using testing::HasSubstr;

class SourceMonitorTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
        clip = Clip(host_test::kCaptionedClip);
        ASSERT_TRUE(clip);
    }

    host::SourceMonitor& Monitor() { return Window().GetSourceMonitor(); }

    // The composed picture once the frame asked for has arrived.
    QImage PictureAt(zelmediatypes::TickTime time) {
        Monitor().SetPlayhead(time);
        EXPECT_TRUE(host_test::WaitUntil([this] { return !Monitor().HasPendingFrame(); }));
        return Monitor().GetPicture().GetComposedImage();
    }

    KSL::InterfaceRef<BE::IMasterClip> clip;
};

TEST_F(SourceMonitorTest, ShowsTheSelectedClipsFrameWithTheCaptionOfThePlayhead) {
    EXPECT_TRUE(Monitor().GetPicture().GetComposedImage().isNull());
    ClickItem(clip.Get());
    ASSERT_EQ(Monitor().GetClip(), clip);
    ASSERT_EQ(Monitor().GetStream(), clip->GetCaptioningStream(0));

    std::vector<MZ::Captioning::CaptionBlockTimes> times;
    MZ::Captioning(Monitor().GetStream()).GetCaptionBlockTimes(times);
    ASSERT_FALSE(times.empty());
    const zelmediatypes::TickTime captioned = times[0].beginTime;
    const zelmediatypes::TickTime between = times[0].endTime;
    ASSERT_FALSE(MZ::Captioning(Monitor().GetStream()).GetCaptionBlock(between));

    const QImage withCaption = PictureAt(captioned);
    const QImage without = PictureAt(between);
    ASSERT_FALSE(without.isNull());
    EXPECT_EQ(withCaption.size(), without.size());
    // The clip's picture fills the fitted frame: more than a few colours.
    EXPECT_NE(without.pixel(without.width() / 8, without.height() / 2),
              without.pixel(without.width() * 7 / 8, without.height() / 2));
    // Caption text lies on the lower part of the picture only.
    const QRect top(0, 0, without.width(), without.height() / 3);
    EXPECT_EQ(withCaption.copy(top), without.copy(top));
    EXPECT_NE(withCaption, without);
}

TEST_F(SourceMonitorTest, FollowsOpenedStreamsClosedClipsAndTheSourceTimeDisplay) {
    const auto openStream = clip->GetCaptioningStream(1);
    DoubleClickItem(openStream.Get());
    EXPECT_EQ(Monitor().GetStream(), openStream);
    // Selecting the clip again keeps the stream opened last.
    ClickItem(clip.Get());
    EXPECT_EQ(Monitor().GetStream(), openStream);

    const zelmediatypes::FrameRate rate = clip->GetSettings().frameRate;
    Monitor().SetPlayhead(rate.FrameDuration() * 1800);
    EXPECT_THAT(Monitor().GetTimecodeLabel().text().toStdString(), HasSubstr("00:01:00;02"));

    host_test::MessageLog displays(UIF::kStation_SourceTimeDisplayChanged);
    QAction* frames = nullptr;
    for (QMenu* menu : Window().GetTimeDisplayMenu().findChildren<QMenu*>()) {
        if (menu->title() != "Source") {
            continue;
        }
        for (QAction* action : menu->actions()) {
            if (action->data().toInt() == zelmediatypes::kTimeDisplay_Frames) {
                frames = action;
            }
        }
    }
    ASSERT_NE(frames, nullptr);
    frames->trigger();
    const auto changes = displays.Of<UIF::HotTimecodeVideoTimeDisplayChangedMessage>();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0]->GetTimeDisplay(), zelmediatypes::kTimeDisplay_Frames);
    EXPECT_THAT(Monitor().GetTimecodeLabel().text().toStdString(), HasSubstr("1800"));
    EXPECT_EQ(
        Window().GetTimeDisplayMenu().GetVideoTimeDisplay(host::TimeDisplayMenu::Target::kSource),
        zelmediatypes::kTimeDisplay_Frames);

    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_CloseClip));
    EXPECT_FALSE(Monitor().GetClip());
    EXPECT_TRUE(Monitor().GetTimecodeLabel().text().isEmpty());
}

} // namespace
