// `corvala --screenshot`: the demo rendered offscreen with the Captions panel
// docked, to a PNG that shows the window's real content.
#include "HostTestSupport.h"

#include <QColor>
#include <QImage>

#include <gmock/gmock.h>

#include <set>

namespace {

TEST(CorvalaScreenshotTest, TheDemoWithTheCaptionsPanelRendersAFilledWindow) {
    host_test::TempFolder temp;
    const std::string path = temp.PathOf("demo.png");
    const auto run = host_test::RunCorvala({"--demo", "--panel", "captions", "--select",
                                            host_test::kCaptionedClip, "--screenshot",
                                            QString::fromStdString(path)});
    ASSERT_EQ(run.exitCode, 0) << run.standardError.toStdString();
    EXPECT_THAT(run.standardOutput.toStdString(), testing::HasSubstr("wrote " + path));

    const QImage image(QString::fromStdString(path));
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(1280, 800));
    // Text, the monitor's frame and the panels make many colours; a blank or
    // single-colour window has a handful.
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); x += 3) {
            colours.insert(image.pixel(x, y));
        }
    }
    EXPECT_GT(colours.size(), 200u);
    // The monitor in the middle shows the clip's picture, not the window's background.
    const QRgb background = image.pixel(2, image.height() - 2);
    int pictureLike = 0;
    for (int x = image.width() / 3; x < image.width() * 2 / 3; x += 8) {
        pictureLike += image.pixel(x, image.height() / 3) != background;
    }
    EXPECT_GT(pictureLike, 10);
}

} // namespace
