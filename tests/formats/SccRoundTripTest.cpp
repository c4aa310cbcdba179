#include "captionformats/SccReader.h"
#include "captionformats/SccWriter.h"

#include "DiagnosticMessages.h"
#include "FfmpegCea608.h"
#include "FormatSamples.h"
#include "FrameDurations.h"
#include "RandomCaptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

using format_test::Messages;

int Draw(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

// Styles CEA-608 reaches with one code: a colour (italics off), or italics in
// the colour already set; underline and background with either.
TextSpanAttributes NextStyle(std::mt19937& random, const TextSpanAttributes& previous) {
    static const CaptioningColor kColors[] = {
        {1, 1, 1, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}, {0, 1, 1, 1},
        {1, 0, 0, 1}, {1, 1, 0, 1}, {1, 0, 1, 1}, {0, 0, 0, 1},
    };
    static const CaptioningColor kBackgrounds[] = {
        kCaptioningColor_Transparent, {0, 0, 0, 1}, {0, 0, 1, 0.5f}};
    TextSpanAttributes style;
    style.SetUnderlined(Draw(random, 0, 3) == 0);
    style.backgroundColor = kBackgrounds[Draw(random, 0, 2)];
    if (Draw(random, 0, 2) == 0) {
        style.textColor = previous.textColor;
        style.SetItalicized(true);
    } else {
        style.textColor = kColors[Draw(random, 0, 7)];
    }
    return style;
}

// Pop-on captions as our decoder gives them: free left-aligned lines on rows
// of the 32 × 15 grid, a style change at a space, times on frames with room
// to load each caption.
// Every character set of CEA-608: basic (with its substitutions), special
// and extended.
const std::u32string kAllCharacterSets = U"abcXYZ019.,-'!?&ÁéñÇü♪®½ßÅ{}";

std::vector<CaptionPtr> RandomPopOnCaptions(std::mt19937& random, int count,
                                            const std::u32string& alphabet = kAllCharacterSets,
                                            bool styled = true) {
    std::vector<CaptionPtr> captions;
    std::int64_t frame = Draw(random, 0, 100);
    for (int c = 0; c < count; ++c) {
        CaptionPtr caption(new Caption);
        caption->SetCaptionType(kCaptionType_PopOn);
        frame += Draw(random, 150, 400);
        caption->SetBeginTime(formats_test::kNtscFrame * frame);
        caption->SetEndTime(formats_test::kNtscFrame * (frame + Draw(random, 20, 120)));
        const int lines = Draw(random, 1, 3);
        int row = Draw(random, 1, 15 - lines + 1);
        for (int l = 0; l < lines; ++l, ++row) {
            CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
            ParagraphStyleAttributes style;
            style.SetAnchorID(kAnchorID_Free);
            style.SetTextAlignment(kTextAlignment_Left);
            paragraph->SetParagraphStyleAttributes(style);
            const int length = Draw(random, 1, 24);
            const int column = Draw(random, 0, 32 - length);
            paragraph->SetCaptionPosition(Position(Rational(column, 32), Rational(row - 1, 15)));
            TextSpanAttributes attributes;
            std::u16string text;
            for (int i = 0; i < length; ++i) {
                const bool styleChange = styled && i > 0 && Draw(random, 0, 6) == 0;
                if (styleChange) {
                    paragraph->AppendCaptionTextSpan(new CaptionTextSpan(
                        zelcore::UTF16String(text.begin(), text.end()), attributes));
                    text.clear();
                    TextSpanAttributes next = NextStyle(random, attributes);
                    if (next == attributes) {
                        next.SetUnderlined(!next.IsUnderlined());
                        next.SetItalicized(false);
                    }
                    attributes = next;
                    text += u' ';
                    continue;
                }
                const char32_t character = alphabet[static_cast<std::size_t>(
                    Draw(random, 0, static_cast<int>(alphabet.size()) - 1))];
                text += static_cast<char16_t>(character);
            }
            paragraph->AppendCaptionTextSpan(
                new CaptionTextSpan(zelcore::UTF16String(text.begin(), text.end()), attributes));
            caption->AppendCaptionTextParagraph(paragraph);
        }
        captions.push_back(caption);
    }
    return captions;
}

TEST(SccRoundTrip, RandomPopOnCaptionsSurviveWriteThenRead) {
    for (bool dropFrame : {true, false}) {
        SCOPED_TRACE(dropFrame ? "drop-frame" : "non-drop");
        std::mt19937 random(dropFrame ? 608 : 609);
        const auto captions = RandomPopOnCaptions(random, 200);
        WriteOptions options{"out.scc", dropFrame};
        const WriteResult written = SccWriter().Write(captions, options);
        ASSERT_TRUE(written.Succeeded());
        EXPECT_THAT(Messages(written.warnings), ElementsAre());
        EXPECT_THAT(written.bytes, HasSubstr(dropFrame ? ";" : ":00\t"));
        const ReadResult read = SccReader().Read(written.bytes, {"out.scc"});
        ASSERT_TRUE(read.Succeeded());
        EXPECT_THAT(Messages(read.warnings), ElementsAre());
        EXPECT_TRUE(test::SameCaptions(captions, read.captions));
    }
}

// FFmpeg's CEA-608 decoder shows the text our encoder writes, line by line,
// for plain captions of the basic and special sets. (It differs from CEA-608
// elsewhere: it ignores a special character sent again after its pair, takes
// mid-row and background codes otherwise and lacks the extended characters'
// backspace; it shows rows from column 0 and 27h as U+2019. The comparison
// undoes these: lines trimmed, U+2019 as ', repeated special characters as one.)
TEST(SccRoundTrip, FfmpegsDecoderShowsTheTextWeWrite) {
    for (bool dropFrame : {true, false}) {
        SCOPED_TRACE(dropFrame ? "drop-frame" : "non-drop");
        std::mt19937 random(dropFrame ? 29 : 30);
        const auto captions = RandomPopOnCaptions(random, 200, U"abcXYZ019.,-'!?&éñç÷♪®½£", false);
        const auto decoded =
            test::DecodeSccWithFfmpeg(SccWriter().Write(captions, {"out.scc", dropFrame}).bytes);
        ASSERT_EQ(decoded.size(), captions.size());
        auto normalized = [](std::vector<std::string> lines) {
            for (std::string& text : lines) {
                for (std::size_t at = text.find("\u2019"); at != std::string::npos;
                     at = text.find("\u2019")) {
                    text.replace(at, 3, "'");
                }
                text.erase(0, text.find_first_not_of(' '));
                text.erase(text.find_last_not_of(' ') + 1);
                for (const char* special : {"♪", "®", "½", "£"}) {
                    const std::string twice = std::string(special) + special;
                    for (std::size_t at = text.find(twice); at != std::string::npos;
                         at = text.find(twice)) {
                        text.erase(at, std::strlen(special));
                    }
                }
            }
            return lines;
        };
        for (std::size_t i = 0; i < captions.size(); ++i) {
            EXPECT_EQ(normalized(decoded[i]), normalized(test::LinesOf(*captions[i])))
                << "caption " << i;
        }
    }
}

// Files our encoder wrote come back byte for byte through read and write, and
// their captions unchanged.
TEST(SccRoundTrip, OurFilesSurviveReadThenWriteByteForByte) {
    SKIP_WITHOUT_SAMPLES();
    for (const char* sample :
         {"caption-inspector-plan9/Plan9fromOuterSpace.scc", "ttconv-pop-on/ttconv-pop-on.scc",
          "ttconv-roll-up-2-rows/ttconv-roll-up-2-rows.scc",
          "pycaption-pop-on/pycaption-pop-on.scc"}) {
        SCOPED_TRACE(sample);
        const ReadResult original =
            SccReader().Read(test::ReadBytes(test::SamplesDir() / "scc" / sample), {sample});
        const WriteResult ours = SccWriter().Write(original.captions, {"ours.scc"});
        const ReadResult read = SccReader().Read(ours.bytes, {"ours.scc"});
        EXPECT_TRUE(test::SameCaptions(original.captions, read.captions));
        EXPECT_EQ(SccWriter().Write(read.captions, {"again.scc"}).bytes, ours.bytes);
    }
}

TEST(SccWriter, PutsTheEndOfCaptionOnTheBeginFrame) {
    CaptionPtr caption(new Caption);
    caption->SetCaptionType(kCaptionType_PopOn);
    // 00:10:00;00 drop-frame is frame 17982; 01:00:00:00 non-drop is 108000.
    // Each caption ends 60 frames later with an EDM on its own line.
    for (const auto& [frame, dropFrame, endLabel] :
         {std::tuple{std::int64_t{17982}, true, "00:10:02;00\t942c 942c\n"},
          std::tuple{std::int64_t{108000}, false, "01:00:02:00\t942c 942c\n"}}) {
        caption->SetBeginTime(formats_test::kNtscFrame * frame);
        caption->SetEndTime(formats_test::kNtscFrame * (frame + 60));
        CaptionTextParagraphPtr line(new CaptionTextParagraph);
        line->AppendCaptionTextSpan(new CaptionTextSpan(zelcore::ToUTF16("Hi"), {}));
        std::vector<CaptionTextParagraphPtr> none;
        caption->GetCaptionTextParagraphs(none);
        for (const auto& old : none) {
            caption->RemoveCaptionTextParagraph(old);
        }
        caption->AppendCaptionTextParagraph(line);
        const WriteResult written = SccWriter().Write({caption}, {"out.scc", dropFrame});
        EXPECT_THAT(written.bytes, HasSubstr(std::string("942f 942f\n\n")));
        EXPECT_THAT(written.bytes, HasSubstr(std::string(endLabel)));
        const ReadResult read = SccReader().Read(written.bytes, {});
        ASSERT_EQ(read.captions.size(), 1u);
        EXPECT_EQ(read.captions[0]->GetBeginTime(), formats_test::kNtscFrame * frame);
        EXPECT_EQ(read.captions[0]->GetEndTime(), formats_test::kNtscFrame * (frame + 60));
    }
}

TEST(SccWriter, ReportsCaptionsThatCannotBeSentInTimeWithTheirDelay) {
    std::mt19937 random(1);
    auto captions = RandomPopOnCaptions(random, 2);
    // The second caption three frames after the first: its load cannot fit.
    captions[1]->SetBeginTime(captions[0]->GetBeginTime() + formats_test::kNtscFrame * 3);
    captions[1]->SetEndTime(captions[0]->GetBeginTime() + formats_test::kNtscFrame * 200);
    captions[0]->SetEndTime(captions[1]->GetBeginTime());
    const WriteResult written = SccWriter().Write(captions, {"out.scc"});
    ASSERT_EQ(written.warnings.size(), 1u);
    const std::string message = ToString(written.warnings[0]);
    EXPECT_THAT(
        message,
        HasSubstr(
            "pop-on captions that cannot be loaded before their begin are sent late (up to "));
    EXPECT_THAT(message, HasSubstr("in 1 caption (first: caption 2 at"));
    const ReadResult read = SccReader().Read(written.bytes, {});
    ASSERT_EQ(read.captions.size(), 2u);
    const std::int64_t delay = std::stoll(message.substr(message.find("up to ") + 6));
    EXPECT_EQ(read.captions[1]->GetBeginTime(),
              captions[1]->GetBeginTime() + formats_test::kNtscFrame * delay);
}

TEST(SccWriter, ReportsWhatCea608CannotCarry) {
    test::CaptionCapabilities open;
    open.gridAnchors = true;
    open.alphabet = U"abc€中";
    open.textColors = {CaptioningColor(0.5f, 0.5f, 0.5f, 1.0f)};
    open.bold = true;
    std::mt19937 random(9);
    const auto captions = test::RandomCaptions(random, 30, open);
    const WriteResult written = SccWriter().Write(captions, {"out.scc"});
    EXPECT_THAT(Messages(written.warnings),
                ::testing::IsSupersetOf(
                    {HasSubstr("bold dropped in"),
                     HasSubstr("captions of other types written as pop-on in 30 captions"),
                     HasSubstr("characters outside the CEA-608 sets written as '?'"),
                     HasSubstr("text colour outside the CEA-608 colours written white"),
                     HasSubstr("times rounded down to frames")}));
    EXPECT_EQ(SccReader().Read(written.bytes, {}).captions.size(), 30u);
}

} // namespace
