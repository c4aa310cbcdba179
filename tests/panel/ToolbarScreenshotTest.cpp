// The toolbar as rendered: in each family, with a caption selected, every
// control stands where the layout puts it and draws something there.
#include "PanelTestSupport.h"

#include "CaptionsToolbar.h"
#include "PlatformHost/HostAccess.h"

#include <QApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using panel_test::PanelTest;

// A control found by its accessible name, and its place in the view.
struct Placed {
    const char* name;
    QRect rect;
};

class ToolbarScreenshotTest : public PanelTest {
protected:
    QWidget& ViewWidget() {
        return *platform::ui::WidgetOf(static_cast<const UIF::ViewBase&>(View()));
    }
    QWidget* Named(const QString& name) {
        for (QWidget* child : ViewWidget().findChildren<QWidget*>()) {
            if (child->isVisible() && panel_test::AccessibleName(*child) == name) {
                return child;
            }
        }
        return nullptr;
    }
    static std::size_t ColoursIn(const QImage& image, const QRect& rect) {
        std::set<QRgb> colours;
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                colours.insert(image.pixel(x, y));
            }
        }
        return colours.size();
    }
    // Each control is at its place, visible, and drew more than a flat fill.
    void ExpectRendered(const std::vector<Placed>& controls) {
        QApplication::processEvents();
        const QImage image = ViewWidget().grab().toImage();
        ASSERT_FALSE(image.isNull());
        for (const Placed& control : controls) {
            SCOPED_TRACE(control.name);
            QWidget* widget = Named(QString::fromUtf8(control.name));
            ASSERT_NE(widget, nullptr) << "no visible control of that name";
            EXPECT_EQ(widget->geometry(), control.rect);
            EXPECT_GE(ColoursIn(image, control.rect), 2u) << "nothing drawn there";
        }
    }
};

TEST_F(ToolbarScreenshotTest, TheClosedCaptionFamilyDrawsEachControlInItsPlace) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    ExpectRendered({{"Filter caption content", {3, 3, 167, 20}},
                    {"Select caption stream", {226, 3, 149, 19}},
                    {"Set display style", {34, 33, 99, 19}},
                    {"Align Left", {145, 32, 20, 20}},
                    {"Align Right", {189, 32, 20, 20}},
                    {"Italicize", {243, 32, 20, 20}},
                    {"Insert Music Note", {287, 32, 20, 20}},
                    {"Background Color", {319, 32, 20, 20}},
                    {"Edge Color", {363, 32, 20, 20}},
                    {"Choose Color", {385, 32, 20, 20}},
                    {"Color Presets", {407, 32, 150, 20}},
                    {"Position Caption Block", {621, 33, 19, 19}},
                    {"Set Horizontal Position", {658, 33, 36, 19}},
                    {"Set Vertical Position", {710, 33, 36, 19}}});
    EXPECT_EQ(Named("Select Font Family"), nullptr) << "an open-caption control";
    EXPECT_GE(PaneWidget().y(), View().GetToolbarHeight()) << "the list stands below";
}

TEST_F(ToolbarScreenshotTest, TheOpenCaptionFamilyDrawsEachControlInItsPlace) {
    OpenDemoWithPanel();
    OpenTheOpenCaptions();
    ClickPane(20, 20);
    ExpectRendered({{"Filter caption content", {3, 3, 167, 20}},
                    {"Select Font Family", {421, 3, 149, 19}},
                    {"Select font weight", {574, 3, 100, 19}},
                    {"Set Font Size", {720, 3, 40, 19}},
                    {"Set Text Edge Width", {806, 3, 40, 19}},
                    {"Align Left", {3, 32, 20, 20}},
                    {"Bold", {79, 32, 20, 20}},
                    {"Edge Color", {221, 32, 20, 20}},
                    {"Color Presets", {265, 32, 150, 20}},
                    {"Opacity", {417, 33, 40, 19}},
                    {"Open Position Caption Block", {3, 60, 19, 19}},
                    {"Set Horizontal Position (%)", {40, 60, 36, 19}},
                    {"Set Vertical Position (%)", {102, 60, 36, 19}}});
    EXPECT_EQ(Named("Set display style"), nullptr) << "a closed-caption control";
    EXPECT_GE(PaneWidget().y(), View().GetToolbarHeight()) << "the list stands below";
}

} // namespace
