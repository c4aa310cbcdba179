#pragma once

#include "VF/VideoFrame.h"
#include "zelcaptioning/Caption.h"

#include <QImage>
#include <QWidget>

namespace host {

// The picture of the source monitor: a video frame fitted into the widget
// (letterboxed, aspect kept) with a caption drawn over it by the host's caption
// renderer, or a line of text when there is no picture.
class MonitorPicture : public QWidget {
public:
    explicit MonitorPicture(QWidget* parent = nullptr);

    // The frame and the caption shown on it (either may be null); clipWidthPx and
    // clipHeightPx are the clip's frame size, which caption positions refer to.
    void Show(VF::VideoFrameRef frame, zelcaptioning::CaptionPtr caption, int clipWidthPx,
              int clipHeightPx);
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
