#include "HSL/CaptionRendering.h"
#include "SpanFonts.h"
#include "zelcaptioning/CaptionArea.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QString>

#include <algorithm>

namespace HSL {
namespace {

QColor ToQColor(const zelcaptioning::CaptioningColor& c) {
    return QColor::fromRgbF(std::clamp(c.red, 0.0f, 1.0f), std::clamp(c.green, 0.0f, 1.0f),
                            std::clamp(c.blue, 0.0f, 1.0f), std::clamp(c.alpha, 0.0f, 1.0f));
}

QFont ToQFont(const zelcaptioning::TextSpanAttributes& attributes, double scale) {
    const zelui::drawbot::FontSpec spec = detail::FontOf(attributes);
    QFont font(QString::fromUtf16(spec.family.data(), static_cast<qsizetype>(spec.family.size())));
    font.setPixelSize(std::max(1, static_cast<int>(spec.sizePixels * scale + 0.5)));
    font.setBold(attributes.IsBolded());
    font.setItalic(attributes.IsItalicized());
    font.setUnderline(attributes.IsUnderlined());
    return font;
}

// Draws one span at (x, baseline) and returns the x after it.
double DrawSpan(QPainter& painter, const zelcaptioning::CaptionTextSpan& span, double x,
                double lineTop, double lineHeight, double scale) {
    const zelcaptioning::TextSpanAttributes& a = span.StyleAttributes();
    const zelcore::UTF16String text = span.GetCaptionText();
    const QString qtext = QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
    const QFont font = ToQFont(a, scale);
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(qtext);
    if (!a.backgroundColor.IsTransparent()) {
        painter.fillRect(QRectF(x, lineTop, width, lineHeight), ToQColor(a.backgroundColor));
    }
    const double baseline = lineTop + (lineHeight - metrics.height()) / 2 + metrics.ascent();
    QPainterPath path;
    path.addText(QPointF(x, baseline), font, qtext);
    if (a.GetTextEdge() != zelcaptioning::TextSpanAttributes::kTextEdge_None &&
        a.edgeWidth > 0.0f && !a.edgeColor.IsTransparent()) {
        QPen edge(ToQColor(a.edgeColor), 2.0 * a.edgeWidth * scale);
        edge.setJoinStyle(Qt::RoundJoin);
        painter.strokePath(path, edge);
    }
    painter.fillPath(path, ToQColor(a.textColor));
    return x + width;
}

} // namespace

void RenderOpenCaptions(VF::VideoFrame& frame, const zelcaptioning::Caption& caption,
                        int clipWidthPx, int clipHeightPx) {
    if (frame.IsEmpty() || frame.IsError() || clipWidthPx <= 0 || clipHeightPx <= 0) {
        return;
    }
    QImage image(frame.GetPixels(), frame.GetWidthPx(), frame.GetHeightPx(),
                 static_cast<qsizetype>(frame.GetStrideBytes()), QImage::Format_RGBA8888);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = static_cast<double>(frame.GetWidthPx()) / clipWidthPx;
    const double areaWidth = frame.GetWidthPx() * double{zelcaptioning::kCaptionAreaScale};
    const double areaHeight = frame.GetHeightPx() * double{zelcaptioning::kCaptionAreaScale};
    const double left = (frame.GetWidthPx() - areaWidth) / 2;
    const double top = (frame.GetHeightPx() - areaHeight) / 2;
    for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
        const zelcaptioning::CaptionTextParagraphPtr paragraph = caption.GetCaptionTextParagraph(p);
        if (!zelcaptioning::IsPlaced(paragraph)) {
            continue;
        }
        const zelcaptioning::Position position = paragraph->GetCaptionPosition();
        double x = left + zelcaptioning::AsDouble(position.GetX()) * areaWidth;
        const double lineTop = top + zelcaptioning::AsDouble(position.GetY()) * areaHeight;
        const double lineHeight = static_cast<double>(paragraph->GetParagraphLineHeight()) * scale;
        for (std::uint64_t s = 0; s < paragraph->GetNumSpans(); ++s) {
            if (const auto span = paragraph->GetCaptionTextSpan(s)) {
                x = DrawSpan(painter, *span, x, lineTop, lineHeight, scale);
            }
        }
    }
}

} // namespace HSL
