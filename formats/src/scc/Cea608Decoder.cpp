#include "scc/Cea608Decoder.h"

#include "scc/Cea608Characters.h"

#include <algorithm>

namespace captionformats::cea608 {

using namespace zelcaptioning;

void Cea608Decoder::WarnOnce(bool& reported, const PairPlace& where, const char* message) {
    if (!reported) {
        log_.Warn(where.Location(), message);
        reported = true;
    }
}

void Cea608Decoder::Feed(std::span<const std::uint16_t> pairs, std::int64_t frame,
                         std::uint64_t line, std::uint64_t column) {
    const std::size_t count = pairs.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint16_t pair = pairs[i];
        const auto first = static_cast<std::uint8_t>(pair >> 8);
        const auto second = static_cast<std::uint8_t>(pair);
        if (BasicCharacterWithParity(first) != 0 && WritesCharacters()) {
            const std::size_t written =
                Target().WriteBasic(cursorRow_, cursorColumn_, pairs.subspan(i), style_);
            if (written > 0) {
                lastControl_ = kNoControl; // a repeat must follow in the very next pair
                i += written - 1;
                continue;
            }
        }
        const PairPlace where{line, column + kWordColumns * i};
        const std::int64_t at = frame + static_cast<std::int64_t>(i);
        if (HasOddParity(first) && HasOddParity(second)) {
            const auto bits = static_cast<std::uint16_t>(pair & 0x7F7F);
            if (lastControl_ == bits) {
                lastControl_ = kNoControl; // the repeat of a doubled code
                continue;
            }
            if (bits >= 0x2000 && WritesCharacters()) {
                // Characters at the row's end or past it.
                lastControl_ = kNoControl;
                WriteCharacters(Target(), first & 0x7F, second & 0x7F, where);
                continue;
            }
            if (bits >= 0x1000 && bits < 0x2000) {
                lastControl_ = bits;
                Execute(Classified(bits), at, where);
                // Control codes come twice: the repeat is taken here, as the
                // next turn of the loop would take it.
                if (i + 1 < count && pairs[i + 1] == pair) {
                    lastControl_ = kNoControl;
                    ++i;
                }
                continue;
            }
        }
        FeedCode(first, second, at, where);
    }
}

void Cea608Decoder::FeedCode(std::uint8_t first, std::uint8_t second, std::int64_t frame,
                             const PairPlace& where) {
    if (!HasOddParity(first) || !HasOddParity(second)) {
        WarnOnce(reportedParity_, where,
                 "parity errors: the bytes are decoded without their parity bit");
    }
    // The repeat of a control code is known before classifying it.
    const std::uint16_t pair = PairBits(first, second);
    if (pair >= 0x1000 && pair < 0x2000) {
        if (lastControl_ == pair) {
            lastControl_ = kNoControl; // the repeat of a doubled code
            return;
        }
        lastControl_ = pair;
    } else {
        lastControl_ = kNoControl; // a repeat must follow in the very next pair
    }
    Execute(Classified(pair), frame, where);
}

void Cea608Decoder::Classify(KnownCode& known, std::uint16_t pair) {
    known.pair = pair;
    known.code =
        ClassifyPair(static_cast<std::uint8_t>(pair >> 8), static_cast<std::uint8_t>(pair & 0xFF));
}

void Cea608Decoder::Execute(const Code& code, std::int64_t frame, const PairPlace& where) {
    if (code.IsControl()) {
        const bool fieldTwo = code.kind == Code::Kind::kOtherChannelControl && code.channel == 1;
        dataChannel_ = fieldTwo ? 0 : code.channel;
    }
    if (code.kind == Code::Kind::kOtherChannelControl || dataChannel_ != 1) {
        if (dataChannel_ == 2) {
            WarnOnce(reportedChannel2_, where, "data channel 2 (CC2) skipped");
        } else if (code.kind != Code::Kind::kPadding) {
            WarnOnce(reportedField2_, where, "field 2 codes (CC3, CC4) skipped");
        }
        return;
    }
    if (mode_ == Mode::kText && code.kind != Code::Kind::kCommand &&
        code.kind != Code::Kind::kPadding) {
        return; // text mode data is not captions
    }
    switch (code.kind) {
    case Code::Kind::kPadding:
        break;
    case Code::Kind::kCharacters:
        WriteCharacters(Target(), code.first, code.second, where);
        break;
    case Code::Kind::kCommand:
        ExecuteCommand(code.command, frame, where);
        break;
    case Code::Kind::kTabOffset:
        cursorColumn_ += code.tabColumns;
        break;
    case Code::Kind::kPreambleAddress:
        if (mode_ == Mode::kPaintOn) {
            CloseCaption(frame);
            OpenCaption(frame);
        }
        PlaceCursor(code);
        break;
    case Code::Kind::kMidRow:
        ApplyMidRow(code.style);
        WriteCharacter(Target(), U' ', where);
        break;
    case Code::Kind::kBackground:
        style_.background = code.background;
        break;
    case Code::Kind::kSpecialCharacter:
        WriteCharacter(Target(), code.character, where);
        break;
    case Code::Kind::kExtendedCharacter:
        cursorColumn_ = std::max(0, cursorColumn_ - 1);
        WriteCharacter(Target(), code.character, where);
        break;
    case Code::Kind::kOtherChannelControl:
        break;
    case Code::Kind::kUnknown:
        log_.Warn(where.Location(), "unknown code pair skipped");
        break;
    }
}

