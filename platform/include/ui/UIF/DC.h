#pragma once

#include "UIF/Colors.h"
#include "UIF/Geometry.h"
#include "zelcore/UTF16String.h"
#include "zelui/ui/UI_Color.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace UIF {

class Bitmap;

enum FontID : std::int32_t {
    kFont_Normal = 0, // the application's control font
    kFont_Bold = 1,
    kFont_Small = 2,
};

enum TextAlignment : std::int32_t {
    kTextAlign_Left = 0,
    kTextAlign_Center = 1,
    kTextAlign_Right = 2,
};

// A drawing context for a view's Draw hook, in the view's client
// coordinates. Strings may be localisation keys; they are drawn localised.
class DC {
public:
    struct Impl;
    explicit DC(std::unique_ptr<Impl> impl);
    DC(const DC&) = delete;
    DC& operator=(const DC&) = delete;
    ~DC();

    void FillRect(const Rect& rect, ColorID color, std::uint8_t alpha = 255);
    void FillRect(const Rect& rect, const zelui::ui::UI_Color& color);

    std::int32_t GetStringWidth(std::u16string_view text, FontID font) const;
    // Ascent plus descent.
    std::int32_t GetFontHeight(FontID font) const;

    // One line, vertically centred in the box and clipped to it.
    void DrawString(std::u16string_view text, const Rect& box, FontID font, ColorID color,
                    TextAlignment alignment = kTextAlign_Left);

    // At its own size with its top-left corner at (x, y).
    void DrawImage(const Bitmap& bitmap, std::int32_t x, std::int32_t y);
    // Scaled into the rectangle.
    void DrawImage(const Bitmap& bitmap, const Rect& destination);

    // The area being drawn.
    Rect GetClipRect() const;

    Impl& GetImpl() const { return *impl_; }

private:
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF
