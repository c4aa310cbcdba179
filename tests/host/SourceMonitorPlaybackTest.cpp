// Playing in the source monitor: the audio clock drives the frames shown, the transport keys in
// the monitor and in the Captions panel, typed times, and playing the selected caption.
#include "CapturingAudioOutput.h"
#include "HostCommands.h"
#include "HostTestSupport.h"
#include "KSL/StationUtils.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Captioning.h"
#include "MZ/PlayheadMessages.h"
#include "MZ/Stations.h"
#include "MonitorPicture.h"
#include "SourceMonitor.h"
#include "TimecodeEntry.h"

#include <QApplication>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <gmock/gmock.h>

namespace {

using host_test::HostWindowTest;
using host_test::WaitUntil;
using testing::HasSubstr;
using zelmediatypes::TickTime;

constexpr std::int64_t kSampleRateHz = 48000;

// Records the playhead announcements of the source monitor.
class PlayheadLog : public KSL::Listener {
public:
    PlayheadLog() { KSL::StationUtils::AddListener(MZ::kStation_SourcePlayhead, this); }
    ~PlayheadLog() override {
        KSL::StationUtils::RemoveListener(MZ::kStation_SourcePlayhead, this);
    }

    struct Entry {
        TickTime time;
        zelcaptioning::CaptionPtr caption;
        bool isPlaying;
    };
    std::vector<Entry> entries;

protected:
    bool HandleMessage(const KSL::Message& message) override {
        if (const auto* moved = message.As<MZ::SourcePlayheadMovedMessage>()) {
            entries.push_back({moved->GetTime(), moved->GetCaption(), moved->IsPlaying()});
            return true;
        }
        return false;
    }
};

class SourceMonitorPlaybackTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
        clip = Clip(host_test::kCaptionedClip);
        ASSERT_TRUE(clip);
        ClickItem(clip.Get());
        ASSERT_EQ(Monitor().GetClip(), clip);
        Monitor().GetPlayback().SetAudioOutput(std::unique_ptr<ML::AudioOutput>(output));
        frameDuration = clip->GetSettings().frameRate.FrameDuration();
        Monitor().setFocus();
    }

    host::SourceMonitor& Monitor() { return Window().GetSourceMonitor(); }
    TickTime Frame(std::int64_t index) const { return frameDuration * index; }

    // A key pressed where the keyboard focus is.
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClick(focus, static_cast<Qt::Key>(key), modifiers);
    }

    // The sound device plays `frames` more sample frames, a quarter of a video frame at a
    // time; after each step the monitor shows the frame the audio clock has reached.
    void Hear(std::int64_t frames, TickTime start) {
        const std::int64_t quarterFrame =
            kSampleRateHz * frameDuration.GetTicks() / zelmediatypes::kTicksPerSecond / 4;
        while (frames > 0) {
            std::int64_t heard = 0;
            ASSERT_TRUE(WaitUntil([&] {
                heard = output->Hear(std::min(frames, quarterFrame));
                return heard > 0;
            }));
            frames -= heard;
            const TickTime clock = Monitor().GetPlayback().GetClockTime();
            const TickTime due =
                start + Frame((clock - start).GetTicks() / frameDuration.GetTicks());
            ASSERT_TRUE(WaitUntil([&] { return Monitor().GetPlayhead() == due; }))
                << "clock " << clock.GetTicks() << ", playhead "
                << Monitor().GetPlayhead().GetTicks();
        }
    }

    QMenu& ViewMenu() { return *Window().GetMainWindow().findChild<QMenu*>("viewMenu"); }

    KSL::InterfaceRef<BE::IMasterClip> clip;
    TickTime frameDuration;
    media_test::CapturingAudioOutput* output = new media_test::CapturingAudioOutput;
};