void Cea608Decoder::ExecuteCommand(Command command, std::int64_t frame, const PairPlace& where) {
    switch (command) {
    case Command::kResumeCaptionLoading:
        mode_ = Mode::kPopOn;
        break;
    case Command::kRollUp2:
    case Command::kRollUp3:
    case Command::kRollUp4:
        StartRollUp(static_cast<int>(command) - static_cast<int>(Command::kRollUp2) + 2, frame);
        break;
    case Command::kResumeDirectCaptioning:
        mode_ = Mode::kPaintOn;
        break;
    case Command::kTextRestart:
    case Command::kResumeTextDisplay:
        mode_ = Mode::kText;
        WarnOnce(reportedTextMode_, where, "text mode data skipped");
        break;
    case Command::kBackspace:
        if (cursorColumn_ > 0) {
            --cursorColumn_;
            Target().Erase(cursorRow_, cursorColumn_);
        }
        break;
    case Command::kDeleteToEndOfRow:
        Target().EraseFrom(cursorRow_, cursorColumn_);
        break;
    case Command::kFlashOn:
        WarnOnce(reportedFlash_, where, "flashing text shown steady");
        break;
    case Command::kAlarmOff:
    case Command::kAlarmOn:
        break;
    case Command::kEraseDisplayedMemory:
        CloseCaption(frame);
        displayed_->Clear();
        OpenCaption(frame);
        break;
    case Command::kEraseNonDisplayedMemory:
        nonDisplayed_->Clear();
        break;
    case Command::kCarriageReturn:
        if (mode_ == Mode::kRollUp) {
            CloseCaption(frame);
            displayed_->RollUp(baseRow_ - rollUpDepth_ + 1, baseRow_);
            OpenCaption(frame);
            cursorRow_ = baseRow_;
            cursorColumn_ = 0;
        }
        break;
    case Command::kEndOfCaption:
        CloseCaption(frame);
        mode_ = Mode::kPopOn;
        std::swap(displayed_, nonDisplayed_);
        OpenCaption(frame);
        break;
    }
}

void Cea608Decoder::StartRollUp(int depth, std::int64_t frame) {
    if (mode_ != Mode::kRollUp) {
        CloseCaption(frame);
        displayed_->Clear();
        nonDisplayed_->Clear();
        OpenCaption(frame);
        baseRow_ = CaptionMemory::kRows;
        cursorRow_ = baseRow_;
        cursorColumn_ = 0;
    }
    mode_ = Mode::kRollUp;
    rollUpDepth_ = depth;
}

void Cea608Decoder::PlaceCursor(const Code& code) {
    int row = code.row;
    if (mode_ == Mode::kRollUp) {
        row = std::max(row, rollUpDepth_);
        if (row != baseRow_) {
            displayed_->MoveWindow(baseRow_, row, rollUpDepth_);
            baseRow_ = row;
        }
    }
    cursorRow_ = row;
    cursorColumn_ = code.column;
    style_ = CaptionMemory::CellStyle{.textColor = code.style.color.value_or(0),
                                      .italic = code.style.italic,
                                      .underline = code.style.underline};
}

void Cea608Decoder::ApplyMidRow(const CodeStyle& style) {
    if (style.color) {
        style_.textColor = *style.color;
        style_.italic = false;
    } else {
        style_.italic = style.italic;
    }
    style_.underline = style.underline;
}

void Cea608Decoder::WriteCharacters(CaptionMemory& target, std::uint8_t first, std::uint8_t second,
                                    const PairPlace& where) {
    for (const std::uint8_t byte : {first, second}) {
        if (byte >= 0x20) {
            WriteCharacter(target, BasicCharacter(byte), where);
        }
    }
}

void Cea608Decoder::WriteCharacter(CaptionMemory& target, char32_t character,
                                   const PairPlace& where) {
    if (cursorColumn_ >= CaptionMemory::kColumns) {
        WarnOnce(reportedOverflow_, where, "a row runs past column 32; its text is kept whole");
    }
    target.Write(cursorRow_, cursorColumn_, character, style_);
    ++cursorColumn_;
}

CaptionType Cea608Decoder::CurrentType() const {
    switch (mode_) {
    case Mode::kRollUp:
        return static_cast<CaptionType>(kCaptionType_RollUp2 + rollUpDepth_ - 2);
    case Mode::kPaintOn:
        return kCaptionType_PaintOn;
    case Mode::kPopOn:
    case Mode::kText:
        break;
    }
    return kCaptionType_PopOn;
}

void Cea608Decoder::CloseCaption(std::int64_t frame) {
    if (open_ && !displayed_->IsEmpty() && frame > open_->first) {
        sink_.Caption(open_->first, frame, open_->second, *displayed_);
    }
    open_.reset();
}

void Cea608Decoder::OpenCaption(std::int64_t frame) {
    open_ = {frame, CurrentType()};
}

void Cea608Decoder::Finish(std::int64_t endFrame) {
    CloseCaption(endFrame);
}

} // namespace captionformats::cea608
