// View > Time Display: each target's items grouped under Video and Audio headings, and the
// source display starting from each clip's own frame rate.
#include "TimeDisplayMenu.h"
#include "HostTestSupport.h"
#include "SequenceSettingsDialog.h"
#include "SourceMonitor.h"
#include "TimecodeEntry.h"
#include "zelcore/UTF16String.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

#include <QAction>
#include <QMenu>

#include <map>

namespace {

// The items of a target's submenu by the heading above them, and which of them are checked.
struct Group {
    int items = 0;
    int checked = 0;
};

std::map<QString, Group> GroupsOf(QMenu& menu) {
    std::map<QString, Group> groups;
    QString heading;
    for (QAction* action : menu.actions()) {
        if (action->isSeparator()) {
            heading = action->text();
            continue;
        }
        ++groups[heading].items;
        groups[heading].checked += action->isChecked();
    }
    return groups;
}

using host::TimeDisplayMenu;
using namespace zelmediatypes;

class TimeDisplayMenuTest : public host_test::HostWindowTest {
protected:
    TimeDisplayMenu& Menu() { return Window().GetTimeDisplayMenu(); }

    // The video display whose Source item is checked.
    TimeDisplay CheckedSourceVideo() {
        QMenu* source = Menu().findChildren<QMenu*>().front();
        for (QAction* action : source->actions()) {
            const auto display = static_cast<TimeDisplay>(action->data().toInt());
            if (action->isChecked() && !IsAudioTimeDisplay(display)) {
                return display;
            }
        }
        return kTimeDisplay_Unknown;
    }

    // The video display whose item of a target's submenu (0 Source, 1 Sequence) is checked.
    TimeDisplay CheckedVideo(int target) {
        for (QAction* action : Menu().findChildren<QMenu*>()[target]->actions()) {
            const auto display = static_cast<TimeDisplay>(action->data().toInt());
            if (action->isChecked() && !IsAudioTimeDisplay(display)) {
                return display;
            }
        }
        return kTimeDisplay_Unknown;
    }

    void Choose(TimeDisplay display, int target = 0) {
        for (QAction* action : Menu().findChildren<QMenu*>()[target]->actions()) {
            if (action->data().toInt() == static_cast<int>(display) && action->isCheckable()) {
                action->trigger();
            }
        }
    }

    KSL::InterfaceRef<BE::IMasterClip> AddClip(const char* name, FrameRate rate) {
        const KSL::InterfaceRef<BE::IProject>& project = Window().GetDocument().GetProject();
        BE::MasterClipSettings settings;
        settings.name = zelcore::ToUTF16(name);
        settings.frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, 640, 360);
        settings.frameRate = rate;
        settings.duration = TickTime::FromSeconds(60);
        return project->AddMasterClip(project->GetBin(0), settings, BE::UndoMode::kWithoutUndoStep);
    }
};

TEST_F(TimeDisplayMenuTest, EachTargetShowsOneCheckedItemUnderEachOfItsHeadings) {
    TimeDisplayMenu& menu = Menu();
    const QList<QMenu*> targets = menu.findChildren<QMenu*>();
    ASSERT_EQ(targets.size(), 2);
    for (QMenu* target : targets) {
        std::map<QString, Group> groups = GroupsOf(*target);
        ASSERT_EQ(groups.size(), 2U) << target->title().toStdString();
        EXPECT_GT(groups["Video"].items, 5);
        EXPECT_EQ(groups["Video"].checked, 1);
        EXPECT_EQ(groups["Audio"].items, 2);
        EXPECT_EQ(groups["Audio"].checked, 1);
    }
    // A choice moves the check within its own group only.
    QMenu* source = targets.front();
    for (QAction* action : source->actions()) {
        if (action->text() == "Milliseconds") {
            action->trigger();
        }
    }
    EXPECT_EQ(GroupsOf(*source)["Audio"].checked, 1);
    EXPECT_EQ(GroupsOf(*source)["Video"].checked, 1);
    EXPECT_EQ(menu.GetAudioTimeDisplay(TimeDisplayMenu::Target::kSource),
              kTimeDisplay_Milliseconds);
}

