#include "CaptionChecks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace captioncli;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::Field;

const zelmediatypes::TickTime kFrame{zelmediatypes::kTicksPerSecond * 1001 / 30000};

CaptionPtr MakeCaption(std::int64_t beginFrame, std::int64_t endFrame,
                       std::vector<std::string> lines, CaptionType type = kCaptionType_PopOn) {
    CaptionPtr caption(new Caption);
    caption->SetBeginTime(kFrame * beginFrame);
    caption->SetEndTime(kFrame * endFrame);
    caption->SetCaptionType(type);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(zelcore::ToUTF16(lines[i]), {}));
        paragraph->SetCaptionPosition(
            Position(Rational(0), Rational(static_cast<std::int64_t>(12 + i), 15)));
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

std::vector<std::string> Kinds(const std::vector<Finding>& findings) {
    std::vector<std::string> kinds;
    for (const Finding& finding : findings) {
        kinds.push_back(finding.kind +
                        (finding.captionIndex ? " " + std::to_string(*finding.captionIndex) : ""));
    }
    return kinds;
}

TEST(CheckCaptions, FindsFastShortAndOverlappingCaptions) {
    const std::vector<CaptionPtr> captions{
        MakeCaption(0, 90, {"Three seconds, easy to read."}),
        MakeCaption(60, 150, {"Begins before the first ends."}),
        MakeCaption(200, 210, {"Gone in a third of a second."}),
        MakeCaption(300, 330, {"Thirty-some letters in one second flat"}),
    };
    CheckLimits limits;
    limits.maxCharactersPerSecond = 20.0;
    limits.minDurationSeconds = 0.5;
    EXPECT_THAT(Kinds(CheckCaptions(captions, limits)),
                ElementsAre("overlap 1", "short 2", "reading-rate 2", "reading-rate 3"));
    limits.maxCharactersPerSecond = 100.0;
    limits.minDurationSeconds = 0.1;
    EXPECT_THAT(Kinds(CheckCaptions(captions, limits)), ElementsAre("overlap 1"));
}

TEST(CheckCaptions, ChecksCea608LegalityWhenAsked) {
    const std::vector<CaptionPtr> captions{
        MakeCaption(0, 100, {std::string(33, 'x')}),
        MakeCaption(200, 300, {"one", "two", "three"}, kCaptionType_RollUp2),
        // Long text three frames after the caption before: it cannot be loaded in time.
        MakeCaption(303, 400, {std::string(30, 'a'), std::string(30, 'b')}),
    };
    CheckLimits limits;
    limits.maxCharactersPerSecond = 1000.0;
    limits.minDurationSeconds = 0.0;
    EXPECT_TRUE(CheckCaptions(captions, limits).empty());
    limits.cea608 = true;
    const auto findings = CheckCaptions(captions, limits);
    EXPECT_THAT(Kinds(findings),
                ElementsAre("608-columns 0", "608-roll-up-depth 1", "608-transmission"));
    EXPECT_THAT(findings.back().message, ::testing::HasSubstr("sent late"));
}

} // namespace
