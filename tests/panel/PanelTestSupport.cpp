#include "PanelTestSupport.h"

#include "CaptionEdit.h"
#include "CaptionsHandler.h"
#include "CaptionsItem.h"
#include "HSL/Ids.h"
#include "KSL/StationUtils.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Captioning.h"
#include "MZ/Stations.h"
#include "PlatformHost/HostAccess.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QTest>

#include <sstream>

namespace panel_test {

std::string Utf8(const zelcore::UTF16String& text) {
    return zelcore::ToUTF8(text);
}

std::string Printed(const zelcaptioning::Caption& caption) {
    std::ostringstream os;
    os << caption;
    return os.str();
}

QString AccessibleName(QWidget& widget) {
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
    return accessible ? accessible->text(QAccessible::Name) : QString();
}

void PanelTest::OpenTheOpenCaptions() {
    const auto clip = Clip(host_test::kCaptionedClip);
    KSL::StationUtils::BroadcastMessage(
        MZ::kStation_ClosedCaptionsActivation,
        MZ::ClosedCaptionsOpenedMessage(
            clip, clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions)));
    QApplication::processEvents();
}

void PanelTest::OpenDemoWithPanel() {
    OpenDemo();
    QAction* entry = WindowMenuEntry("Captions");
    ASSERT_NE(entry, nullptr);
    entry->trigger();
    QDockWidget* dock = DockTitled("Captions");
    ASSERT_NE(dock, nullptr);
    // Room for four whole rows under the toolbar.
    Window().GetMainWindow().resize(1280, 900);
    Window().GetMainWindow().resizeDocks({dock}, {52 + 7 + 4 * 75 + 40 + 30}, Qt::Vertical);
    QApplication::processEvents();
    SelectClip(host_test::kCaptionedClip);
}

void PanelTest::SelectClip(const std::string& name) {
    ClickItem(Clip(name).Get());
    QApplication::processEvents();
}

HandlerCaptions::CaptionsView& PanelTest::View() {
    for (const auto& handler : Window().GetHandlers().GetHandlers()) {
        if (handler->GetName() == HSL::kCaptionsHandlerID) {
            auto* captions = static_cast<HandlerCaptions::CaptionsHandler*>(handler.get());
            if (captions->GetView()) {
                return *captions->GetView();
            }
        }
    }
    throw std::logic_error("the Captions panel is not open");
}

HandlerCaptions::CaptionsPane& PanelTest::Pane() {
    return *View().GetPane();
}

QWidget& PanelTest::PaneWidget() {
    return *platform::ui::WidgetOf(static_cast<const UIF::ViewBase&>(Pane()));
}

void PanelTest::RequireControls(std::int32_t row) {
    if (row < 0 || row >= Rows().GetCount() || !Rows().At(row)->HasControls()) {
        throw std::logic_error("row " + std::to_string(row) + " has no controls: it is not shown");
    }
}

QWidget& PanelTest::TextWidget(std::int32_t row) {
    RequireControls(row);
    return *platform::ui::WidgetOf(*Rows().At(row)->GetTextControl());
}

QWidget& PanelTest::InTimeWidget(std::int32_t row) {
    RequireControls(row);
    return *platform::ui::WidgetOf(*Rows().At(row)->GetInControl());
}

QWidget& PanelTest::OutTimeWidget(std::int32_t row) {
    RequireControls(row);
    return *platform::ui::WidgetOf(*Rows().At(row)->GetOutControl());
}

KSL::InterfaceRef<BE::ICaptioningStream> PanelTest::ClosedCaptions() {
    return Clip(host_test::kCaptionedClip)
        ->FindCaptioningStream(zelcaptioning::kStreamFormat_CEA608);
}

BE::IUndoHistory& PanelTest::UndoHistory() {
    return Window().GetDocument().GetProject()->GetUndoHistory();
}

void PanelTest::Wait(int milliseconds) {
    QTest::qWait(milliseconds);
}

std::string PanelTest::StreamText(std::int32_t row) {
    return Utf8(MZ::Captioning::ConvertCaptionBlockToText(Rows().At(row)->GetCaption()));
}

void PanelTest::ClickText(std::int32_t row) {
    QWidget* target = &TextWidget(row);
    if (auto* scrollArea = qobject_cast<QAbstractScrollArea*>(target)) {
        target = scrollArea->viewport();
    }
    QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(5, 5));
    QApplication::processEvents();
}

void PanelTest::ClickPane(int x, int y) {
    QTest::mouseClick(&PaneWidget(), Qt::LeftButton, {}, QPoint(x, y));
}

} // namespace panel_test
