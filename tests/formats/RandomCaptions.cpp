#include "RandomCaptions.h"

#include <sstream>

namespace test {

using namespace zelcaptioning;

namespace {

int Draw(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

zelcore::UTF16String RandomText(std::mt19937& random, const CaptionCapabilities& capabilities,
                                int length) {
    zelcore::UTF16String text;
    const auto& alphabet = capabilities.alphabet;
    for (int i = 0; i < length; ++i) {
        char32_t c = alphabet[static_cast<std::size_t>(
            Draw(random, 0, static_cast<int>(alphabet.size()) - 1))];
        if (c == U' ' && (i == 0 || i + 1 == length || text.back() == u' ')) {
            c = U'x'; // lines neither start nor end with spaces, nor hold runs of them
        }
        if (c >= 0x10000) {
            text += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            text += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            text += static_cast<char16_t>(c);
        }
    }
    return text;
}

TextSpanAttributes RandomAttributes(std::mt19937& random, const CaptionCapabilities& capabilities) {
    TextSpanAttributes attributes;
    attributes.SetBolded(capabilities.bold && Draw(random, 0, 3) == 0);
    attributes.SetItalicized(capabilities.italic && Draw(random, 0, 3) == 0);
    attributes.SetUnderlined(capabilities.underline && Draw(random, 0, 3) == 0);
    if (!capabilities.textColors.empty() && Draw(random, 0, 2) == 0) {
        attributes.textColor = capabilities.textColors[static_cast<std::size_t>(
            Draw(random, 0, static_cast<int>(capabilities.textColors.size()) - 1))];
    }
    return attributes;
}

CaptionTextParagraphPtr RandomParagraph(std::mt19937& random,
                                        const CaptionCapabilities& capabilities) {
    CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
    int remaining = Draw(random, 1, capabilities.maxLineLength);
    while (remaining > 0) {
        const int length = Draw(random, 1, remaining);
        remaining -= length;
        TextSpanAttributes attributes = RandomAttributes(random, capabilities);
        const auto count = paragraph->GetNumSpans();
        if (count != 0 &&
            paragraph->GetCaptionTextSpan(count - 1)->StyleAttributes() == attributes) {
            continue; // equal neighbours would be one span once read back
        }
        zelcore::UTF16String text = RandomText(random, capabilities, length);
        if (count != 0 && text.front() == u' ') {
            text.front() = u'y';
        }
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(text, attributes));
    }
    if (paragraph->GetNumSpans() == 0) {
        paragraph->AppendCaptionTextSpan(
            new CaptionTextSpan(RandomText(random, capabilities, 1), TextSpanAttributes()));
    }
    return paragraph;
}

ParagraphStyleAttributes RandomStyle(std::mt19937& random, const CaptionCapabilities& capabilities,
                                     bool& free) {
    ParagraphStyleAttributes style;
    free = capabilities.freePositions && (!capabilities.gridAnchors || Draw(random, 0, 1) == 0);
    if (free) {
        style.SetAnchorID(kAnchorID_Free);
    } else if (capabilities.gridAnchors) {
        style.SetAnchorID(Draw(random, 0, 8));
    }
    if (capabilities.alignmentFollowsColumn && !free) {
        style.SetTextAlignment(static_cast<TextAlignmentType>(style.GetAnchorID() % 3));
    } else if (capabilities.gridAnchors || capabilities.freePositions) {
        style.SetTextAlignment(static_cast<TextAlignmentType>(Draw(random, 0, 2)));
    }
    return style;
}

} // namespace

std::vector<CaptionPtr> RandomCaptions(std::mt19937& random, int count,
                                       const CaptionCapabilities& capabilities) {
    std::vector<CaptionPtr> captions;
    const std::int64_t step = capabilities.timeStepTicks > 0
                                  ? capabilities.timeStepTicks
                                  : zelmediatypes::kTicksPerSecond / 1000;
    std::int64_t steps = Draw(random, 0, 50);
    for (int i = 0; i < count; ++i) {
        CaptionPtr caption(new Caption);
        caption->SetCaptionType(capabilities.type);
        steps += Draw(random, 1, 3000);
        caption->SetBeginTime(zelmediatypes::TickTime(steps * step));
        steps += Draw(random, 1, 3000);
        caption->SetEndTime(zelmediatypes::TickTime(steps * step));
        bool free = false;
        const ParagraphStyleAttributes style = RandomStyle(random, capabilities, free);
        const int lines = Draw(random, 1, capabilities.maxLines);
        for (int line = 0; line < lines; ++line) {
            CaptionTextParagraphPtr paragraph = RandomParagraph(random, capabilities);
            paragraph->SetParagraphStyleAttributes(style);
            if (free && line == 0) {
                const std::int64_t precision = capabilities.freePositionPrecision;
                paragraph->SetCaptionPosition(
                    Position(Rational(Draw(random, 0, static_cast<int>(precision)), precision),
                             Rational(Draw(random, 0, static_cast<int>(precision)), precision)));
            }
            caption->AppendCaptionTextParagraph(paragraph);
        }
        captions.push_back(caption);
    }
    return captions;
}

::testing::AssertionResult SameCaptions(const std::vector<CaptionPtr>& expected,
                                        const std::vector<CaptionPtr>& actual) {
    if (expected.size() != actual.size()) {
        return ::testing::AssertionFailure()
               << expected.size() << " captions expected, " << actual.size() << " read";
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const Caption& a = *expected[i];
        const Caption& b = *actual[i];
        bool same = a.GetBeginTime() == b.GetBeginTime() && a.GetEndTime() == b.GetEndTime() &&
                    a.GetCaptionType() == b.GetCaptionType() &&
                    a.GetNumParagraphs() == b.GetNumParagraphs();
        for (std::uint64_t p = 0; same && p < a.GetNumParagraphs(); ++p) {
            const CaptionTextParagraph& pa = *a.GetCaptionTextParagraph(p);
            const CaptionTextParagraph& pb = *b.GetCaptionTextParagraph(p);
            same = pa.GetParagraphStyleAttributes() == pb.GetParagraphStyleAttributes() &&
                   pa.GetCaptionPosition() == pb.GetCaptionPosition() &&
                   pa.GetNumSpans() == pb.GetNumSpans();
            for (std::uint64_t s = 0; same && s < pa.GetNumSpans(); ++s) {
                same = pa.GetCaptionTextSpan(s)->GetCaptionText() ==
                           pb.GetCaptionTextSpan(s)->GetCaptionText() &&
                       pa.GetCaptionTextSpan(s)->StyleAttributes() ==
                           pb.GetCaptionTextSpan(s)->StyleAttributes();
            }
        }
        if (!same) {
            return ::testing::AssertionFailure()
                   << "caption " << i << " differs:\nexpected " << a << "\nread     " << b;
        }
    }
    return ::testing::AssertionSuccess();
}

} // namespace test
