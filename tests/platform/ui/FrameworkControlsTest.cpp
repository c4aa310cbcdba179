#include "KSL/Listener.h"
#include "KSL/StationUtils.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/ColorPickerControl.h"
#include "UIF/HotTimecodeControl.h"
#include "UIF/ScrollBar.h"
#include "UIF/TimeDisplayChoice.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"
#include "zelmediatypes/FrameRate.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace platform_ui_test {
namespace {

using zelmediatypes::TickTime;

// Collects what a station delivers, as readable lines.
class StationLog : public KSL::Listener {
public:
    explicit StationLog(const KSL::StationID& station) {
        KSL::StationUtils::AddListener(station, this);
    }
    std::vector<std::string> lines;

protected:
    bool HandleMessage(const KSL::Message& message) override {
        if (auto* scroll = message.As<UIF::ScrollVerticalMessage>()) {
            lines.push_back("scroll " + std::to_string(scroll->GetPosition()));
        } else if (auto* color = message.As<UIF::ColorPickerControlChangedMessage>()) {
            const zelui::ui::UI_Color c = color->GetColor();
            lines.push_back("color " + std::to_string(c.red) + "," + std::to_string(c.green) + "," +
                            std::to_string(c.blue));
        } else if (message.As<UIF::ColorPickerSwatchClickedMessage>()) {
            lines.push_back("swatch");
        } else if (message.As<UIF::ColorPickerSwatchStartEyedropperModeMessage>()) {
            lines.push_back("eyedropper start");
        } else if (message.As<UIF::ColorPickerSwatchEndEyedropperModeMessage>()) {
            lines.push_back("eyedropper end");
        } else if (auto* time = message.As<UIF::HotTimecodeChangedMessage>()) {
            lines.push_back("time " + std::to_string(time->GetTime().GetTicks()) + " flags " +
                            std::to_string(time->GetFlags()));
        } else if (auto* text = message.As<UIF::HotTimecodeEditTextMessage>()) {
            lines.push_back("text " + zelcore::ToUTF8(text->GetText()));
        } else if (auto* video = message.As<UIF::HotTimecodeVideoTimeDisplayChangedMessage>()) {
            lines.push_back("video display " + std::to_string(video->GetTimeDisplay()));
        } else if (auto* audio = message.As<UIF::HotTimecodeAudioTimeDisplayChangedMessage>()) {
            lines.push_back("audio display " + std::to_string(audio->GetTimeDisplay()));
        }
        return true;
    }
};

class FrameworkControlsTest : public testing::Test {
protected:
    FrameworkControlsTest() {
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"framework", {});
        view = creator.view.get();
        ShowWorkspace();
    }
    RecordingCreator creator{u"framework"};
    UIF::TabView* view = nullptr;
};

TEST_F(FrameworkControlsTest, ScrollBarBroadcastsUserMovesOnlyWithinItsRange) {
    UIF::ScrollBar bar(*view);
    bar.SetBounds(UIF::Rect::FromSize(300, 0, UIF::ScrollBar::GetDefaultSize(), 200));
    bar.SetMinimum(0);
    bar.SetMaximum(750);
    bar.SetPageSize(300);
    bar.SetStepSize(75);
    StationLog log(bar.GetStationID());

    bar.SetPosition(1000);
    EXPECT_EQ(bar.GetPosition(), 450) << "the last page ends at the maximum";
    bar.SetPosition(150);
    EXPECT_TRUE(log.lines.empty()) << "the owner's moves are not announced";

    auto* widget = qobject_cast<QScrollBar*>(platform::ui::WidgetOf(bar));
    ASSERT_NE(widget, nullptr);
    widget->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    widget->triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"scroll 225", "scroll 0"}));

    bar.SetPageSize(1000);
    EXPECT_EQ(bar.GetPosition(), 0);
    EXPECT_EQ(bar.GetMaximum(), 750);
}

TEST_F(FrameworkControlsTest, ColorPickerPresetsSwatchAndEyedropper) {
    UIF::ColorPickerControl picker(*view);
    picker.SetBounds(UIF::Rect::FromSize(10, 40, 150, 20));
    picker.SetColor({10, 20, 30, 255});
    StationLog log(picker.GetStationID());
    EXPECT_EQ(picker.GetColor(), (zelui::ui::UI_Color{10, 20, 30, 255}));
    QWidget* widget = platform::ui::WidgetOf(picker);

    // The second preset, after the 20-pixel swatch.
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(20 + 4 + 14 + 2 + 5, 10));
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_EQ(log.lines, (std::vector<std::string>{"color 255,255,0", "swatch"}));
    EXPECT_EQ(picker.GetColor(), (zelui::ui::UI_Color{255, 255, 0, 255}));

    log.lines.clear();
    Drag(*widget, QPoint(10, 10), QPoint(100, 10));
    ASSERT_EQ(log.lines.size(), 3u);
    EXPECT_EQ(log.lines.front(), "eyedropper start");
    EXPECT_EQ(log.lines[1].rfind("color ", 0), 0u);
    EXPECT_EQ(log.lines.back(), "eyedropper end");

    log.lines.clear();
    picker.SetEnabled(false);
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    EXPECT_TRUE(log.lines.empty());
}