TEST_F(SourceMonitorPlaybackTest, SpacePlaysByTheAudioClockWithTheCaptionsAtTheirTimes) {
    std::vector<MZ::Captioning::CaptionBlockTimes> times;
    MZ::Captioning(Monitor().GetStream()).GetCaptionBlockTimes(times);
    ASSERT_FALSE(times.empty());
    const TickTime captionBegin = times[0].beginTime;
    Monitor().SetPlayhead(captionBegin - frameDuration * 40);
    const TickTime start = Monitor().GetPlayhead();

    PlayheadLog announced;
    Press(Qt::Key_Space);
    ASSERT_TRUE(Monitor().IsPlaying());
    EXPECT_EQ(Monitor().GetPlaybackSpeed(), 1);
    // The first frame is shown at once; the generated source sounds as silence, and the clock
    // is the sound heard.
    ASSERT_TRUE(WaitUntil([&] { return Monitor().GetPlayback().GetStatistics().framesShown > 0; }));
    ASSERT_TRUE(WaitUntil([&] { return output->GetWrittenFrameCount() > 0; }));
    Hear(kSampleRateHz, start);
    // One second of sound: the frame of that second is shown.
    EXPECT_EQ(Monitor().GetPlayhead(),
              start + Frame(zelmediatypes::kTicksPerSecond / frameDuration.GetTicks()));
    EXPECT_EQ(Monitor().GetPlayback().GetStatistics().framesDropped, 0U);
    EXPECT_FALSE(Monitor().GetPicture().GetComposedImage().isNull());
    for (const float sample : output->GetSamples()) {
        ASSERT_EQ(sample, 0.F);
    }

    // Into the first caption: the announcement names it.
    Hear(kSampleRateHz / 2, start);
    ASSERT_GE(Monitor().GetPlayhead(), captionBegin);
    ASSERT_FALSE(announced.entries.empty());
    EXPECT_TRUE(announced.entries.back().isPlaying);
    EXPECT_EQ(announced.entries.back().time, Monitor().GetPlayhead());
    ASSERT_TRUE(announced.entries.back().caption);
    EXPECT_EQ(announced.entries.back().caption->GetBeginTime(), captionBegin);

    const TickTime shown = Monitor().GetPlayhead();
    const QImage playing = Monitor().GetPicture().GetComposedImage();
    Press(Qt::Key_Space);
    EXPECT_FALSE(Monitor().IsPlaying());
    EXPECT_FALSE(output->IsOpen());
    EXPECT_EQ(Monitor().GetPlayhead(), shown);
    EXPECT_FALSE(announced.entries.back().isPlaying);

    // The played picture is the one the paused monitor composes: the frame and its caption.
    Press(Qt::Key_Right);
    Press(Qt::Key_Left);
    ASSERT_TRUE(WaitUntil([&] { return !Monitor().HasPendingFrame(); }));
    EXPECT_EQ(Monitor().GetPicture().GetComposedImage(), playing);
}

TEST_F(SourceMonitorPlaybackTest, ShuttleKeysDoubleTheSpeedEachWayAndKStops) {
    Monitor().SetPlayhead(Frame(300));
    const std::vector<std::pair<int, double>> presses = {
        {Qt::Key_L, 1},     {Qt::Key_L, 2},     {Qt::Key_L, 4},  {Qt::Key_L, 8}, {Qt::Key_L, 8},
        {Qt::Key_K, 0},     {Qt::Key_J, -1},    {Qt::Key_J, -2}, {Qt::Key_L, 1}, {Qt::Key_J, -1},
        {Qt::Key_Space, 0}, {Qt::Key_Space, 1}, {Qt::Key_K, 0}};
    for (const auto& [key, speed] : presses) {
        Press(key);
        EXPECT_EQ(Monitor().GetPlaybackSpeed(), speed)
            << QKeySequence(key).toString().toStdString();
        EXPECT_EQ(Monitor().IsPlaying(), speed != 0);
    }
    // Only normal speed is heard.
    Press(Qt::Key_L);
    EXPECT_TRUE(output->IsOpen());
    Press(Qt::Key_L);
    EXPECT_FALSE(output->IsOpen());
    // Backwards the playhead goes back.
    Press(Qt::Key_K);
    const TickTime paused = Monitor().GetPlayhead();
    Press(Qt::Key_J);
    ASSERT_TRUE(WaitUntil([&] { return Monitor().GetPlayhead() < paused; }));
    Press(Qt::Key_K);
}

TEST_F(SourceMonitorPlaybackTest, ArrowsStepFramesAndSecondsHomeAndEndGoToTheEnds) {
    const TickTime lastFrame = clip->GetSettings().duration - frameDuration;
    Monitor().SetPlayhead(Frame(100));
    Press(Qt::Key_Right);
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(101));
    Press(Qt::Key_Left);
    Press(Qt::Key_Left);
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(99));
    // A second on, to the start of the frame shown then.
    Press(Qt::Key_Right, Qt::ShiftModifier);
    const std::int64_t frameTicks = frameDuration.GetTicks();
    const std::int64_t secondOn = (99 * frameTicks + zelmediatypes::kTicksPerSecond) / frameTicks;
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(secondOn));
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Monitor().GetPlayhead(),
              Frame((secondOn * frameTicks - zelmediatypes::kTicksPerSecond) / frameTicks));

    Press(Qt::Key_End);
    EXPECT_EQ(Monitor().GetPlayhead(), lastFrame);
    Press(Qt::Key_Right);
    EXPECT_EQ(Monitor().GetPlayhead(), lastFrame);
    Press(Qt::Key_Home);
    EXPECT_EQ(Monitor().GetPlayhead(), TickTime());
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Monitor().GetPlayhead(), TickTime());

    // A step pauses playback.
    Press(Qt::Key_Space);
    ASSERT_TRUE(Monitor().IsPlaying());
    Press(Qt::Key_Right);
    EXPECT_FALSE(Monitor().IsPlaying());
}

