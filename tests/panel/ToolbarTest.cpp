// The style toolbar: its two families, what it enables, and its controls
// reaching the pane.
#include "PanelTestSupport.h"

#include "BE/IProject.h"
#include "CaptionCommandIds.h"
#include "CaptionsToolbar.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/CommandRouting.h"

#include <QApplication>
#include <QComboBox>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using HandlerCaptions::CaptionsToolbar;
using panel_test::PanelTest;

class ToolbarTest : public PanelTest {
protected:
    CaptionsToolbar& Bar() { return *View().GetToolbar(); }
    UIF::PictureButton& Button(UIF::CommandID id) { return *Bar().ButtonFor(id); }
};

TEST_F(ToolbarTest, EachStreamFamilyShowsItsOwnControls) {
    OpenDemoWithPanel();
    EXPECT_EQ(View().GetToolbarHeight(), 52);
    EXPECT_TRUE(Bar().TypePopup().IsVisible());
    EXPECT_TRUE(Bar().PositionGrid().IsVisible());
    EXPECT_FALSE(Bar().FontFamilyPopup().IsVisible());
    EXPECT_FALSE(Bar().OpenPositionGrid().IsVisible());
    const int closedTop = PaneWidget().y();

    OpenTheOpenCaptions();
    EXPECT_EQ(View().GetToolbarHeight(), 85);
    EXPECT_FALSE(Bar().TypePopup().IsVisible());
    EXPECT_TRUE(Bar().FontFamilyPopup().IsVisible());
    EXPECT_TRUE(Bar().OpenPositionGrid().IsVisible());
    EXPECT_EQ(PaneWidget().y() - closedTop, 33) << "the list moves down by the extra row";
}

TEST_F(ToolbarTest, TheEnablingPassFollowsStreamSelectionAndFamily) {
    OpenDemoWithPanel();
    EXPECT_FALSE(Button(HandlerCaptions::kCommand_JustifyLeft).IsEnabled()) << "nothing selected";
    EXPECT_TRUE(View().GetDeleteButton()->IsDisabled());
    EXPECT_FALSE(Bar().StreamPopup().IsDisabled()) << "the clip offers two streams";
    EXPECT_EQ(Bar().StreamPopup().GetItemCount(), 2);

    ClickPane(20, 20);
    EXPECT_TRUE(Button(HandlerCaptions::kCommand_JustifyLeft).IsEnabled());
    EXPECT_TRUE(Button(HandlerCaptions::kCommand_Italicize).IsEnabled());
    EXPECT_FALSE(Button(HandlerCaptions::kCommand_Bold).IsEnabled()) << "bold is for open captions";
    EXPECT_FALSE(Button(HandlerCaptions::kCommand_EdgeColor).IsEnabled());
    EXPECT_FALSE(View().GetDeleteButton()->IsDisabled());
    EXPECT_TRUE(Button(HandlerCaptions::kCommand_Italicize).IsPressed())
        << "the demo's first caption is italic";

    OpenTheOpenCaptions();
    ClickPane(20, 20);
    EXPECT_TRUE(Button(HandlerCaptions::kCommand_Bold).IsEnabled());
    EXPECT_TRUE(Button(HandlerCaptions::kCommand_EdgeColor).IsEnabled());
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_TextColor));
    EXPECT_TRUE(Bar().OpacityField().IsDisabled()) << "text opacity is not editable";
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_BackgroundColor));
    EXPECT_FALSE(Bar().OpacityField().IsDisabled());

    SelectClip(host_test::kPlainClip);
    EXPECT_TRUE(Bar().FilterBox().IsDisabled()) << "no stream";
    EXPECT_TRUE(View().GetAddButton()->IsDisabled());
}

TEST_F(ToolbarTest, ButtonsAreNamedByTheirTipsAndSendTheirCommands) {
    OpenDemoWithPanel();
    OpenTheOpenCaptions();
    ClickPane(20, 20);
    QWidget* bold = platform::ui::WidgetOf(Button(HandlerCaptions::kCommand_Bold));
    ASSERT_NE(bold, nullptr);
    EXPECT_EQ(panel_test::AccessibleName(*bold), "Bold");
    EXPECT_EQ(panel_test::AccessibleName(*platform::ui::WidgetOf(Bar().FilterBox())),
              "Filter caption content");
    const bool wasBold = Rows()
                             .At(0)
                             ->GetCaption()
                             ->GetCaptionTextParagraph(0)
                             ->GetCaptionTextSpan(0)
                             ->GetTextSpanStyleAttributes()
                             .IsBolded();
    QTest::mouseClick(bold, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_NE(Rows()
                  .At(0)
                  ->GetCaption()
                  ->GetCaptionTextParagraph(0)
                  ->GetCaptionTextSpan(0)
                  ->GetTextSpanStyleAttributes()
                  .IsBolded(),
              wasBold);
    EXPECT_EQ(Button(HandlerCaptions::kCommand_Bold).IsPressed(), !wasBold);
}

TEST_F(ToolbarTest, TheFilterBoxAndTheStreamPopupDriveTheList) {
    OpenDemoWithPanel();
    QWidget* filter = platform::ui::WidgetOf(Bar().FilterBox());
    filter->setFocus();
    QTest::keyClicks(QApplication::focusWidget(), "MARA");
    QApplication::processEvents();
    ASSERT_GT(Rows().GetCount(), 0);
    EXPECT_LT(Rows().GetCount(), 30);

    auto* popup = qobject_cast<QComboBox*>(platform::ui::WidgetOf(Bar().StreamPopup()));
    ASSERT_NE(popup, nullptr);
    // As a person's choice in the open list does: the item, then its activation.
    popup->setCurrentIndex(1);
    popup->activated(1);
    QApplication::processEvents();
    EXPECT_EQ(Pane().GetStream()->GetStreamFormat(), zelcaptioning::kStreamFormat_OpenCaptions);
    EXPECT_EQ(Rows().GetCount(), 20) << "a new stream shows unfiltered";
    EXPECT_EQ(Bar().FilterBox().GetText(), u"");
}

} // namespace
