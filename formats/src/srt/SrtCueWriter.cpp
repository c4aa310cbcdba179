#include "srt/SrtCueWriter.h"

#include "common/ByteScan.h"
#include "common/ClockText.h"
#include "common/CssColor.h"
#include "common/KeypadAnchor.h"
#include "common/SpanTags.h"
#include "common/TextInput.h"
#include "scc/Cea608Screen.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <optional>

namespace captionformats::srt {

using namespace zelcaptioning;

namespace {

constexpr SpanCapabilities kSrtKeeps{
    .bold = true, .italic = true, .underline = true, .textColor = true};

// The escape of the byte at `at` of `text` when the reader would take it for
// markup: '&', '<', '>' and the '{' of an override block; else nullptr.
const char* EscapeAt(std::string_view text, std::size_t at) {
    const char c = text[at];
    return c == '&'                                       ? "&amp;"
           : c == '<'                                     ? "&lt;"
           : c == '>'                                     ? "&gt;"
           : at + 1 < text.size() && text[at + 1] == '\\' ? "&#123;"
                                                          : nullptr;
}

constexpr std::size_t kWidestEscape = 6; // "&#123;"

template <std::size_t Size> char* CopyText(char* to, const char (&text)[Size]) {
    return std::copy(text, text + Size - 1, to);
}

char* CopyText(char* to, std::string_view text) {
    return std::copy(text.begin(), text.end(), to);
}

// Copies `text` escaped (EscapeAt) to `to`, which has room for kWidestEscape
// bytes a byte; returns the end of the copy. Text without markup, the usual
// case, is copied whole.
char* CopyEscaped(char* to, std::string_view text) {
    std::size_t start = 0;
    for (std::size_t at = 0; (at = FindFirstOf<'&', '<', '>', '{'>(text, at)) < text.size(); ++at) {
        if (const char* escape = EscapeAt(text, at)) {
            to = CopyText(to, text.substr(start, at - start));
            to = CopyText(to, escape);
            start = at + 1;
        }
    }
    return CopyText(to, text.substr(start));
}

// The emphasis of a span's attributes, as the tags mark it.
Emphasis EmphasisOf(const TextSpanAttributes& attributes) {
    return (attributes.IsBolded() ? kEmphasisBold : 0) |
           (attributes.IsItalicized() ? kEmphasisItalic : 0) |
           (attributes.IsUnderlined() ? kEmphasisUnderline : 0);
}

// The most bytes the tags of one emphasis take.
constexpr std::size_t kStyleTagBytes = kOpeningTags[7].size() + kClosingTags[7].size();

// `text` escaped (CopyEscaped) in the tags of `emphasis`, written at `to`,
// which has room for them; returns their end.
char* CopyInStyleTags(char* to, Emphasis emphasis, std::string_view text) {
    to = CopyText(to, kOpeningTags[emphasis]);
    to = CopyEscaped(to, text);
    return CopyText(to, kClosingTags[emphasis]);
}

// The most bytes a span's markup takes beside its escaped text: a colour's
// font tags and the style tags.
constexpr std::size_t kSpanMarkupBytes =
    std::string_view("<font color=\"#rrggbb\"></font>").size() + kStyleTagBytes;

// The most bytes a cue's number and timing lines take, and the line end
// after each line of text and after the cue.
constexpr std::size_t kCueHeadBytes = 20 + 2 + 2 * kClockTextBytes + 5 + 2;
constexpr std::size_t kLineEndBytes = 2;

// The bytes a plain screen cell may hold: ASCII that SubRip writes as it is.
constexpr std::array<bool, 128> kPlainCharacters = [] {
    std::array<bool, 128> table{};
    for (std::size_t c = 0x20; c < 0x7F; ++c) {
        table[c] = c != '&' && c != '<' && c != '>' && c != '{';
    }
    return table;
}();

} // namespace

char* SrtCueWriter::CopyCueHead(char* to, zelmediatypes::TickTime begin,
                                zelmediatypes::TickTime end, std::size_t index) {
    to = std::to_chars(to, to + 20, index + 1).ptr;
    to = CopyText(to, "\r\n");
    to = CopyClockMilliseconds(to, begin, ',');
    to = CopyText(to, " --> ");
    to = CopyClockMilliseconds(to, end, ',');
    return CopyText(to, "\r\n");
}

void SrtCueWriter::Write(const Caption& caption, std::size_t index) {
    BeginCue(caption.GetBeginTime(), caption.GetCaptionType(), index);
    Reserved(kCueHeadBytes, [&](char* to) {
        return CopyCueHead(to, caption.GetBeginTime(), caption.GetEndTime(), index);
    });
    std::string placement;
    if (caption.GetNumParagraphs() > 0) {
        const ParagraphStyleAttributes style =
            caption.GetCaptionTextParagraph(0)->GetParagraphStyleAttributes();
        for (std::uint64_t i = 1; i < caption.GetNumParagraphs(); ++i) {
            if (caption.GetCaptionTextParagraph(i)->GetParagraphStyleAttributes() != style) {
                Lose("per-line placement dropped (the first line's is used)");
                break;
            }
        }
        placement = PlacementTag(style);
    }
    for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
        const CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
        if (IsBlank(zelcore::ToUTF8(paragraph.GetText()))) {
            Lose("empty line dropped");
            continue;
        }
        out_ += placement;
        placement.clear();
        for (std::uint64_t s = 0; s < paragraph.GetNumSpans(); ++s) {
            const CaptionTextSpan& span = *paragraph.GetCaptionTextSpan(s);
            const std::string utf8 = zelcore::ToUTF8(span.GetCaptionText());
            Reserved(kSpanMarkupBytes + kWidestEscape * utf8.size(),
                     [&](char* to) { return CopySpan(to, span.StyleAttributes(), utf8); });
        }
        out_ += "\r\n";
    }
    out_ += "\r\n";
}

