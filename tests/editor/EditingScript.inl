// Definitions of EditingScript, kept apart so the header reads as an interface.
#include <algorithm>
#include <optional>

namespace test {

inline zelcore::UTF16String EditingScript::RandomText(std::uint64_t maxLength, bool lineFeeds) {
    static constexpr char16_t kAlphabet[] = u"abcXYZ \u266A\u00e9";
    zelcore::UTF16String text;
    const std::uint64_t length = choose_(0, maxLength);
    for (std::uint64_t i = 0; i < length; ++i) {
        text += (lineFeeds && Chance(5)) ? u'\n' : kAlphabet[choose_(0, 8)];
    }
    return text;
}

inline zelcaptioning::TextSpanAttributes EditingScript::RandomStyle() {
    zelcaptioning::TextSpanAttributes a;
    a.SetBolded(Chance(2));
    a.SetItalicized(Chance(3));
    if (Chance(4)) {
        a.textColor = zelcaptioning::CaptioningColor(1, 1, 0, 1);
    }
    return a;
}

inline zelcaptioning::CaptionPtr EditingScript::RandomCaption() {
    using namespace zelcaptioning;
    CaptionPtr caption(new Caption);
    caption->SetCaptionType(pixel_ ? kCaptionType_Open : static_cast<CaptionType>(choose_(1, 5)));
    for (std::uint64_t p = choose_(0, 3); p > 0; --p) {
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        // As a host stores them: spans hold text, unless a span is a line's only one.
        const std::uint64_t spans = choose_(0, 3);
        for (std::uint64_t s = 0; s < spans; ++s) {
            zelcore::UTF16String text = RandomText(4, false);
            if (text.empty() && spans > 1) {
                text = u"e";
            }
            paragraph->AppendCaptionTextSpan(new CaptionTextSpan(text, RandomStyle()));
        }
        if (!Chance(5)) {
            paragraph->SetCaptionPosition(
                Position(Rational(static_cast<std::int64_t>(choose_(0, 20)), 32),
                         Rational(static_cast<std::int64_t>(choose_(0, kRows - 1)), kRows)));
        }
        ParagraphStyleAttributes style;
        style.SetAnchorID(static_cast<AnchorID>(choose_(0, 9)));
        style.SetTextAlignment(static_cast<TextAlignmentType>(choose_(0, 2)));
        paragraph->SetParagraphStyleAttributes(style);
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

inline std::string EditingScript::Step() {
    using namespace zelcaptioning;
    const std::uint64_t size = reference_.size();
    const std::uint64_t at = choose_(0, size + 1);
    const std::uint64_t start = choose_(0, size + 1);
    const std::uint64_t end = choose_(start, size + 2);
    const std::uint64_t room = size - std::min(at, size);
    lastWasStyle_ = false;
    blockMoveProblem_.clear();
    switch (choose_(0, 12)) {
    case 0:
    case 1: {
        const zelcore::UTF16String text = RandomText(5, true);
        if (at <= size) {
            reference_.insert(at, text);
            editor_.InsertText(text, at);
        }
        return "insert";
    }
    case 2:
    case 3: {
        const std::uint64_t length = choose_(0, std::min<std::uint64_t>(room, 6));
        if (at + length <= size) {
            const zelcore::UTF16String removed = reference_.substr(at, length);
            reference_.erase(at, length);
            editor_.DeleteText(removed, at);
        }
        return "delete";
    }
    case 4: {
        const std::uint64_t length = choose_(0, std::min<std::uint64_t>(room, 4));
        const zelcore::UTF16String added = RandomText(4, true);
        if (at + length <= size) {
            const zelcore::UTF16String removed = reference_.substr(at, length);
            reference_.replace(at, length, added);
            editor_.ReplaceText(removed, added, at);
        }
        return "replace";
    }
    case 5:
        if (at <= size) {
            // A caption without lines gains its first line, not a break.
            if (editor_.GetCaption()->GetNumParagraphs() > 0) {
                reference_.insert(at, u"\n");
            }
            editor_.BreakParagraph(at);
        }
        return "break";
    case 6:
        // Joining from anywhere in a line removes the break that ends it.
        if (const std::size_t feed = reference_.find(u'\n', at);
            at <= size && feed != zelcore::UTF16String::npos) {
            reference_.erase(feed, 1);
            editor_.JoinParagraphs(at);
        }
        return "join";
    case 7:
    case 8:
        lastWasStyle_ = true;
        return StyleStep(start, end);
    case 9:
        editor_.SetAlignment(static_cast<TextAlignmentType>(choose_(0, 2)), start, end);
        (void)editor_.GetStyleSummary(start, end);
        return "alignment";
    case 10:
        editor_.SetCaptionType(static_cast<CaptionType>(choose_(1, 5)));
        return "caption type";
    case 11:
        if (Chance(2)) {
            const std::vector<Position> before = Positions();
            editor_.MoveBlock(static_cast<std::int32_t>(choose_(0, 40)) - 20,
                              static_cast<std::int32_t>(choose_(0, 20)) - 10, start, end);
            blockMoveProblem_ = BlockMoveProblem(before);
            return "move block";
        }
        // Fractions a little outside 0 to 1 exercise the clamping.
        editor_.PlaceParagraphs(static_cast<double>(choose_(0, 1200)) / 1000 - 0.1,
                                static_cast<double>(choose_(0, 1200)) / 1000 - 0.1, start, end);
        return "place";
    default:
        if (Chance(2)) {
            editor_.SetBlockAnchor(static_cast<std::int32_t>(choose_(0, 3)),
                                   static_cast<std::int32_t>(choose_(0, 3)), start, end);
            return "anchor";
        }
        editor_.MoveRows(static_cast<std::int32_t>(choose_(0, kRows - 1)),
                         static_cast<std::int32_t>(choose_(1, 3)),
                         static_cast<std::int32_t>(choose_(0, 6)) - 3);
        return "move rows";
    }
}

inline std::string EditingScript::StyleStep(std::uint64_t start, std::uint64_t end) {
    switch (choose_(0, 6)) {
    case 0:
        editor_.SetBold(Chance(2), start, end);
        return "bold";
    case 1:
        editor_.SetItalic(Chance(2), start, end);
        return "italic";
    case 2:
        editor_.SetUnderline(Chance(2), start, end);
        return "underline";
    case 3:
        editor_.SetFontName(Chance(2) ? u"Serif" : u"", start, end);
        return "font";
    case 4:
        editor_.SetFontSize(Chance(2) ? 0.0f : 30.0f, start, end);
        return "size";
    case 5:
        editor_.SetEdgeWidth(Chance(2) ? 0.0f : 2.0f, start, end);
        return "edge width";
    default:
        editor_.SetColor(Chance(2) ? zelcaptioning::CaptioningColor(1, 0, 0, 1)
                                   : zelcaptioning::kCaptioningColor_Transparent,
                         static_cast<std::int32_t>(choose_(0, 3)), start, end);
        return "colour";
    }
}

inline std::vector<zelcaptioning::Position> EditingScript::Positions() const {
    std::vector<zelcaptioning::Position> positions;
    const zelcaptioning::Caption& working = *editor_.GetCaption();
    for (std::uint64_t i = 0; i < working.GetNumParagraphs(); ++i) {
        positions.push_back(working.GetCaptionTextParagraph(i)->GetCaptionPosition());
    }
    return positions;
}

inline std::string
EditingScript::BlockMoveProblem(const std::vector<zelcaptioning::Position>& before) const {
    const std::vector<zelcaptioning::Position> after = Positions();
    std::ostringstream problem;
    std::optional<zelcaptioning::Position> shift;
    for (std::size_t i = 0; i < after.size() && problem.str().empty(); ++i) {
        if (after[i] == before[i]) {
            continue;
        }
        const zelcaptioning::Position moved(after[i].GetX() - before[i].GetX(),
                                            after[i].GetY() - before[i].GetY());
        if (pixel_ || before[i] == zelcaptioning::kPosition_Uninitialized) {
            problem << "block move changed paragraph " << i;
        } else if (shift && *shift != moved) {
            problem << "block move shifted paragraph " << i << " by " << moved << ", not "
                    << *shift;
        }
        shift = moved;
    }
    return problem.str();
}

inline std::string EditingScript::Check() const {
    const zelcaptioning::Caption& working = *editor_.GetCaption();
    std::ostringstream problem;
    problem << blockMoveProblem_;
    if (working.GetPlainText() != reference_) {
        problem << "text " << working.GetPlainText() << " should be " << reference_;
    }
    for (std::uint64_t i = 0; i < working.GetNumParagraphs() && problem.str().empty(); ++i) {
        const auto paragraph = working.GetCaptionTextParagraph(i);
        if (!paragraph || paragraph->GetNumSpans() == 0) {
            problem << "paragraph " << i << " has no span";
            break;
        }
        const auto position = paragraph->GetCaptionPosition();
        const auto row = zelcaptioning::ValueWithScale(position.GetY(), kRows, true);
        if (!pixel_ && position != zelcaptioning::kPosition_Uninitialized &&
            (row < 0 || row >= kRows)) {
            problem << "paragraph " << i << " stands on row " << row;
        }
        for (std::uint64_t s = 1; lastWasStyle_ && s < paragraph->GetNumSpans(); ++s) {
            if (paragraph->GetCaptionTextSpan(s - 1)->StyleAttributes() ==
                paragraph->GetCaptionTextSpan(s)->StyleAttributes()) {
                problem << "spans " << s - 1 << " and " << s << " of paragraph " << i
                        << " share a style";
            }
        }
    }
    if (Describe(*host_) != hostBefore_) {
        problem << "the host caption changed";
    }
    if (Describe(*editor_.GetSavedCaption()) != saved_) {
        problem << "the saved copy changed";
    }
    if (!problem.str().empty()) {
        problem << " in " << working;
    }
    return problem.str();
}

} // namespace test
