#pragma once

#include "zelcaptioning/CaptioningColor.h"
#include "zelcore/UTF16String.h"

#include <iosfwd>

namespace zelcaptioning {

// Character style of a span. The three colours and the edge width are public
// fields; the rest is reached through accessors.
class TextSpanAttributes {
public:
    enum TextEdge : std::int32_t {
        kTextEdge_None = 0,
        kTextEdge_Raised = 1,
        kTextEdge_Depressed = 2,
        kTextEdge_Uniform = 3, // an outline of the edge colour and width
        kTextEdge_DropShadow = 4,
    };

    static const zelcore::UTF16String kFontStyleString_Regular;
    static const zelcore::UTF16String kFontStyleString_Bold;
    static const zelcore::UTF16String kFontStyleString_Italic;
    static const zelcore::UTF16String kFontStyleString_BoldItalic;

    // The font size a span with size 0.0 is shown at.
    static constexpr float kDefaultFontSize = 20.0f;

    CaptioningColor textColor = kCaptioningColor_White;
    CaptioningColor backgroundColor = kCaptioningColor_Transparent;
    CaptioningColor edgeColor = kCaptioningColor_Transparent;
    float edgeWidth = 0.0f; // 0.0: no edge

    TextSpanAttributes() = default;
    TextSpanAttributes(const TextSpanAttributes&) = default;
    TextSpanAttributes& operator=(const TextSpanAttributes&) = default;
    ~TextSpanAttributes();

    const zelcore::UTF16String& GetFontName() const { return fontName_; }
    void SetFontName(const zelcore::UTF16String& name) { fontName_ = name; }
    float GetFontSize() const { return fontSize_; } // 0.0: the default size
    void SetFontSize(float size) { fontSize_ = size; }
    bool IsBolded() const { return bold_; }
    void SetBolded(bool bold) { bold_ = bold; }
    bool IsItalicized() const { return italic_; }
    void SetItalicized(bool italic) { italic_ = italic; }
    bool IsUnderlined() const { return underline_; }
    void SetUnderlined(bool underline) { underline_ = underline; }
    TextEdge GetTextEdge() const { return textEdge_; }
    void SetTextEdge(TextEdge edge) { textEdge_ = edge; }

    // True for a generic family name ("sans-serif", "monospace", "Default", ...)
    // that stands for whatever font the renderer picks, not a real font.
    static bool IsGenericFontName(const zelcore::UTF16String& name);

    // Equal in every attribute, the colours' alphas included.
    friend bool operator==(const TextSpanAttributes&, const TextSpanAttributes&) = default;

private:
    zelcore::UTF16String fontName_;
    float fontSize_ = 0.0f;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
    TextEdge textEdge_ = kTextEdge_None;
};

std::ostream& operator<<(std::ostream& os, const TextSpanAttributes& attributes);

} // namespace zelcaptioning
