#include "CaptionChecks.h"

#include "captionformats/SccWriter.h"

#include <algorithm>
#include <cstdio>

namespace captioncli {

using namespace zelcaptioning;

namespace {

double Seconds(zelmediatypes::TickTime time) {
    return static_cast<double>(time.GetTicks()) /
           static_cast<double>(zelmediatypes::kTicksPerSecond);
}

std::string Fixed(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::size_t VisibleCharacters(const Caption& caption) {
    const zelcore::UTF16String text = caption.GetPlainText();
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char16_t c) {
        return c != u' ' && c != u'\n' && (c < 0xDC00 || c > 0xDFFF);
    }));
}

int RollUpDepth(CaptionType type) {
    return IsRollUp(type) ? type - kCaptionType_RollUp2 + 2 : 0;
}

void CheckCea608(const Caption& caption, std::size_t index, std::vector<Finding>& findings) {
    auto add = [&](const char* kind, const std::string& message) {
        findings.push_back({index, caption.GetBeginTime(), kind, message});
    };
    std::uint64_t lines = 0;
    for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
        const CaptionTextParagraph& line = *caption.GetCaptionTextParagraph(p);
        if (line.GetParagraphTextLength() == 0) {
            continue;
        }
        ++lines;
        const Position position = line.GetCaptionPosition();
        const std::int64_t column = IsPlaced(caption.GetCaptionTextParagraph(p))
                                        ? ValueWithScale(position.GetX(), 32, true)
                                        : 0;
        if (column + static_cast<std::int64_t>(line.GetParagraphTextLength()) > 32) {
            add("608-columns", "line " + std::to_string(p + 1) + " runs past column 32");
        }
        if (IsPlaced(caption.GetCaptionTextParagraph(p))) {
            const std::int64_t row = ValueWithScale(position.GetY(), 15, true) + 1;
            if (row < 1 || row > 15) {
                add("608-rows", "line " + std::to_string(p + 1) + " is off rows 1 to 15");
            }
        }
    }
    if (lines > 15) {
        add("608-rows", std::to_string(lines) + " lines: CEA-608 shows 15 rows");
    }
    const int depth = RollUpDepth(caption.GetCaptionType());
    if (depth > 0 && lines > static_cast<std::uint64_t>(depth)) {
        add("608-roll-up-depth",
            std::to_string(lines) + " lines in a roll-up of " + std::to_string(depth));
    }
}

} // namespace

std::vector<Finding> CheckCaptions(const std::vector<CaptionPtr>& unsorted,
                                   const CheckLimits& limits) {
    std::vector<CaptionPtr> captions = unsorted;
    std::stable_sort(captions.begin(), captions.end(),
                     [](const CaptionPtr& a, const CaptionPtr& b) {
                         return a->GetBeginTime() < b->GetBeginTime();
                     });
    std::vector<Finding> findings;
    for (std::size_t index = 0; index < captions.size(); ++index) {
        const Caption& caption = *captions[index];
        const double duration = Seconds(caption.GetEndTime() - caption.GetBeginTime());
        if (duration < limits.minDurationSeconds) {
            findings.push_back({index, caption.GetBeginTime(), "short",
                                "shown " + Fixed(duration) + " s, less than " +
                                    Fixed(limits.minDurationSeconds) + " s"});
        }
        const double rate =
            duration > 0.0 ? static_cast<double>(VisibleCharacters(caption)) / duration : 0.0;
        if (rate > limits.maxCharactersPerSecond) {
            findings.push_back({index, caption.GetBeginTime(), "reading-rate",
                                Fixed(rate) + " characters per second, more than " +
                                    Fixed(limits.maxCharactersPerSecond)});
        }
        if (index > 0 && caption.GetBeginTime() < captions[index - 1]->GetEndTime()) {
            findings.push_back({index, caption.GetBeginTime(), "overlap",
                                "begins before caption " + std::to_string(index) + " ends"});
        }
        if (limits.cea608) {
            CheckCea608(caption, index, findings);
        }
    }
    if (limits.cea608) {
        for (const captionformats::Diagnostic& warning :
             captionformats::SccWriter().Write(captions, {}).warnings) {
            if (warning.message.find("sent late") != std::string::npos) {
                findings.push_back(
                    {std::nullopt, std::nullopt, "608-transmission", warning.message});
            }
        }
    }
    return findings;
}

} // namespace captioncli
