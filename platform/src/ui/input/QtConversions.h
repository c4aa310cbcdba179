#pragma once

#include "UIF/Geometry.h"
#include "zelcore/UTF16String.h"
#include "zelui/ui/UI_Color.h"

#include <QColor>
#include <QRect>
#include <QString>

#include <string_view>

namespace platform::ui {

inline QString ToQString(std::u16string_view text) {
    return QString(reinterpret_cast<const QChar*>(text.data()),
                   static_cast<qsizetype>(text.size()));
}

inline zelcore::UTF16String ToUTF16(const QString& text) {
    return zelcore::UTF16String(reinterpret_cast<const char16_t*>(text.utf16()),
                                static_cast<std::size_t>(text.size()));
}

// The text localised when it is a localisation key, as it is otherwise.
QString Localized(std::u16string_view keyOrText);

inline QRect ToQRect(const UIF::Rect& r) {
    return QRect(r.left, r.top, r.Width(), r.Height());
}
inline UIF::Rect ToRect(const QRect& r) {
    return UIF::Rect::FromSize(r.x(), r.y(), r.width(), r.height());
}

inline QColor ToQColor(const zelui::ui::UI_Color& c) {
    return QColor(c.red, c.green, c.blue, c.alpha);
}
inline zelui::ui::UI_Color ToUIColor(const QColor& c) {
    return {static_cast<std::uint8_t>(c.red()), static_cast<std::uint8_t>(c.green()),
            static_cast<std::uint8_t>(c.blue()), static_cast<std::uint8_t>(c.alpha())};
}

} // namespace platform::ui
