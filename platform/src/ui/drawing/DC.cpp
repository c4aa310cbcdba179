#include "UIF/DC.h"

#include "UIF/Bitmap.h"
#include "drawing/BitmapImpl.h"
#include "drawing/DCImpl.h"
#include "input/QtConversions.h"

#include <QApplication>
#include <QFontMetrics>

namespace platform::ui {

QFont FontOf(UIF::FontID font) {
    QFont qfont = QApplication::font();
    switch (font) {
    case UIF::kFont_Bold:
        qfont.setBold(true);
        break;
    case UIF::kFont_Small:
        qfont.setPointSizeF(qfont.pointSizeF() * 0.85);
        break;
    case UIF::kFont_Normal:
        break;
    }
    return qfont;
}

} // namespace platform::ui

namespace UIF {

using platform::ui::ToQColor;
using platform::ui::ToQRect;

DC::DC(std::unique_ptr<Impl> impl)
    : impl_(std::move(impl)) {}

DC::~DC() = default;

void DC::FillRect(const Rect& rect, ColorID color, std::uint8_t alpha) {
    zelui::ui::UI_Color rgba = GetColor(color);
    rgba.alpha = alpha;
    FillRect(rect, rgba);
}

void DC::FillRect(const Rect& rect, const zelui::ui::UI_Color& color) {
    impl_->painter.fillRect(ToQRect(rect), ToQColor(color));
}

std::int32_t DC::GetStringWidth(std::u16string_view text, FontID font) const {
    return QFontMetrics(platform::ui::FontOf(font))
        .horizontalAdvance(platform::ui::Localized(text));
}

std::int32_t DC::GetFontHeight(FontID font) const {
    return QFontMetrics(platform::ui::FontOf(font)).height();
}

void DC::DrawString(std::u16string_view text, const Rect& box, FontID font, ColorID color,
                    TextAlignment alignment) {
    QPainter& painter = impl_->painter;
    painter.save();
    painter.setFont(platform::ui::FontOf(font));
    painter.setPen(ToQColor(GetColor(color)));
    painter.setClipRect(ToQRect(box), Qt::IntersectClip);
    const Qt::Alignment horizontal = alignment == kTextAlign_Center  ? Qt::AlignHCenter
                                     : alignment == kTextAlign_Right ? Qt::AlignRight
                                                                     : Qt::AlignLeft;
    painter.drawText(ToQRect(box),
                     static_cast<int>(horizontal | Qt::AlignVCenter) | Qt::TextSingleLine,
                     platform::ui::Localized(text));
    painter.restore();
}

void DC::DrawImage(const Bitmap& bitmap, std::int32_t x, std::int32_t y) {
    if (!bitmap.IsNull()) {
        impl_->painter.drawImage(QPoint(x, y), bitmap.GetImpl()->image);
    }
}

void DC::DrawImage(const Bitmap& bitmap, const Rect& destination) {
    if (!bitmap.IsNull()) {
        impl_->painter.drawImage(ToQRect(destination), bitmap.GetImpl()->image);
    }
}

Rect DC::GetClipRect() const {
    return platform::ui::ToRect(impl_->clipArea);
}

} // namespace UIF
