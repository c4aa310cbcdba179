#pragma once

#include "VF/VideoFrame.h"
#include "zelcaptioning/Caption.h"

namespace zelui::drawbot {
class Drawbot;
}

namespace HSL {

// Measures every paragraph of the caption with its spans' real fonts (family,
// size, bold, italic) on the drawing surface and stores the line widths and
// heights in the paragraphs, where the caption's layout reads them. A span of
// size 0 measures at the default size; a generic or empty family measures as
// the host's default caption font.
void RefreshCaptionSizeInfo(const zelcaptioning::CaptionPtr& caption,
                            zelui::drawbot::Drawbot& drawbot);

// The family captions are shown in when they name none, or a generic one.
extern const zelcore::UTF16String kDefaultCaptionFontFamily;

// Draws an open caption onto a frame of a clip whose frame is clipWidth ×
// clipHeight pixels: each line at its position within the caption area (0.8 of
// the frame, centred), with its background box, edge, colours, underline and
// fonts, scaled to the frame's own size (a thumbnail is a smaller frame).
// Unplaced lines are not drawn. Needs the application's font database: call on
// the UI thread.
void RenderOpenCaptions(VF::VideoFrame& frame, const zelcaptioning::Caption& caption,
                        int clipWidthPx, int clipHeightPx);

} // namespace HSL
