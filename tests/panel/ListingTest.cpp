// What the panel lists: the chosen stream of the selected clip, in time order,
// following selections, stream changes, filters and time displays.
#include "PanelTestSupport.h"

#include "CaptionEdit.h"

#include "BE/IProject.h"
#include "MZ/Captioning.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/TimeDisplayChoice.h"

#include <QAccessible>
#include <QApplication>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_test::PanelTest;
using panel_test::Utf8;

class ListingTest : public PanelTest {
protected:
    KSL::InterfaceRef<BE::IProject> Project() { return Window().GetDocument().GetProject(); }
};

TEST_F(ListingTest, TheDemoClipListsItsClosedCaptionsInTimeOrderWithTimecodes) {
    OpenDemoWithPanel();
    const auto stream = ClosedCaptions();
    ASSERT_EQ(Pane().GetStream(), stream) << "the smallest format, CEA-608, is shown";
    ASSERT_EQ(Rows().GetCount(), 30);
    for (std::int32_t i = 0; i < Rows().GetCount(); ++i) {
        EXPECT_EQ(Rows().At(i)->GetCaption(), stream->GetCaption(static_cast<std::size_t>(i)));
    }
    // The clip is 29.97 fps: its rows start in drop-frame timecode.
    EXPECT_EQ(Utf8(Rows().At(0)->GetInControl()->GetInlineEditText()), "00:00:01;00");
    EXPECT_EQ(Utf8(Rows().At(0)->GetOutControl()->GetInlineEditText()), "00:00:04;00");
    EXPECT_EQ(Utf8(Rows().At(1)->GetInControl()->GetInlineEditText()), "00:00:04;15");
    const std::string firstText = Utf8(Rows().At(1)->GetTextControl()->GetValue());
    EXPECT_EQ(firstText, "MARA: The boats go out\r\nbefore first light.");
    EXPECT_FALSE(Rows().At(20)->HasControls()) << "rows out of sight build nothing";
}

TEST_F(ListingTest, SelectingABinOrASequenceClearsAndAMergedClipIsIgnored) {
    OpenDemoWithPanel();
    ClickItem(Sequence(host_test::kDemoSequence).Get());
    QApplication::processEvents();
    EXPECT_EQ(Rows().GetCount(), 0);
    EXPECT_FALSE(Pane().GetCurrentClip());

    SelectClip(host_test::kCaptionedClip);
    ASSERT_EQ(Rows().GetCount(), 30);
    const auto plain = Clip(host_test::kPlainClip);
    BE::MasterClipSettings merged = plain->GetSettings();
    merged.kind = BE::MasterClipKind::kMerged;
    Project()->SetMasterClipSettings(plain, merged, BE::UndoMode::kWithoutUndoStep);
    SelectClip(host_test::kPlainClip);
    EXPECT_EQ(Pane().GetCurrentClip(), Clip(host_test::kCaptionedClip));
    EXPECT_EQ(Rows().GetCount(), 30);
}

TEST_F(ListingTest, LeavingAClipRemembersItsRowForTheReturn) {
    OpenDemoWithPanel();
    ClickPane(300, 3 * CaptionsPane::kRowPitchPx + 30);
    ASSERT_EQ(Rows().GetCurrentIndex(), 3);
    SelectClip(host_test::kPlainClip);
    EXPECT_EQ(Rows().GetCount(), 0) << "a clip without caption streams has no rows";
    EXPECT_EQ(Pane().GetRememberedSelection(Clip(host_test::kCaptionedClip).Get()), 3);
    SelectClip(host_test::kCaptionedClip);
    EXPECT_EQ(Rows().GetCurrentIndex(), 3);
}