void SrtCueWriter::WriteSpans(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                              CaptionType type, const ParagraphStyleAttributes& style,
                              std::span<const Span> spans, std::span<const std::size_t> lineEnds,
                              std::size_t index) {
    BeginCue(begin, type, index);
    const std::string placement = lineEnds.empty() ? std::string() : PlacementTag(style);
    // The whole cue is written in room for the most it can take.
    std::size_t most =
        kCueHeadBytes + kLineEndBytes + lineEnds.size() * (placement.size() + kLineEndBytes);
    for (const Span& span : spans) {
        most += kSpanMarkupBytes + kWidestEscape * span.utf8.size();
    }
    Reserved(most, [&](char* to) {
        to = CopyCueHead(to, begin, end, index);
        std::string_view tag = placement;
        std::size_t lineStart = 0;
        for (const std::size_t lineEnd : lineEnds) {
            const std::span<const Span> line = spans.subspan(lineStart, lineEnd - lineStart);
            lineStart = lineEnd;
            bool blank = true;
            for (const Span& span : line) {
                blank = blank && IsBlank(span.utf8);
            }
            if (blank) {
                Lose("empty line dropped");
                continue;
            }
            to = CopyText(to, tag);
            tag = {};
            for (const Span& span : line) {
                to = CopySpan(to, *span.attributes, span.utf8);
            }
            to = CopyText(to, "\r\n");
        }
        return CopyText(to, "\r\n");
    });
}

