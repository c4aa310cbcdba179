#include "scc/SccScheduler.h"

#include "scc/Cea608Layout.h"
#include "scc/SccTimecode.h"

#include <algorithm>

namespace captionformats::scc {

using namespace zelcaptioning;
using cea608::Doubled;
using cea608::Unit;

namespace {

const Unit kResumeCaptionLoading = Doubled(0x14, 0x20);
const Unit kEraseNonDisplayed = Doubled(0x14, 0x2E);
const Unit kEndOfCaption = Doubled(0x14, 0x2F);
const Unit kEraseDisplayed = Doubled(0x14, 0x2C);
const Unit kCarriageReturn = Doubled(0x14, 0x2D);
const Unit kResumeDirectCaptioning = Doubled(0x14, 0x29);

bool IsRollUpType(CaptionType type) {
    return type == kCaptionType_RollUp2 || type == kCaptionType_RollUp3 ||
           type == kCaptionType_RollUp4;
}

} // namespace

void SccScheduler::NoteDelay(std::int64_t wanted, std::int64_t actual, const char* what) {
    if (actual > wanted) {
        losses_.Note(std::string(what) + " sent late (up to " + std::to_string(actual - wanted) +
                         " frames here): the channel is busy",
                     index_, begin_);
    }
}

std::int64_t SccScheduler::PutFixed(std::int64_t frame, const Unit& unit) {
    const std::int64_t actual = timeline_.EarliestFreeRun(std::max(frame, freeFrom_), unit.size());
    timeline_.Put(actual, unit);
    return actual;
}

std::int64_t SccScheduler::PutForward(std::int64_t from, const std::vector<Unit>& units) {
    std::int64_t frame = from;
    for (const Unit& unit : units) {
        frame = timeline_.EarliestFreeRun(frame, unit.size());
        timeline_.Put(frame, unit);
        frame += static_cast<std::int64_t>(unit.size());
    }
    return frame;
}

bool SccScheduler::PutBackward(std::int64_t endExclusive, std::int64_t notBefore,
                               const std::vector<Unit>& units) {
    std::vector<std::int64_t> starts(units.size());
    std::int64_t cursor = endExclusive;
    for (std::size_t i = units.size(); i-- > 0;) {
        const auto start = timeline_.LatestFreeRun(cursor, notBefore, units[i].size());
        if (!start) {
            return false;
        }
        starts[i] = *start;
        cursor = *start;
    }
    for (std::size_t i = 0; i < units.size(); ++i) {
        timeline_.Put(starts[i], units[i]);
    }
    return true;
}

void SccScheduler::Add(const Caption& caption, std::size_t index, const Caption* next) {
    index_ = index;
    begin_ = caption.GetBeginTime();
    const std::int64_t begin = FrameAtTime(caption.GetBeginTime());
    std::int64_t end = FrameAtTime(caption.GetEndTime());
    if (TimeOfFrame(begin) != caption.GetBeginTime() || TimeOfFrame(end) != caption.GetEndTime()) {
        losses_.Note("times rounded down to frames", index, begin_);
    }
    if (end <= begin) {
        losses_.Note("captions shorter than a frame lengthened to one", index, begin_);
        end = begin + 1;
    }
    const CaptionType type = caption.GetCaptionType();
    std::vector<cea608::PlacedLine> lines = cea608::LayOutLines(caption, losses_, index);
    if (IsRollUpType(type)) {
        KeepNewRollUpLine(lines);
    } else {
        rollUpScreen_.clear();
    }
    if (type == kCaptionType_PaintOn && lines.size() > 1) {
        losses_.Note("paint-on captions of several lines read back as one caption per line", index,
                     begin_);
    }
    std::vector<Unit> body;
    for (const cea608::PlacedLine& line : lines) {
        for (Unit& unit :
             cea608::Cea608RowEncoder(losses_, index, begin_).Encode(*line.paragraph, line.place)) {
            body.push_back(std::move(unit));
        }
    }
    if (IsRollUpType(type)) {
        AddRollUp(body, begin, type - kCaptionType_RollUp2 + 2);
    } else if (type == kCaptionType_PaintOn) {
        AddPaintOn(body, begin);
    } else {
        if (type != kCaptionType_PopOn) {
            losses_.Note("captions of other types written as pop-on", index, begin_);
        }
        AddPopOn(body, begin);
    }
    AddEnd(caption, end, next);
}

void SccScheduler::KeepNewRollUpLine(std::vector<cea608::PlacedLine>& lines) {
    std::vector<std::u16string> texts;
    for (const cea608::PlacedLine& line : lines) {
        const zelcore::UTF16String text = line.paragraph->GetText();
        texts.emplace_back(text.begin(), text.end());
    }
    if (!texts.empty()) {
        const std::size_t above = texts.size() - 1;
        const bool onScreen = rollUpScreen_.size() >= above &&
                              std::equal(texts.begin(), texts.end() - 1,
                                         rollUpScreen_.end() - static_cast<std::ptrdiff_t>(above));
        if (!onScreen) {
            losses_.Note("roll-up lines above the new one that were not on screen dropped", index_,
                         begin_);
        }
        lines.erase(lines.begin(), lines.end() - 1);
    }
    rollUpScreen_ = std::move(texts);
}

void SccScheduler::AddPopOn(const std::vector<Unit>& body, std::int64_t begin) {
    std::vector<Unit> load{kResumeCaptionLoading, kEraseNonDisplayed};
    load.insert(load.end(), body.begin(), body.end());
    std::int64_t eoc = timeline_.EarliestFreeRun(std::max(begin, freeFrom_), kEndOfCaption.size());
    if (!PutBackward(eoc, freeFrom_, load)) {
        const std::int64_t loaded = PutForward(freeFrom_, load);
        eoc = timeline_.EarliestFreeRun(std::max(eoc, loaded), kEndOfCaption.size());
        NoteDelay(begin, eoc, "pop-on captions that cannot be loaded before their begin are");
    } else {
        NoteDelay(begin, eoc, "captions are");
    }
    timeline_.Put(eoc, kEndOfCaption);
    freeFrom_ = eoc + static_cast<std::int64_t>(kEndOfCaption.size());
    mode_ = Mode::kPopOn;
}

void SccScheduler::AddRollUp(const std::vector<Unit>& body, std::int64_t begin, int depth) {
    freeFrom_ = std::max(freeFrom_, displayFreeFrom_);
    if (mode_ != Mode::kRollUp || rollUpDepth_ != depth) {
        const Unit rollUp = Doubled(0x14, static_cast<std::uint8_t>(0x25 + depth - 2));
        const auto before = timeline_.LatestFreeRun(begin, freeFrom_, rollUp.size());
        freeFrom_ =
            PutFixed(before.value_or(begin), rollUp) + static_cast<std::int64_t>(rollUp.size());
    }
    const std::int64_t carriageReturn = PutFixed(begin, kCarriageReturn);
    NoteDelay(begin, carriageReturn, "captions are");
    freeFrom_ = PutForward(carriageReturn + 2, body);
    mode_ = Mode::kRollUp;
    rollUpDepth_ = depth;
}

void SccScheduler::AddPaintOn(const std::vector<Unit>& body, std::int64_t begin) {
    freeFrom_ = std::max(freeFrom_, displayFreeFrom_);
    if (mode_ != Mode::kPaintOn) {
        const auto before =
            timeline_.LatestFreeRun(begin, freeFrom_, kResumeDirectCaptioning.size());
        freeFrom_ = PutFixed(before.value_or(begin), kResumeDirectCaptioning) + 2;
    }
    if (body.empty()) {
        return;
    }
    const std::int64_t preamble = PutFixed(begin, body.front());
    NoteDelay(begin, preamble, "captions are");
    freeFrom_ = PutForward(preamble + static_cast<std::int64_t>(body.front().size()),
                           std::vector<Unit>(body.begin() + 1, body.end()));
    mode_ = Mode::kPaintOn;
}

void SccScheduler::AddEnd(const Caption& caption, std::int64_t end, const Caption* next) {
    if (next != nullptr && FrameAtTime(next->GetBeginTime()) == end) {
        const CaptionType nextType = next->GetCaptionType();
        const bool replaced = mode_ == Mode::kPopOn
                                  ? !IsRollUpType(nextType) && nextType != kCaptionType_PaintOn
                                  : mode_ == Mode::kRollUp && nextType == caption.GetCaptionType();
        if (replaced) {
            return; // the next caption's EOC or CR takes this one off the screen
        }
    }
    rollUpScreen_.clear();
    const std::int64_t erase = PutFixed(end, kEraseDisplayed);
    NoteDelay(end, erase, "caption ends are");
    displayFreeFrom_ = erase + static_cast<std::int64_t>(kEraseDisplayed.size());
}

} // namespace captionformats::scc
