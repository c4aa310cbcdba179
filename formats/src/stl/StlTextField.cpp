#include "stl/StlTextField.h"

#include "common/TextInput.h"
#include "stl/Iso6937.h"
#include "stl/StlLayout.h"

#include <array>

namespace captionformats::stl {

using namespace zelcaptioning;

namespace {

constexpr std::uint8_t kLineBreak = 0x8A;
constexpr std::uint8_t kUnusedSpace = 0x8F;

class FieldDecoder {
public:
    FieldDecoder(DiagnosticLog& log, std::uint64_t fieldOffset)
        : log_(log)
        , fieldOffset_(fieldOffset) {
        StartLine();
    }

    StlText Decode(std::string_view field) {
        for (std::size_t i = 0; i < field.size(); ++i) {
            const auto byte = static_cast<std::uint8_t>(field[i]);
            if (byte == kLineBreak) {
                EndLine();
                StartLine();
            } else if (byte < 0x20) {
                Control(byte);
            } else if (byte >= 0x80 && byte < 0xA0) {
                InVision(byte);
            } else if (IsIso6937Diacritic(byte)) {
                const auto base = i + 1 < field.size()
                                      ? Iso6937Character(static_cast<std::uint8_t>(field[i + 1]))
                                      : std::nullopt;
                const auto letter = base ? Iso6937Compose(byte, *base) : std::nullopt;
                Character(letter ? *letter : base.value_or(U'\uFFFD'));
                i += base ? 1 : 0;
            } else if (const auto character = Iso6937Character(byte)) {
                Character(*character);
            } else {
                Character(U'\uFFFD');
            }
        }
        EndLine();
        return std::move(text_);
    }

private:
    void StartLine() {
        style_ = TextSpanAttributes();
        line_ = StlLine();
        pendingSpace_ = false;
        seenCharacter_ = false;
    }

    void EndLine() {
        while (!line_.runs.empty()) {
            std::string& last = line_.runs.back().utf8;
            while (!last.empty() && last.back() == ' ') {
                last.pop_back();
            }
            if (!last.empty()) {
                break;
            }
            line_.runs.pop_back();
        }
        if (!line_.runs.empty()) {
            text_.lines.push_back(std::move(line_));
        }
    }

    // Teletext spacing attributes: each takes a cell.
    void Control(std::uint8_t code) {
        if (!seenCharacter_) {
            ++line_.leadingCells;
        } else if (!pendingSpace_) {
            pendingSpace_ = true;
            Append(" ");
        }
        if (code <= 0x07) {
            style_.textColor = kTeletextColors[code];
        } else if (code == 0x1D) {
            style_.backgroundColor = style_.textColor;
        } else if (code == 0x1C) {
            style_.backgroundColor = kCaptioningColor_Transparent;
        } else if (code == 0x0D) {
            text_.doubleHeight = true;
        } else if (code == 0x08 || code == 0x0E || code == 0x0F || (code >= 0x10 && code <= 0x1A)) {
            Report("teletext flash, double width and mosaic codes dropped");
        }
    }

    // Open-subtitle codes 80h-85h change styles without taking a cell.
    void InVision(std::uint8_t code) {
        switch (code) {
        case 0x80:
            style_.SetItalicized(true);
            break;
        case 0x81:
            style_.SetItalicized(false);
            break;
        case 0x82:
            style_.SetUnderlined(true);
            break;
        case 0x83:
            style_.SetUnderlined(false);
            break;
        case kUnusedSpace:
            break;
        default:
            break; // boxing and reserved codes change nothing we keep
        }
    }

    void Character(char32_t character) {
        if (!seenCharacter_ && character == U' ') {
            ++line_.leadingCells;
            return;
        }
        std::string utf8;
        AppendUtf8(utf8, character);
        pendingSpace_ = false;
        seenCharacter_ = true;
        Append(utf8);
    }

    void Append(std::string_view utf8) {
        if (!line_.runs.empty() && line_.runs.back().attributes == style_) {
            line_.runs.back().utf8 += utf8;
        } else if (!line_.runs.empty() && utf8 == " ") {
            line_.runs.back().utf8 += utf8; // a control's cell keeps the style before it
        } else {
            line_.runs.push_back({std::string(utf8), style_});
        }
    }

    void Report(const char* what) {
        if (!reported_) {
            log_.Warn(SourceLocation::AtByte(fieldOffset_), what);
            reported_ = true;
        }
    }

    DiagnosticLog& log_;
    std::uint64_t fieldOffset_;
    StlText text_;
    StlLine line_;
    TextSpanAttributes style_;
    bool pendingSpace_ = false;
    bool seenCharacter_ = false;
    bool reported_ = false;
};

} // namespace

StlText DecodeTextField(std::string_view field, DiagnosticLog& log, std::uint64_t fieldOffset) {
    return FieldDecoder(log, fieldOffset).Decode(field);
}

} // namespace captionformats::stl
