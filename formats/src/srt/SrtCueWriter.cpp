#include "srt/SrtCueWriter.h"

#include "common/ByteScan.h"
#include "common/ClockText.h"
#include "common/CssColor.h"
#include "common/KeypadAnchor.h"
#include "common/SpanTags.h"
#include "common/TextInput.h"
#include "scc/Cea608Screen.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstring>
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

using Cell = cea608::CaptionMemory::Cell;

bool IsPlainCharacter(char32_t character) {
    return character < kPlainCharacters.size() && kPlainCharacters[character];
}

// Copies the characters of cells[column, stop) to `to` for as long as each
// is plain (kPlainCharacters) and of style `style`; returns the first column
// it did not copy. A row is mostly such cells, taken four at a time.
int CopyPlainCells(char*& to, const Cell* cells, int column, int stop, std::uint32_t style) {
    static_assert(sizeof(Cell) == 8 && offsetof(Cell, style) == 4);
    char* out = to;
#if defined(__SSE2__)
    const __m128i styles = _mm_set1_epi32(static_cast<int>(style));
    for (; column + 4 <= stop; column += 4) {
        const auto* at = reinterpret_cast<const __m128i*>(cells + column);
        const __m128 low = _mm_castsi128_ps(_mm_loadu_si128(at));
        const __m128 high = _mm_castsi128_ps(_mm_loadu_si128(at + 1));
        // Characters are below 0x110000, so signed comparisons hold.
        const __m128i characters = _mm_castps_si128(_mm_shuffle_ps(low, high, 0x88));
        const __m128i cellStyles = _mm_castps_si128(_mm_shuffle_ps(low, high, 0xDD));
        const __m128i printable =
            _mm_andnot_si128(_mm_cmplt_epi32(characters, _mm_set1_epi32(0x20)),
                             _mm_cmplt_epi32(characters, _mm_set1_epi32(0x7F)));
        const __m128i markup =
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi32(characters, _mm_set1_epi32('&')),
                                      _mm_cmpeq_epi32(characters, _mm_set1_epi32('<'))),
                         _mm_or_si128(_mm_cmpeq_epi32(characters, _mm_set1_epi32('>')),
                                      _mm_cmpeq_epi32(characters, _mm_set1_epi32('{'))));
        const __m128i plain =
            _mm_and_si128(_mm_cmpeq_epi32(cellStyles, styles), _mm_andnot_si128(markup, printable));
        if (_mm_movemask_epi8(plain) != 0xFFFF) {
            break;
        }
        const __m128i words = _mm_packs_epi32(characters, characters);
        const int bytes = _mm_cvtsi128_si32(_mm_packus_epi16(words, words));
        std::memcpy(out, &bytes, 4);
        out += 4;
    }
#endif
    for (; column < stop; ++column) {
        const Cell& cell = cells[column];
        if (std::bit_cast<std::uint32_t>(cell.style) != style ||
            !IsPlainCharacter(cell.character)) {
            break;
        }
        *out++ = static_cast<char>(cell.character);
    }
    to = out;
    return column;
}

// Whether every cell of the columns marked in `written` holds a space.
bool AllSpaces(std::uint32_t written,
               const std::array<Cell, cea608::CaptionMemory::kColumns>& cells) {
    for (; written != 0; written &= written - 1) {
        if (cells[static_cast<std::size_t>(std::countr_zero(written))].character != U' ') {
            return false;
        }
    }
    return true;
}

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
    const bool plain = screen.VisitRows([&](std::uint32_t written,
                                            const std::array<Memory::Cell, Memory::kColumns>& cells,
                                            bool beyond) {
        if (beyond) {
            return false;
        }
        // The state in locals: stores through `out` may alias anything else.
        char* out = CopyText(to, tag);
        std::uint32_t styleBits = 0;
        std::optional<Emphasis> run; // of the run being written
        // Takes the style of a cell in another style than the one before;
        // false when it does not only emphasise.
        auto takeStyle = [&](const Memory::Cell& cell) {
            styleBits = std::bit_cast<std::uint32_t>(cell.style);
            const ScreenStyle& kind = ScreenStyleOf(styleBits);
            if (!kind.plain) {
                return false;
            }
            // Runs alike in emphasis are alike in all: one run.
            if (run != kind.emphasis) {
                if (run) {
                    out = CopyText(out, kClosingTags[*run]);
                }
                run = kind.emphasis;
                out = CopyText(out, kOpeningTags[*run]);
            }
            return true;
        };
        if (!takeStyle(cells[static_cast<std::size_t>(std::countr_zero(written))])) {
            return false;
        }
        // The cells come in stretches side by side; a gap before a
        // stretch takes the style of its first cell.
        int next = std::countr_zero(written);
        for (std::uint32_t left = written; left != 0;) {
            const int start = std::countr_zero(left);
            const int stop = start + std::countr_one(left >> start);
            left = stop < Memory::kColumns ? left & (~0U << stop) : 0;
            const Memory::Cell& first = cells[static_cast<std::size_t>(start)];
            if (std::bit_cast<std::uint32_t>(first.style) != styleBits && !takeStyle(first)) {
                return false;
            }
            for (; next < start; ++next) {
                *out++ = ' ';
            }
            for (int column = start;
                 (column = CopyPlainCells(out, cells.data(), column, stop, styleBits)) < stop;) {
                // A cell in another style, or one SubRip cannot take as it is.
                const Memory::Cell& cell = cells[static_cast<std::size_t>(column)];
                if (!IsPlainCharacter(cell.character) ||
                    std::bit_cast<std::uint32_t>(cell.style) == styleBits || !takeStyle(cell)) {
                    return false;
                }
            }
            next = stop;
        }
        if (AllSpaces(written, cells)) {
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

const SrtCueWriter::ScreenStyle& SrtCueWriter::AddScreenStyle(std::uint32_t cellStyle) {
    const TextSpanAttributes attributes =
        std::bit_cast<cea608::CaptionMemory::CellStyle>(cellStyle).Attributes();
    return screenStyles_.emplace_back(
        ScreenStyle{cellStyle, OnlyEmphasis(attributes), EmphasisOf(attributes)});
}

std::string SrtCueWriter::PlacementTag(const ParagraphStyleAttributes& style) {
    if (!IsGridAnchor(style.GetAnchorID())) {
        Lose(freePositionDropped_, "free position dropped (written bottom centre)");
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
