#pragma once

#include "VF/VideoFrame.h"
#include "zelcaptioning/Caption.h"

#include <QImage>
#include <QWidget>

#include <optional>

namespace host {

// The grid a closed caption stream places its lines on.
struct CaptionGrid {
    int columnCount = 32;
    int rowCount = 15;
};

// The picture of the source monitor: a video frame fitted into the widget
// (letterboxed, aspect kept) with a caption drawn over it (open captions by the
// host's caption renderer, closed captions on their grid in the decoder's look),
// or a line of text when there is no picture.
class MonitorPicture : public QWidget {
public:
    explicit MonitorPicture(QWidget* parent = nullptr);

    // The frame and the caption shown on it (either may be null); clipWidthPx and
    // clipHeightPx are the clip's frame size, which open caption positions refer
    // to; with a grid the caption is a closed one.
    void Show(VF::VideoFrameRef frame, zelcaptioning::CaptionPtr caption, int clipWidthPx,
              int clipHeightPx, std::optional<CaptionGrid> closedCaptionGrid = {});
    // Shows no picture, only the text.
    void ShowText(const QString& text);

    // The largest size with the clip's aspect that fits the widget.
    QSize FittedSize(int clipWidthPx, int clipHeightPx) const;

    // What is drawn now, for tests and screenshots: the composed frame.
    const QImage& GetComposedImage() const { return composed_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage composed_;
    QString text_;
};

} // namespace host
