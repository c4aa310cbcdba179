#include "MonitorPicture.h"

#include "ClosedCaptionPainter.h"
#include "HSL/CaptionRendering.h"
#include "VF/VideoFrameManipulators.h"

#include <QPainter>

namespace host {

MonitorPicture::MonitorPicture(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("monitorPicture"));
    setMinimumSize(160, 90);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void MonitorPicture::Show(VF::VideoFrameRef frame, zelcaptioning::CaptionPtr caption,
                          int clipWidthPx, int clipHeightPx,
                          std::optional<CaptionGrid> closedCaptionGrid) {
    text_.clear();
    composed_ = QImage();
    if (frame && frame->IsError()) {
        text_ = QString::fromStdString(frame->GetErrorText());
    } else if (frame && !frame->IsEmpty()) {
        // Drawn on a copy: the media layer's frames are shared and never change.
        VF::MutableVideoFrameRef copy = VF::VideoFrameManipulators::CopyFrame(*frame);
        if (caption && !closedCaptionGrid) {
            HSL::RenderOpenCaptions(*copy, *caption, clipWidthPx, clipHeightPx);
        }
        composed_ = QImage(copy->GetPixels(), copy->GetWidthPx(), copy->GetHeightPx(),
                           static_cast<qsizetype>(copy->GetStrideBytes()), QImage::Format_RGBA8888)
                        .copy();
        if (caption && closedCaptionGrid) {
            PaintClosedCaption(composed_, *caption, closedCaptionGrid->columnCount,
                               closedCaptionGrid->rowCount);
        }
    }
    update();
}

void MonitorPicture::ShowText(const QString& text) {
    composed_ = QImage();
    text_ = text;
    update();
}

QSize MonitorPicture::FittedSize(int clipWidthPx, int clipHeightPx) const {
    if (clipWidthPx <= 0 || clipHeightPx <= 0) {
        return {};
    }
    return QSize(clipWidthPx, clipHeightPx).scaled(size(), Qt::KeepAspectRatio);
}

void MonitorPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!composed_.isNull()) {
        QRect target(QPoint(), composed_.size().scaled(size(), Qt::KeepAspectRatio));
        target.moveCenter(rect().center());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, composed_);
    }
    if (!text_.isEmpty()) {
        painter.setPen(Qt::lightGray);
        painter.drawText(rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap,
                         text_);
    }
}

} // namespace host
