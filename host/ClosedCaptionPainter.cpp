#include "ClosedCaptionPainter.h"

#include "QtText.h"
#include "zelcaptioning/CaptionTextParagraph.h"
#include "zelcaptioning/CaptionTextSpan.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <vector>

namespace host {
namespace {

struct Cell {
    QChar character;
    zelcaptioning::TextSpanAttributes attributes;
};

std::vector<Cell> CellsOf(const zelcaptioning::CaptionTextParagraph& paragraph) {
    std::vector<Cell> cells;
    for (std::uint64_t s = 0; s < paragraph.GetNumSpans(); ++s) {
        const zelcaptioning::CaptionTextSpanPtr span = paragraph.GetCaptionTextSpan(s);
        const zelcaptioning::TextSpanAttributes attributes = span->GetTextSpanStyleAttributes();
        for (const QChar character : ToQString(span->GetCaptionText())) {
            cells.push_back({character, attributes});
        }
    }
    return cells;
}

QColor ToQColor(const zelcaptioning::CaptioningColor& color) {
    return QColor::fromRgbF(color.red, color.green, color.blue, color.alpha);
}

} // namespace

void PaintClosedCaption(QImage& picture, const zelcaptioning::Caption& caption, int columnCount,
                        int rowCount) {
    if (picture.isNull() || columnCount <= 0 || rowCount <= 0) {
        return;
    }
    const QRectF area(picture.width() * 0.1, picture.height() * 0.1, picture.width() * 0.8,
                      picture.height() * 0.8);
    const double cellWidth = area.width() / columnCount;
    const double cellHeight = area.height() / rowCount;
    QPainter painter(&picture);
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(std::max(1, static_cast<int>(cellHeight * 0.8)));

    const std::uint64_t count = caption.GetNumParagraphs();
    std::uint64_t unplacedLeft = 0;
    for (std::uint64_t p = 0; p < count; ++p) {
        unplacedLeft += caption.GetCaptionTextParagraph(p)->GetCaptionPosition() ==
                        zelcaptioning::kPosition_Uninitialized;
    }
    for (std::uint64_t p = 0; p < count; ++p) {
        const zelcaptioning::CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
        const std::vector<Cell> cells = CellsOf(paragraph);
        const zelcaptioning::Position position = paragraph.GetCaptionPosition();
        std::int64_t row = 0;
        std::int64_t column = 0;
        if (position == zelcaptioning::kPosition_Uninitialized) {
            row = rowCount - static_cast<std::int64_t>(unplacedLeft--);
            column = (columnCount - static_cast<std::int64_t>(cells.size())) / 2;
        } else {
            row = zelcaptioning::ValueWithScale(position.GetY(), rowCount, true);
            column = zelcaptioning::ValueWithScale(position.GetX(), columnCount, true);
        }
        const double top = area.top() + std::clamp<std::int64_t>(row, 0, rowCount - 1) * cellHeight;
        for (std::int64_t i = -1; i <= static_cast<std::int64_t>(cells.size()); ++i) {
            const std::int64_t cellColumn = column + i;
            if (cellColumn < 0 || cellColumn >= columnCount) {
                continue;
            }
            const QRectF box(area.left() + cellColumn * cellWidth, top, cellWidth, cellHeight);
            const bool padding = i < 0 || i >= static_cast<std::int64_t>(cells.size());
            const Cell* cell = padding ? nullptr : &cells[static_cast<std::size_t>(i)];
            const zelcaptioning::CaptioningColor background =
                cell ? cell->attributes.backgroundColor : zelcaptioning::CaptioningColor();
            // Snapped outwards so neighbouring boxes leave no seam.
            painter.fillRect(box.toAlignedRect(),
                             background.IsTransparent() ? QColor(Qt::black) : ToQColor(background));
            if (!cell) {
                continue;
            }
            QFont cellFont = font;
            cellFont.setItalic(cell->attributes.IsItalicized());
            cellFont.setUnderline(cell->attributes.IsUnderlined());
            painter.setFont(cellFont);
            painter.setPen(ToQColor(cell->attributes.textColor));
            painter.drawText(box, Qt::AlignCenter, QString(cell->character));
        }
    }
}

} // namespace host