TEST_F(ListingTest, AStreamAddedToAShownClipIsShownUnlessOneIsChosen) {
    OpenDemoWithPanel();
    SelectClip(host_test::kPlainClip);
    ASSERT_FALSE(Pane().GetStream());
    const auto added = Project()->AddCaptioningStream(Clip(host_test::kPlainClip),
                                                      zelcaptioning::kStreamFormat_CEA708,
                                                      BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(Pane().GetStream(), added);
    EXPECT_EQ(Rows().GetCount(), 0) << "an empty stream has no rows";

    // A smaller format added later does not take the chosen one's place.
    Project()->AddCaptioningStream(Clip(host_test::kPlainClip), zelcaptioning::kStreamFormat_CEA608,
                                   BE::UndoMode::kAsUndoStep);
    EXPECT_EQ(Pane().GetStream(), added);
    EXPECT_EQ(Pane().GetCaptionSource().GetAvailableFormats().size(), 2u);
}

TEST_F(ListingTest, AStreamTurnedIntoOpenCaptionsIsShownMeasured) {
    OpenDemoWithPanel();
    const auto plain = Clip(host_test::kPlainClip);
    const auto stream = Project()->AddCaptioningStream(plain, zelcaptioning::kStreamFormat_CEA608,
                                                       BE::UndoMode::kAsUndoStep);
    zelcaptioning::CaptionPtr caption(new zelcaptioning::Caption);
    caption->SetEndTime(zelmediatypes::TickTime::FromSeconds(2));
    zelcaptioning::CaptionTextParagraphPtr line(new zelcaptioning::CaptionTextParagraph);
    line->AppendCaptionTextSpan(new zelcaptioning::CaptionTextSpan(u"Harbour at dawn", {}));
    caption->AppendCaptionTextParagraph(line);
    MZ::Captioning(stream).AddCaption(caption);
    SelectClip(host_test::kPlainClip);
    ClickPane(20, 20);
    ASSERT_FALSE(View().IsOpenCaptions());

    Project()->ChangeCaptioningStreamFormat(stream, zelcaptioning::kStreamFormat_OpenCaptions,
                                            BE::UndoMode::kAsUndoStep);
    EXPECT_TRUE(View().IsOpenCaptions());
    EXPECT_EQ(View().GetToolbarHeight(), 85);
    ASSERT_EQ(Rows().GetCount(), 1);
    EXPECT_TRUE(Rows().At(0)->GetCaption()->GetCaptionTextParagraph(0)->HasMeasuredLineSize());
    // The caption being edited is the measured one, laid out in the frame's caption area.
    ASSERT_TRUE(Pane().GetEditor().GetCaption());
    EXPECT_TRUE(Pane().GetEditor().GetCaption()->GetCaptionTextParagraph(0)->HasMeasuredLineSize());
    EXPECT_EQ(Pane().GetEditor().GetCaptionAreaWidth(), 1536);
}

TEST_F(ListingTest, TheFilterKeepsMatchingCaptionsAndIgnoresTheSameTextAgain) {
    OpenDemoWithPanel();
    Pane().SetFilterText(u"MARA");
    ASSERT_GT(Rows().GetCount(), 0);
    ASSERT_LT(Rows().GetCount(), 30);
    for (std::int32_t i = 0; i < Rows().GetCount(); ++i) {
        EXPECT_NE(Utf8(Rows().At(i)->GetPlainText()).find("MARA"), std::string::npos);
    }
    const HandlerCaptions::CaptionsItem* before = Rows().At(0).get();
    Pane().SetFilterText(u"MARA");
    EXPECT_EQ(Rows().At(0).get(), before) << "the same text rebuilds nothing";
    Pane().SetFilterText({});
    EXPECT_EQ(Rows().GetCount(), 30);
}

TEST_F(ListingTest, TimeDisplayChoicesReformatTheRowsOfTheirOwnStation) {
    OpenDemoWithPanel();
    UIF::AnnounceTimeDisplayChoice(UIF::kStation_SequenceTimeDisplayChanged,
                                   zelmediatypes::kTimeDisplay_Frames);
    EXPECT_EQ(Utf8(Rows().At(0)->GetInControl()->GetInlineEditText()), "00:00:01;00")
        << "the sequence's display is not the clip's";
    UIF::AnnounceTimeDisplayChoice(UIF::kStation_SourceTimeDisplayChanged,
                                   zelmediatypes::kTimeDisplay_Frames);
    EXPECT_EQ(Utf8(Rows().At(0)->GetInControl()->GetInlineEditText()), "30");
    EXPECT_EQ(Pane().GetCaptionSource().GetSequenceVideoFormat(),
              zelmediatypes::kTimeDisplay_Frames);
    // A clip shown later starts in the chosen display.
    SelectClip(host_test::kPlainClip);
    SelectClip(host_test::kCaptionedClip);
    EXPECT_EQ(Utf8(Rows().At(0)->GetInControl()->GetInlineEditText()), "30");
}

TEST_F(ListingTest, ControlsAndTheSelectedRowHaveAccessibleNames) {
    OpenDemoWithPanel();
    EXPECT_EQ(panel_test::AccessibleName(TextWidget(2)), "Text, caption 3");
    EXPECT_EQ(panel_test::AccessibleName(InTimeWidget(2)), "In time, caption 3");
    EXPECT_EQ(panel_test::AccessibleName(OutTimeWidget(2)), "Out time, caption 3");
    EXPECT_EQ(panel_test::AccessibleName(*platform::ui::WidgetOf(*View().GetAddButton())),
              "Add Caption");
    EXPECT_EQ(panel_test::AccessibleName(*platform::ui::WidgetOf(*View().GetDeleteButton())),
              "Delete Caption");

    ClickPane(300, 2 * CaptionsPane::kRowPitchPx + 10);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&PaneWidget());
    ASSERT_NE(list, nullptr);
    QAccessibleInterface* focused = list->focusChild();
    ASSERT_NE(focused, nullptr);
    EXPECT_EQ(focused->text(QAccessible::Name), "Caption 3: Every morning, rain or not.");
    EXPECT_EQ(focused->role(), QAccessible::ListItem);
}

} // namespace