TEST_F(TimeDisplayMenuTest, EachClipStartsInItsOwnRatesDisplayAndKeepsAChoiceMadeForIt) {
    OpenDemo();
    const auto pal = AddClip("PAL", kFrameRate_25);
    const auto film = AddClip("Film", kFrameRate_23976);
    const auto ntsc = Clip(host_test::kCaptionedClip);
    host::SourceMonitor& monitor = Window().GetSourceMonitor();

    ClickItem(pal.Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_25Timecode);
    monitor.SetPlayhead(kFrameRate_25.FrameDuration() * 30);
    EXPECT_EQ(monitor.GetTimecodeEntry().GetField().text(), QStringLiteral("00:00:01:05"));
    ClickItem(film.Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_23976Timecode);
    ClickItem(ntsc.Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_2997DropTimecode);

    // A choice made while a clip is shown comes back with that clip.
    Choose(kTimeDisplay_Frames);
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_Frames);
    ClickItem(pal.Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_25Timecode);
    EXPECT_EQ(Menu().GetVideoTimeDisplay(TimeDisplayMenu::Target::kSource),
              kTimeDisplay_25Timecode);
    ClickItem(ntsc.Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_Frames);
    monitor.SetPlayhead(kFrameRate_2997.FrameDuration() * 1800);
    EXPECT_EQ(monitor.GetTimecodeEntry().GetField().text(), QStringLiteral("1800"));
}

TEST_F(TimeDisplayMenuTest, AClipsChosenDisplayIsSavedWithTheProject) {
    OpenDemo();
    BE::IUndoHistory& history = Window().GetDocument().GetProject()->GetUndoHistory();
    const std::size_t steps = history.GetStepCount();
    ClickItem(Clip(host_test::kPlainClip).Get());
    EXPECT_TRUE(history.IsClean()) << "showing a clip is no change";
    ClickItem(Clip(host_test::kCaptionedClip).Get());
    Choose(kTimeDisplay_2997NonDropTimecode);
    EXPECT_EQ(Clip(host_test::kCaptionedClip)->GetSettings().videoTimeDisplay,
              kTimeDisplay_2997NonDropTimecode);
    EXPECT_EQ(Clip(host_test::kPlainClip)->GetSettings().videoTimeDisplay, kTimeDisplay_Unknown);
    EXPECT_FALSE(history.IsClean()) << "the choice is not saved yet";
    EXPECT_EQ(history.GetStepCount(), steps) << "a view choice is no undo step";

    const std::string path = temp.PathOf("chosen.json");
    chooser.answers.push_back(path);
    ASSERT_TRUE(Window().GetFileActions().SaveAs());
    ASSERT_TRUE(Window().GetFileActions().OpenProjectFile(path));
    ClickItem(Clip(host_test::kPlainClip).Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_2997DropTimecode);
    ClickItem(Clip(host_test::kCaptionedClip).Get());
    EXPECT_EQ(CheckedSourceVideo(), kTimeDisplay_2997NonDropTimecode);
    EXPECT_TRUE(Window().GetDocument().GetProject()->GetUndoHistory().IsClean());
}

TEST_F(TimeDisplayMenuTest, TheSequenceMenuAndTheSettingsDialogShareTheSequencesSetting) {
    OpenDemo();
    const auto sequence = Sequence(host_test::kDemoSequence);
    ASSERT_TRUE(sequence);
    const TimeDisplay original = sequence->GetSettings().videoTimeDisplay;
    ASSERT_NE(original, kTimeDisplay_25Timecode);
    ClickItem(sequence.Get());
    EXPECT_EQ(CheckedVideo(1), original);

    // The menu's choice is the sequence's setting, one undo step.
    Choose(kTimeDisplay_25Timecode, 1);
    EXPECT_EQ(sequence->GetSettings().videoTimeDisplay, kTimeDisplay_25Timecode);
    EXPECT_EQ(CheckedVideo(1), kTimeDisplay_25Timecode);
    Window().GetDocument().Undo();
    EXPECT_EQ(sequence->GetSettings().videoTimeDisplay, original);
    EXPECT_EQ(CheckedVideo(1), original);

    // The dialog's change shows in the menu.
    host_test::WhenModalLoopRuns([] {
        auto* dialog =
            dynamic_cast<host::SequenceSettingsDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        QComboBox& video = dialog->GetVideoTimeDisplayField();
        video.setCurrentIndex(video.findData(static_cast<int>(kTimeDisplay_Frames)));
        dialog->accept();
    });
    DoubleClickItem(sequence.Get());
    EXPECT_EQ(sequence->GetSettings().videoTimeDisplay, kTimeDisplay_Frames);
    EXPECT_EQ(CheckedVideo(1), kTimeDisplay_Frames);
    EXPECT_EQ(Menu().GetVideoTimeDisplay(TimeDisplayMenu::Target::kSequence), kTimeDisplay_Frames);
}

} // namespace
