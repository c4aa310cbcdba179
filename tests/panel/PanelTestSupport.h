#pragma once

#include "CaptionsPane.h"
#include "CaptionsView.h"
#include "HostTestSupport.h"

#include <QString>
#include <QWidget>

#include <string>

namespace panel_test {

// The demo project in the real host window with the Captions panel open.
class PanelTest : public host_test::HostWindowTest {
protected:
    // Opens the demo, opens the panel, and selects the captioned clip in the
    // project panel (so the panel shows its CEA-608 stream).
    void OpenDemoWithPanel();
    void SelectClip(const std::string& name);
    // Opens the captioned clip's open-caption stream, as a person opening it
    // in the project panel does.
    void OpenTheOpenCaptions();

    HandlerCaptions::CaptionsView& View();
    HandlerCaptions::CaptionsPane& Pane();
    HandlerCaptions::CaptionsItemList& Rows() { return Pane().GetItemList(); }
    QWidget& PaneWidget();
    // The row's controls are built once the row has been shown. Keys go to
    // QApplication::focusWidget(), as a person's do.
    QWidget& TextWidget(std::int32_t row);
    void RequireControls(std::int32_t row);
    QWidget& InTimeWidget(std::int32_t row);
    QWidget& OutTimeWidget(std::int32_t row);

    KSL::InterfaceRef<BE::ICaptioningStream> ClosedCaptions();
    BE::IUndoHistory& UndoHistory();
    // Runs the event loop for the time, so that timers fire and posts run.
    static void Wait(int milliseconds);
    // The plain text of row i's caption as the stream holds it now.
    std::string StreamText(std::int32_t row);
    // Clicks into the row's text, where a person clicks to type.
    void ClickText(std::int32_t row);
    // Clicks on the pane at the point (pane coordinates).
    void ClickPane(int x, int y);
};

// The text with its line breaks as the stream writes them.
std::string Utf8(const zelcore::UTF16String& text);
// Everything a caption holds (times, type, paragraphs, spans and their
// styles), printed, so that two captions compare as values.
std::string Printed(const zelcaptioning::Caption& caption);
// The accessible name of a widget, as assistive technology reads it.
QString AccessibleName(QWidget& widget);

} // namespace panel_test
