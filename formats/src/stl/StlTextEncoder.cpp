#include "stl/StlTextEncoder.h"

#include "common/CodePoints.h"
#include "stl/Iso6937.h"
#include "stl/StlLayout.h"

#include <array>

namespace captionformats::stl {

using namespace zelcaptioning;

namespace {

constexpr SpanCapabilities kStlKeeps{.italic = true, .underline = true, .textColor = true};

constexpr int kWhite = 7;

int TeletextColorCode(const CaptioningColor& color) {
    for (std::size_t i = 0; i < kTeletextColors.size(); ++i) {
        if (kTeletextColors[i] == color) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace

std::string EncodeLine(const CaptionTextParagraph& line, LossReport& losses,
                       std::size_t captionIndex, zelmediatypes::TickTime begin) {
    std::string bytes;
    int color = kWhite;
    bool italic = false;
    bool underline = false;
    for (std::uint64_t s = 0; s < line.GetNumSpans(); ++s) {
        const CaptionTextSpan& span = *line.GetCaptionTextSpan(s);
        const TextSpanAttributes& attributes = span.StyleAttributes();
        losses.NoteSpanLosses(attributes, kStlKeeps, captionIndex, begin);
        int wanted = TeletextColorCode(attributes.textColor);
        if (wanted < 0) {
            losses.Note("text colour outside the teletext colours written white", captionIndex,
                        begin);
            wanted = kWhite;
        }
        if (wanted != color) {
            // A colour code takes a cell: the space before the change, if any.
            if (!bytes.empty() && bytes.back() == ' ') {
                bytes.back() = static_cast<char>(wanted);
            } else {
                if (!bytes.empty()) {
                    losses.Note("spaces added to carry colour changes", captionIndex, begin);
                }
                bytes.push_back(static_cast<char>(wanted));
            }
            color = wanted;
        }
        if (attributes.IsItalicized() != italic) {
            italic = attributes.IsItalicized();
            bytes.push_back(static_cast<char>(italic ? 0x80 : 0x81));
        }
        if (attributes.IsUnderlined() != underline) {
            underline = attributes.IsUnderlined();
            bytes.push_back(static_cast<char>(underline ? 0x82 : 0x83));
        }
        for (char32_t character : CodePoints(span.GetCaptionText())) {
            std::string encoded = Iso6937Bytes(character);
            if (encoded.empty()) {
                losses.Note("characters outside ISO 6937 written as '?'", captionIndex, begin);
                encoded.assign(1, '?');
            }
            bytes.append(encoded.data(), encoded.size());
        }
    }
    return bytes;
}

} // namespace captionformats::stl
