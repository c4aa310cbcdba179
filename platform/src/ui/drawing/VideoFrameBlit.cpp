#include "UIF/VideoFrameBlit.h"

#include "UIF/DC.h"
#include "VF/VideoFrame.h"
#include "drawing/DCImpl.h"
#include "input/QtConversions.h"

#include <QImage>

namespace UIF {

void VideoFrameBlit::BlitFrame(DC& dc, const VF::VideoFrame& frame, const Rect& destination) {
    if (frame.IsError() || frame.IsEmpty() || destination.IsEmpty()) {
        return;
    }
    // Wraps the frame's pixels without copying; the frame outlives the call.
    const QImage pixels(frame.GetPixels(), frame.GetWidthPx(), frame.GetHeightPx(),
                        static_cast<qsizetype>(frame.GetStrideBytes()), QImage::Format_RGBA8888);
    QPainter& painter = dc.GetImpl().painter;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(platform::ui::ToQRect(destination), pixels);
    painter.restore();
}

} // namespace UIF
