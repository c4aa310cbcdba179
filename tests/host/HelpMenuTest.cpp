// Help > About and the application's icon.
#include "AboutBox.h"
#include "HostCommands.h"
#include "HostTestSupport.h"

#include <QMenuBar>

#include <gmock/gmock.h>

namespace {

using host_test::HostWindowTest;
using testing::HasSubstr;

class HelpMenuTest : public HostWindowTest {
protected:
    QMenu& Help() {
        QMenu* help = Window().GetMainWindow().menuBar()->findChild<QMenu*>("helpMenu");
        EXPECT_NE(help, nullptr);
        return *help;
    }
    std::string AboutShown() {
        const std::size_t before = messageBoxes->GetRecords().size();
        EXPECT_TRUE(ChooseMenuCommand(Help(), host::kHostCommand_About));
        EXPECT_EQ(messageBoxes->GetRecords().size(), before + 1);
        return zelcore::ToUTF8(messageBoxes->GetRecords().back().text);
    }
};

TEST_F(HelpMenuTest, AboutNamesTheVersionAndThePlugInsLoaded) {
    EXPECT_THAT(AboutShown(), HasSubstr("No plug-ins are loaded."));
    EXPECT_THAT(AboutShown(), HasSubstr("Corvala " + host::HostVersion().toStdString()));
    EXPECT_FALSE(host::HostVersion().isEmpty());

    Window().SetLoadedPlugins({"/opt/corvala/plugins/libHandlerCaptions.so"});
    const std::string about = AboutShown();
    EXPECT_THAT(about, HasSubstr("Plug-ins loaded:"));
    EXPECT_THAT(about, HasSubstr("libHandlerCaptions.so (/opt/corvala/plugins)"));
}

TEST_F(HelpMenuTest, TheWindowHasTheApplicationsIconAtTheUsualSizes) {
    const QIcon icon = Window().GetMainWindow().windowIcon();
    ASSERT_FALSE(icon.isNull());
    EXPECT_TRUE(icon.availableSizes().contains(QSize(16, 16)));
    EXPECT_TRUE(icon.availableSizes().contains(QSize(256, 256)));
    // Drawn, not blank: the caption box's yellow line is on it.
    const QImage image = icon.pixmap(64, 64).toImage();
    EXPECT_EQ(image.pixelColor(32, 37), QColor(0xf5, 0xd7, 0x3b));
}

} // namespace
