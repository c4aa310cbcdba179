// The build's captions plug-in in the real host window: its panel in the
// Window menu, opened by the menu and by opening a caption stream, and its
// handler living exactly as long as the project.
#include "HSL/Ids.h"
#include "HostTestSupport.h"

#include <QDockWidget>
#include <QLayout>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using host_test::HostWindowTest;

class CaptionsPluginTest : public HostWindowTest {
protected:
    QDockWidget* CaptionsDock() { return DockTitled("Captions"); }
    std::size_t CaptionsHandlers() {
        std::size_t count = 0;
        for (const auto& handler : Window().GetHandlers().GetHandlers()) {
            count += handler->GetName() == HSL::kCaptionsHandlerID;
        }
        return count;
    }
};

TEST_F(CaptionsPluginTest, TheWindowMenuOpensTheCaptionsPanelDocked) {
    OpenDemo();
    EXPECT_EQ(CaptionsHandlers(), 1u);
    QAction* entry = WindowMenuEntry("Captions");
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(entry->isChecked());
    EXPECT_EQ(CaptionsDock(), nullptr);

    entry->trigger();
    QDockWidget* dock = CaptionsDock();
    ASSERT_NE(dock, nullptr);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_NE(Window().GetMainWindow().dockWidgetArea(dock), Qt::NoDockWidgetArea);
    EXPECT_TRUE(WindowMenuEntry("Captions")->isChecked());
    // Its content asks for little space, yet it opens large enough to work in.
    QMainWindow& mainWindow = Window().GetMainWindow();
    mainWindow.layout()->activate();
    EXPECT_GE(dock->height(), 200);

    // Closed by its title bar, it stays listed and opens again at the size
    // the person gave it.
    mainWindow.resizeDocks({dock}, {150}, Qt::Vertical);
    mainWindow.layout()->activate();
    const int chosenHeight = dock->height();
    EXPECT_LT(chosenHeight, 200);
    dock->close();
    EXPECT_FALSE(WindowMenuEntry("Captions")->isChecked());
    WindowMenuEntry("Captions")->trigger();
    mainWindow.layout()->activate();
    EXPECT_TRUE(CaptionsDock()->isVisible());
    EXPECT_EQ(CaptionsDock()->height(), chosenHeight);
}

TEST_F(CaptionsPluginTest, OpeningACaptionStreamOpensThePanel) {
    OpenDemo();
    const auto clip = Clip(host_test::kCaptionedClip);
    DoubleClickItem(clip->GetCaptioningStream(0).Get());
    ASSERT_NE(CaptionsDock(), nullptr);
    EXPECT_TRUE(CaptionsDock()->isVisible());

    CaptionsDock()->close();
    DoubleClickItem(clip->GetCaptioningStream(1).Get());
    EXPECT_TRUE(CaptionsDock()->isVisible());
    EXPECT_EQ(Window().GetMainWindow().findChildren<QDockWidget*>().size(), 2u)
        << "the panel is reused, not made twice";
}

// The panel's rows are found as a screen reader finds them: by name.
QPlainTextEdit* RowText(QWidget& dock, int captionNumber) {
    const QString name = QStringLiteral("Text, caption %1").arg(captionNumber);
    for (QPlainTextEdit* text : dock.findChildren<QPlainTextEdit*>()) {
        if (text->isVisible() && text->accessibleName() == name) {
            return text;
        }
    }
    return nullptr;
}

TEST_F(CaptionsPluginTest, ThePanelListsTheStreamThatWasOpened) {
    OpenDemo();
    const auto clip = Clip(host_test::kCaptionedClip);
    DoubleClickItem(clip->GetCaptioningStream(1).Get()); // its open captions
    ASSERT_NE(CaptionsDock(), nullptr);
    QPlainTextEdit* first = RowText(*CaptionsDock(), 1);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->toPlainText().toStdString(),
              zelcore::ToUTF8(clip->GetCaptioningStream(1)->GetCaption(0)->GetPlainText()));

    // Typing reaches the project's stream at once.
    first->setFocus();
    QTest::keyClick(first, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(first, "!");
    const std::string typed =
        zelcore::ToUTF8(clip->GetCaptioningStream(1)->GetCaption(0)->GetPlainText());
    ASSERT_FALSE(typed.empty());
    EXPECT_EQ(typed.back(), '!');

    DoubleClickItem(clip->GetCaptioningStream(0).Get());
    ASSERT_NE(RowText(*CaptionsDock(), 1), nullptr);
    EXPECT_EQ(RowText(*CaptionsDock(), 1)->toPlainText(), QStringLiteral("[GULLS CRYING]"));
}

TEST_F(CaptionsPluginTest, EachProjectHasItsOwnHandlerAndPanel) {
    OpenDemo();
    ASSERT_TRUE(Window().OpenPanel("captions"));
    EXPECT_FALSE(Window().OpenPanel("no-such-panel"));
    ASSERT_NE(CaptionsDock(), nullptr);

    // A new project replaces the handler; its panel goes with the old one.
    ASSERT_TRUE(Window().GetFileActions().NewProject());
    EXPECT_EQ(CaptionsHandlers(), 1u);
    EXPECT_TRUE(CaptionsDock() == nullptr || !CaptionsDock()->isVisible());
    ASSERT_TRUE(Window().OpenPanel("captions"));
    EXPECT_TRUE(CaptionsDock()->isVisible());
}

} // namespace
