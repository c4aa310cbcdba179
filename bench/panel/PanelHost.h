#pragma once

#include "BE/IProject.h"
#include "CaptionsPane.h"
#include "CaptionsView.h"
#include "FileChooser.h"
#include "HostWindow.h"
#include "KSL/InterfaceRef.h"

#include <QWidget>

#include <cstddef>
#include <cstdint>
#include <string>

namespace panel_bench {

class NoFiles : public host::FileChooser {
public:
    std::string ChooseProjectToOpen(QWidget*) override { return {}; }
    std::string ChooseProjectSavePath(QWidget*, const std::string&) override { return {}; }
    std::string ChooseMediaToImport(QWidget*) override { return {}; }
};

// The host window offscreen with the Captions panel open, 1080 pixels of
// list, and a clip of `captionCount` captions of `linesPerCaption` lines in a
// stream of the format (CEA-608 unless told), not yet selected.
class PanelHost {
public:
    PanelHost(std::size_t captionCount, std::int32_t linesPerCaption = 1,
              zelcaptioning::StreamFormat format = zelcaptioning::kStreamFormat_CEA608);

    HandlerCaptions::CaptionsView& View() { return *view_; }
    HandlerCaptions::CaptionsPane& Pane() { return *view_->GetPane(); }
    QWidget& PaneWidget();
    QWidget& ViewWidget();
    KSL::InterfaceRef<BE::IMasterClip> Clip() const { return stream_->GetMasterClip(); }
    BE::IUndoHistory& UndoHistory();

    void Select(const KSL::InterfaceRef<BE::IMasterClip>& clip);
    // Paints the pane now, as the window system would ask.
    void Paint() { PaneWidget().repaint(); }
    // Paints every widget of the window that asked to be painted.
    void PaintPending();
    void WaitForThumbnails();

private:
    NoFiles chooser_;
    host::HostWindow window_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
    HandlerCaptions::CaptionsView* view_ = nullptr;
};

// Heap in use: what the allocator handed out and was not given back.
double HeapMegabytesInUse();

// Clears the UI runtime and messaging between benchmarks.
void Teardown();

} // namespace panel_bench
