#pragma once

#include "common/DiagnosticLog.h"
#include "scc/Cea608Characters.h"
#include "scc/Cea608Code.h"
#include "scc/Cea608Screen.h"

#include "zelcaptioning/Caption.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace captionformats::cea608 {

// Receives each caption as the decoder ends it, timed in frames, with the
// screen that showed it.
class DecodedCaptionSink {
public:
    virtual ~DecodedCaptionSink() = default;
    virtual void Caption(std::int64_t beginFrame, std::int64_t endFrame,
                         zelcaptioning::CaptionType type, const CaptionMemory& screen) = 0;
};

// The CEA-608 display model for data channel 1 (CC1): displayed and
// non-displayed memory, pop-on, roll-up and paint-on modes, the cursor and the
// current style. A caption begins at each display event (EOC, EDM, a roll-up
// CR, a paint-on preamble address code, a change of mode that erases the
// screen) and holds what the screen shows just before the next one; an empty
// screen makes no caption. The repeat of a control code sent twice is ignored.
// Data of channel 2, of field 2 and of text mode is skipped with a warning; a
// parity error is reported once and the byte decoded without its parity bit.
class Cea608Decoder {
public:
    Cea608Decoder(DiagnosticLog& log, DecodedCaptionSink& sink)
        : log_(log)
        , sink_(sink) {}
    Cea608Decoder(const Cea608Decoder&) = delete;
    Cea608Decoder& operator=(const Cea608Decoder&) = delete;

    // The columns an SCC word and the space after it take.
    static constexpr std::uint64_t kWordColumns = 5;

    // Byte pairs read from one line, with parity bits, first byte high, shown
    // at consecutive frames from `frame`; the first pair was read at `column`
    // of `line` and each further one kWordColumns on. Runs of basic
    // characters, the bulk of any file, and the repeats of doubled control
    // codes are handled here; all else is classified and executed by FeedCode.
    void Feed(std::span<const std::uint16_t> pairs, std::int64_t frame, std::uint64_t line,
              std::uint64_t column);

    // Ends a caption still on screen at `endFrame`.
    void Finish(std::int64_t endFrame);

private:
    enum class Mode { kPopOn, kRollUp, kPaintOn, kText };

    // Where a pair was read, made a SourceLocation only for a finding: most
    // pairs are read without one. It is passed by reference: passed by value,
    // the compiler spills its two halves and reloads them as one 16-byte
    // word on every code executed, which stalls on store forwarding.
    struct PairPlace {
        std::uint64_t line;
        std::uint64_t column;
        SourceLocation Location() const { return SourceLocation::AtLine(line, column); }
    };

    void FeedCode(std::uint8_t first, std::uint8_t second, std::int64_t frame,
                  const PairPlace& where);
    // ClassifyPair's answer for a pair without parity bits. A file uses few
    // control codes, each many times: the answers are kept by pair.
    const Code& Classified(std::uint16_t pair) {
        KnownCode& known = knownCodes_[(pair ^ pair >> 5) % knownCodes_.size()];
        if (known.pair != pair) {
            Classify(known, pair);
        }
        return known.code;
    }
    void Execute(const Code& code, std::int64_t frame, const PairPlace& where);
    void ExecuteCommand(Command command, std::int64_t frame, const PairPlace& where);
    // The small steps of executing a code, inline (defined with the decoder:
    // nothing else calls them).
    inline void PlaceCursor(const Code& code);
    inline void ApplyMidRow(const CodeStyle& style);
    // The basic characters of a pair without parity; bytes below 0x20 are none.
    void WriteCharacters(CaptionMemory& target, std::uint8_t first, std::uint8_t second,
                         const PairPlace& where);
    inline void WriteCharacter(CaptionMemory& target, char32_t character, const PairPlace& where);
    void StartRollUp(int depth, std::int64_t frame);

    void CloseCaption(std::int64_t frame);
    inline void OpenCaption(std::int64_t frame);
    inline zelcaptioning::CaptionType CurrentType() const;
    CaptionMemory& Target() { return mode_ == Mode::kPopOn ? *nonDisplayed_ : *displayed_; }
    void WarnOnce(bool& reported, const PairPlace& where, const char* message);
    // Whether pairs of characters are written: channel 1, not in text mode.
    bool WritesCharacters() const { return dataChannel_ == 1 && mode_ != Mode::kText; }

    DiagnosticLog& log_;
    DecodedCaptionSink& sink_;
    // End of caption exchanges the two memories by exchanging these.
    std::array<CaptionMemory, 2> memories_;
    CaptionMemory* displayed_ = &memories_[0];
    CaptionMemory* nonDisplayed_ = &memories_[1];
    Mode mode_ = Mode::kPopOn;
    int rollUpDepth_ = 2;
    int baseRow_ = CaptionMemory::kRows;
    int cursorRow_ = CaptionMemory::kRows;
    int cursorColumn_ = 0;
    CaptionMemory::CellStyle style_;
    int dataChannel_ = 1; // 0: field 2
    // A pair without its parity bits as one number, first byte high.
    static std::uint16_t PairBits(std::uint8_t first, std::uint8_t second) {
        return static_cast<std::uint16_t>((first & 0x7F) << 8 | (second & 0x7F));
    }
    // The last pair when it was a control code (its first byte 0x10-0x1F),
    // else kNoControl, which no control code is.
    static constexpr std::uint16_t kNoControl = 0;
    std::uint16_t lastControl_ = kNoControl;
    struct KnownCode {
        std::uint16_t pair = 0xFFFF; // none: pairs without parity bits are below 0x8000
        Code code;
    };
    std::array<KnownCode, 64> knownCodes_;
    // Fills `known` with the classification of `pair`: out of line, as it is rare.
    static void Classify(KnownCode& known, std::uint16_t pair);
    std::optional<std::pair<std::int64_t, zelcaptioning::CaptionType>> open_;
    bool reportedChannel2_ = false;
    bool reportedField2_ = false;
    bool reportedTextMode_ = false;
    bool reportedFlash_ = false;
    bool reportedOverflow_ = false;
    bool reportedParity_ = false;
};

} // namespace captionformats::cea608