bool SrtCueWriter::WriteScreen(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                               CaptionType type, const ParagraphStyleAttributes& style,
                               const cea608::CaptionMemory& screen, std::size_t index) {
    using Memory = cea608::CaptionMemory;
    // A row's line: its cells with the gaps between them, a run's tags for
    // each cell at most, and the line end.
    constexpr std::size_t kRowBytes =
        static_cast<std::size_t>(Memory::kColumns) * (1 + kStyleTagBytes) + kLineEndBytes;
    BeginCue(begin, type, index);
    const bool anyRow = !screen.VisitRows([](auto&&...) { return false; });
    const std::string placement = anyRow ? PlacementTag(style) : std::string();
    const std::size_t most = kCueHeadBytes + placement.size() + kLineEndBytes +
                             static_cast<std::size_t>(screen.RowsInUseAtMost()) * kRowBytes;
    if (screenCue_.size() < most) {
        screenCue_.resize(most);
    }
    char* to = CopyCueHead(screenCue_.data(), begin, end, index);
    std::string_view tag = placement;
    bool blankLines = false;
    const bool plain =
        screen.VisitRows([&](std::uint32_t written,
                             const std::array<Memory::Cell, Memory::kColumns>& cells, bool beyond) {
            if (beyond) {
                return false;
            }
            // The state in locals: stores through `out` may alias anything else.
            char* const lineStart = to;
            char* out = CopyText(to, tag);
            const ScreenStyle* cellKind = nullptr; // of the cell before, of style `styleBits`
            std::uint32_t styleBits = 0;
            std::optional<Emphasis> run; // of the run being written
            char32_t notSpaces = 0;
            // Takes a cell's style; false when the style does not only emphasise.
            auto styleOf = [&](const Memory::Cell& cell) {
                const auto thisStyle = std::bit_cast<std::uint32_t>(cell.style);
                if (cellKind == nullptr || thisStyle != styleBits) {
                    cellKind = &ScreenStyleOf(thisStyle);
                    styleBits = thisStyle;
                    if (!cellKind->plain) {
                        return false;
                    }
                    // Runs alike in emphasis are alike in all: one run.
                    if (run != cellKind->emphasis) {
                        if (run) {
                            out = CopyText(out, kClosingTags[*run]);
                        }
                        run = cellKind->emphasis;
                        out = CopyText(out, kOpeningTags[*run]);
                    }
                }
                return true;
            };
            // The cells come in stretches side by side; a gap before a
            // stretch takes the style of its first cell.
            for (int next = std::countr_zero(written); written != 0;) {
                const int start = std::countr_zero(written);
                const int stop = start + std::countr_one(written >> start);
                written = stop < Memory::kColumns ? written & (~0U << stop) : 0;
                if (!styleOf(cells[static_cast<std::size_t>(start)])) {
                    return false;
                }
                for (; next < start; ++next) {
                    *out++ = ' ';
                }
                for (int column = start; column < stop; ++column) {
                    const Memory::Cell& cell = cells[static_cast<std::size_t>(column)];
                    const char32_t character = cell.character;
                    if (!styleOf(cell) || character >= kPlainCharacters.size() ||
                        !kPlainCharacters[character]) {
                        return false;
                    }
                    *out++ = static_cast<char>(character);
                    notSpaces |= character ^ U' ';
                }
                next = stop;
            }
            const bool blank = notSpaces == 0;
            if (blank) {
                to = lineStart;
                blankLines = true;
                return true;
            }
            out = CopyText(out, kClosingTags[*run]);
            to = CopyText(out, "\r\n");
            tag = {};
            return true;
        });
    if (!plain) {
        return false;
    }
    if (blankLines) {
        Lose("empty line dropped");
    }
    to = CopyText(to, "\r\n");
    out_.append(screenCue_.data(), to);
    return true;
}

const SrtCueWriter::ScreenStyle& SrtCueWriter::ScreenStyleOf(std::uint32_t cellStyle) {
    for (const ScreenStyle& known : screenStyles_) {
        if (known.cellStyle == cellStyle) {
            return known;
        }
    }
    const TextSpanAttributes attributes =
        std::bit_cast<cea608::CaptionMemory::CellStyle>(cellStyle).Attributes();
    return screenStyles_.emplace_back(
        ScreenStyle{cellStyle, OnlyEmphasis(attributes), EmphasisOf(attributes)});
}

std::string SrtCueWriter::PlacementTag(const ParagraphStyleAttributes& style) {
    if (!IsGridAnchor(style.GetAnchorID())) {
        Lose("free position dropped (written bottom centre)");
        return {};
    }
    if (style.GetTextAlignment() != AlignmentOfColumn(style.GetAnchorID())) {
        Lose("text alignment other than the anchor's side dropped");
    }
    const int keypad = KeypadFromAnchor(style.GetAnchorID());
    return keypad == 2 ? std::string() : "{\\an" + std::to_string(keypad) + "}";
}

char* SrtCueWriter::CopySpan(char* to, const TextSpanAttributes& attributes,
                             std::string_view utf8) {
    // Most spans are plain or only emphasised: no losses to note and no colour
    // to write.
    if (OnlyEmphasis(attributes)) {
        return CopyInStyleTags(to, EmphasisOf(attributes), utf8);
    }
    losses_.NoteSpanLosses(attributes, kSrtKeeps, index_, begin_);
    const bool colored = attributes.textColor != kCaptioningColor_White;
    if (colored) {
        to = CopyText(to, "<font color=\"");
        to = CopyText(to, ToHexRgb(attributes.textColor));
        to = CopyText(to, "\">");
    }
    to = CopyInStyleTags(to, EmphasisOf(attributes), utf8);
    return colored ? CopyText(to, "</font>") : to;
}

} // namespace captionformats::srt