TEST_F(SourceMonitorPlaybackTest, TransportKeysReachTheMonitorFromItsPictureAndTheCaptionsPanel) {
    Window().GetProjectPanel().setFocus();
    QTest::mouseClick(&Monitor().GetPicture(), Qt::LeftButton);
    EXPECT_TRUE(Monitor().hasFocus());

    ASSERT_TRUE(Window().OpenPanel("captions"));
    QDockWidget* captions = DockTitled("Captions");
    ASSERT_NE(captions, nullptr);
    captions->widget()->setFocus();
    ASSERT_TRUE(captions->isAncestorOf(QApplication::focusWidget()));
    Press(Qt::Key_L);
    EXPECT_EQ(Monitor().GetPlaybackSpeed(), 1);
    Press(Qt::Key_K);
    EXPECT_FALSE(Monitor().IsPlaying());
    EXPECT_TRUE(captions->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(SourceMonitorPlaybackTest, ATypedTimeMovesThePlayheadAndABadOneIsKeptWithItsProblem) {
    host::TimecodeEntry& entry = Monitor().GetTimecodeEntry();
    QLineEdit& field = entry.GetField();
    EXPECT_FALSE(field.accessibleName().isEmpty());
    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, "00:00:10;00");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(300));
    EXPECT_TRUE(entry.GetProblem().isEmpty());
    EXPECT_THAT(Monitor().GetTimecodeLabel().text().toStdString(), HasSubstr("00:00:10;00"));
    // Back in the monitor the keys go on from there.
    EXPECT_TRUE(Monitor().hasFocus());
    Press(Qt::Key_Right);
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(301));
    EXPECT_EQ(field.text(), QStringLiteral("00:00:10;01"));

    field.setFocus();
    field.selectAll();
    QTest::keyClicks(&field, "00:00:10;45");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(301));
    EXPECT_EQ(field.text(), QStringLiteral("00:00:10;45"));
    EXPECT_THAT(entry.GetProblem().toStdString(), HasSubstr("00:00:10;45"));

    // A short form counts from the right: seconds and frames.
    field.selectAll();
    QTest::keyClicks(&field, "2;00");
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(Monitor().GetPlayhead(), Frame(60));
    EXPECT_TRUE(entry.GetProblem().isEmpty());
}

TEST_F(SourceMonitorPlaybackTest, PlayingTheSelectedCaptionStopsAtItsEnd) {
    const zelcaptioning::CaptionPtr caption = clip->GetCaptioningStream(0)->GetCaption(1);
    ASSERT_TRUE(caption);
    EXPECT_FALSE(ChooseMenuCommand(ViewMenu(), host::kHostCommand_PlaySelectedCaption));
    KSL::StationUtils::BroadcastMessage(MZ::kStation_CaptionSelection,
                                        MZ::CaptionSelectedMessage(clip, caption));
    ASSERT_TRUE(ChooseMenuCommand(ViewMenu(), host::kHostCommand_PlaySelectedCaption));
    ASSERT_TRUE(Monitor().IsPlaying());
    ASSERT_TRUE(WaitUntil([&] { return Monitor().GetPlayhead() == caption->GetBeginTime(); }));

    const TickTime length = caption->GetEndTime() - caption->GetBeginTime();
    // The device plays on in quarter frames until the playback stops by itself.
    ASSERT_TRUE(WaitUntil([&] {
        output->Hear(kSampleRateHz * frameDuration.GetTicks() / zelmediatypes::kTicksPerSecond / 4);
        return !Monitor().IsPlaying();
    }));
    EXPECT_LT(Monitor().GetPlayhead(), caption->GetEndTime());
    EXPECT_GE(Monitor().GetPlayhead(), caption->GetEndTime() - frameDuration);
    EXPECT_GT(length, frameDuration);

    // The command's default key plays it again.
    Press(Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(Monitor().IsPlaying());
    EXPECT_EQ(Monitor().GetPlayhead(), caption->GetBeginTime());
}

} // namespace
