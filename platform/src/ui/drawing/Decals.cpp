#include "drawing/BitmapImpl.h"
#include "drawing/Palette.h"

#include <QPainter>
#include <QPainterPath>

namespace platform::ui {
namespace {

constexpr int kButtonDecalPx = 16;
constexpr int kLargeDecalPx = 64;

QImage BlankImage(int sizePx) {
    QImage image(sizePx, sizePx, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// Three or four text lines, each a bar, placed as the alignment places text.
void PaintJustify(QPainter& painter, const QColor& ink, Qt::Alignment alignment) {
    const int widths[] = {12, 8, 12, 6};
    for (int line = 0; line < 4; ++line) {
        const int width = widths[line];
        const int x = alignment == Qt::AlignLeft    ? 2
                      : alignment == Qt::AlignRight ? 14 - width
                                                    : (16 - width) / 2;
        painter.fillRect(QRect(x, 3 + line * 3, width, 2), ink);
    }
}

void PaintLetter(QPainter& painter, const QColor& ink, const QString& letter, bool bold,
                 bool italic, bool underline) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    font.setBold(bold);
    font.setItalic(italic);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(QRect(0, -1, 16, 15), Qt::AlignCenter, letter);
    if (underline) {
        painter.fillRect(QRect(4, 14, 8, 1), ink);
    }
}

void PaintMusicNote(QPainter& painter, const QColor& ink) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(ink);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QRectF(3.0, 10.0, 5.0, 4.0));
    painter.fillRect(QRectF(7.0, 2.0, 1.5, 10.0), ink);
    QPainterPath flag;
    flag.moveTo(8.5, 2.0);
    flag.cubicTo(10.5, 4.0, 13.0, 5.0, 12.0, 8.5);
    flag.cubicTo(11.5, 6.5, 10.0, 5.5, 8.5, 5.5);
    flag.closeSubpath();
    painter.drawPath(flag);
}

// A letter "T" over a colour bar: which colour of the text the button chooses.
void PaintColorTarget(QPainter& painter, const QColor& ink, UIF::DecalID decal) {
    QColor bar = ink;
    if (decal == UIF::kCaptionBackgroundColorDecal) {
        painter.fillRect(QRect(1, 1, 14, 11), Blend(ink, Qt::transparent, 0.6));
        bar = QColor(70, 120, 200);
    } else if (decal == UIF::kCaptionTextOutlineColorDecal) {
        QPainterPath outline;
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(13);
        font.setBold(true);
        outline.addText(3.0, 11.5, font, QStringLiteral("T"));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.strokePath(outline, QPen(ink, 1.0));
        painter.fillRect(QRect(1, 13, 14, 3), QColor(200, 80, 60));
        return;
    } else {
        bar = QColor(230, 200, 40);
    }
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(QRect(0, 0, 16, 12), Qt::AlignCenter, QStringLiteral("T"));
    painter.fillRect(QRect(1, 13, 14, 3), bar);
}

// A loudspeaker with sound waves on a rounded tile.
void PaintAudioLarge(QPainter& painter, const QColor& ink, const QColor& tile) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tile);
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 8, 8);
    painter.setBrush(ink);
    QPainterPath speaker;
    speaker.moveTo(14, 26);
    speaker.lineTo(22, 26);
    speaker.lineTo(32, 17);
    speaker.lineTo(32, 47);
    speaker.lineTo(22, 38);
    speaker.lineTo(14, 38);
    speaker.closeSubpath();
    painter.drawPath(speaker);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 3.0, Qt::SolidLine, Qt::RoundCap));
    for (int wave = 0; wave < 3; ++wave) {
        const double radius = 8.0 + wave * 7.0;
        painter.drawArc(QRectF(30 - radius, 32 - radius, 2 * radius, 2 * radius), -45 * 16,
                        90 * 16);
    }
}

} // namespace

QImage PaintDecal(UIF::DecalID decal) {
    const QPalette palette = ApplicationPalette();
    const QColor ink = palette.color(QPalette::WindowText);
    if (decal == UIF::kAudioLargeDecal) {
        QImage image = BlankImage(kLargeDecalPx);
        QPainter painter(&image);
        PaintAudioLarge(painter, ink, Blend(palette.color(QPalette::Window), ink, 0.15));
        return image;
    }
    QImage image = BlankImage(kButtonDecalPx);
    QPainter painter(&image);
    switch (decal) {
    case UIF::kCaptionJustifyLeftDecal:
        PaintJustify(painter, ink, Qt::AlignLeft);
        break;
    case UIF::kCaptionJustifyCenterDecal:
        PaintJustify(painter, ink, Qt::AlignHCenter);
        break;
    case UIF::kCaptionJustifyRightDecal:
        PaintJustify(painter, ink, Qt::AlignRight);
        break;
    case UIF::kCaptionBoldDecal:
        PaintLetter(painter, ink, QStringLiteral("B"), true, false, false);
        break;
    case UIF::kCaptionItalicizeDecal:
        PaintLetter(painter, ink, QStringLiteral("I"), false, true, false);
        break;
    case UIF::kCaptionUnderlineDecal:
        PaintLetter(painter, ink, QStringLiteral("U"), false, false, true);
        break;
    case UIF::kCaptionMusicNoteDecal:
        PaintMusicNote(painter, ink);
        break;
    case UIF::kCaptionBackgroundColorDecal:
    case UIF::kCaptionTextColorDecal:
    case UIF::kCaptionTextOutlineColorDecal:
        PaintColorTarget(painter, ink, decal);
        break;
    default:
        return QImage();
    }
    return image;
}

} // namespace platform::ui