class TimecodeTest : public FrameworkControlsTest {
protected:
    TimecodeTest() {
        control.Create(*view, UIF::Rect::FromSize(80, 6, 85, 17), TickTime::FromSeconds(10),
                       UIF::TimecodeInfo{zelmediatypes::kTimeDisplay_25Timecode,
                                         zelmediatypes::kFrameRate_25.FrameDuration(), true},
                       1);
        widget = platform::ui::WidgetOf(control);
    }

    QLineEdit* OpenEditor() {
        QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(10, 8));
        return widget->findChild<QLineEdit*>();
    }

    UIF::HotTimecodeControl control;
    QWidget* widget = nullptr;
    StationLog times{control.GetStationID()};
    StationLog texts{control.GetTimecodeEditTextStationID()};
};

TEST_F(TimecodeTest, TypedTimecodeIsReportedOnBothStations) {
    EXPECT_EQ(control.GetInlineEditText(), u"00:00:10:00");
    QLineEdit* editor = OpenEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(control.IsEditing());
    editor->clear();
    QTest::keyClicks(editor, "12:05");
    EXPECT_EQ(control.GetInlineEditText(), u"12:05");
    QTest::keyClick(editor, Qt::Key_Return);

    const TickTime expected =
        TickTime::FromSeconds(12) + zelmediatypes::kFrameRate_25.FrameDuration() * 5;
    EXPECT_EQ(control.GetTime(), expected);
    EXPECT_EQ(times.lines,
              std::vector<std::string>{"time " + std::to_string(expected.GetTicks()) + " flags 1"});
    ASSERT_FALSE(texts.lines.empty());
    EXPECT_EQ(texts.lines.back(), "text 12:05");
    EXPECT_EQ(control.GetInlineEditText(), u"00:00:12:05");
}

TEST_F(TimecodeTest, InvalidOrCancelledEditsChangeNothing) {
    QLineEdit* editor = OpenEditor();
    ASSERT_NE(editor, nullptr);
    editor->clear();
    QTest::keyClicks(editor, "12:99");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(control.GetTime(), TickTime::FromSeconds(10));

    editor = OpenEditor();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "1:00:00");
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_FALSE(control.IsEditing());
    EXPECT_EQ(control.GetTime(), TickTime::FromSeconds(10));
    EXPECT_TRUE(times.lines.empty());
}

TEST_F(TimecodeTest, ScrubbingMovesByFramesAndReportsOnRelease) {
    Drag(*widget, QPoint(10, 8), QPoint(30, 8));
    const TickTime expected =
        TickTime::FromSeconds(10) + zelmediatypes::kFrameRate_25.FrameDuration() * 20;
    EXPECT_EQ(control.GetTime(), expected);
    EXPECT_EQ(times.lines.size(), 1u);
}

TEST_F(TimecodeTest, DisplayChosenInTheMenuIsBroadcastOnTheDisplayStation) {
    StationLog displays{KSL::StationID(UIF::kStation_SourceTimeDisplayChanged)};
    control.SetTimeDisplayStation(UIF::kStation_SourceTimeDisplayChanged);
    WhenModalLoopRuns([] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().at(11)->text(), QStringLiteral("Audio Samples"));
        for (int item = 0; item <= 11; ++item) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QContextMenuEvent openMenu(QContextMenuEvent::Mouse, QPoint(5, 5),
                               widget->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(widget, &openMenu);

    EXPECT_EQ(displays.lines, std::vector<std::string>{"audio display 300"});
    EXPECT_EQ(control.GetTimecodeInfo().timeDisplay, zelmediatypes::kTimeDisplay_AudioSamples48kHz);
    // Remembered for views made later, per station and kind.
    EXPECT_EQ(UIF::GetChosenAudioTimeDisplay(UIF::kStation_SourceTimeDisplayChanged),
              zelmediatypes::kTimeDisplay_AudioSamples48kHz);
    EXPECT_EQ(UIF::GetChosenVideoTimeDisplay(UIF::kStation_SourceTimeDisplayChanged),
              zelmediatypes::kTimeDisplay_Unknown);
    EXPECT_EQ(UIF::GetChosenAudioTimeDisplay(UIF::kStation_SequenceTimeDisplayChanged),
              zelmediatypes::kTimeDisplay_Unknown);

    control.SetTimeDisplay(zelmediatypes::kTimeDisplay_Frames,
                           zelmediatypes::kFrameRate_25.FrameDuration(), false);
    EXPECT_EQ(control.GetInlineEditText(), u"250");
}

TEST_F(TimecodeTest, FieldAdvanceEntersOnlyWhenWanted) {
    control.SetWantsKeyboardFocusFromAdvance(false);
    EXPECT_EQ(widget->focusPolicy(), Qt::ClickFocus);
    control.SetWantsKeyboardFocusFromAdvance(true);
    EXPECT_EQ(widget->focusPolicy(), Qt::StrongFocus);
}

} // namespace
} // namespace platform_ui_test
