#pragma once

#include "zelcaptioning/Caption.h"

class QImage;

namespace host {

// Draws a closed caption over a picture as a line-21 decoder shows it: the caption area is the
// middle 80% of the picture split into a grid (32 columns by 15 rows for CEA-608); each line
// stands at its grid row and column, one character a cell in a monospaced font, on an opaque
// box (black unless the span gives a background) that also covers one cell before and after
// the line. Text takes its span's colour, italic and underline. A line never placed stands on
// the bottom rows, centred. Needs the application's fonts: call on the UI thread.
void PaintClosedCaption(QImage& picture, const zelcaptioning::Caption& caption, int columnCount,
                        int rowCount);

} // namespace host
