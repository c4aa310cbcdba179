#include "captionformats/WebVttReader.h"
#include "captionformats/WebVttWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "RandomCaptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

ReadResult ReadVtt(std::string_view text) {
    return WebVttReader().Read(text, {"in.vtt"});
}

using format_test::Messages;

std::string Describe(const CaptionTextParagraph& paragraph) {
    std::ostringstream text;
    text << paragraph;
    return text.str();
}

TEST(WebVttReader, DecodesTheOtherSamplesToTheirItems) {
    SKIP_WITHOUT_SAMPLES();
    for (const auto& folder : test::CaseFolders(test::SamplesDir() / "webvtt/other")) {
        SCOPED_TRACE(folder.filename().string());
        const auto expected = test::ReadExpected(folder);
        const auto file = folder / expected.get<std::string>("file");
        const ReadResult result = WebVttReader().Read(test::ReadBytes(file), {file.string()});
        ASSERT_TRUE(result.Succeeded());
        ASSERT_EQ(result.captions.size(), expected.get<std::size_t>("item_count"));
        std::size_t index = 0;
        for (const auto& [unused, item] : expected.get_child("items")) {
            const Caption& caption = *result.captions[index++];
            EXPECT_EQ(test::MillisecondsOf(caption.GetBeginTime()),
                      test::MillisecondsOf(item.get<std::string>("start")));
            EXPECT_EQ(test::MillisecondsOf(caption.GetEndTime()),
                      test::MillisecondsOf(item.get<std::string>("end")));
            std::vector<std::string> lines;
            for (const auto& [unusedKey, line] : item.get_child("lines")) {
                lines.push_back(line.data());
            }
            EXPECT_EQ(test::LinesOf(caption), lines);
        }
    }
}

TEST(WebVttReader, TurnsCueMarkupIntoSpanAttributes) {
    const ReadResult result = ReadVtt(
        "WEBVTT\n\n00:01.000 --> 00:02.000\n<b>bold <i>both</i></b> <c.yellow.bg_blue>col</c>"
        " <u.red>red</u>\n<v Ann>hi</v> <ruby>漢<rt>kan</rt></ruby> a<00:01.500>b &amp; "
        "&lt;x&gt;\n");
    ASSERT_EQ(result.captions.size(), 1u);
    const Caption& caption = *result.captions[0];
    EXPECT_THAT(test::LinesOf(caption), ElementsAre("bold both col red", "hi 漢 (kan) ab & <x>"));
    const CaptionTextParagraph& first = *caption.GetCaptionTextParagraph(0);
    ASSERT_EQ(first.GetNumSpans(), 6u);
    EXPECT_TRUE(first.GetCaptionTextSpan(0)->StyleAttributes().IsBolded());
    EXPECT_TRUE(first.GetCaptionTextSpan(1)->StyleAttributes().IsItalicized());
    EXPECT_TRUE(first.GetCaptionTextSpan(1)->StyleAttributes().IsBolded());
    const TextSpanAttributes colored = first.GetCaptionTextSpan(3)->StyleAttributes();
    EXPECT_EQ(colored.textColor, CaptioningColor(1.0f, 1.0f, 0.0f, 1.0f));
    EXPECT_EQ(colored.backgroundColor, CaptioningColor(0.0f, 0.0f, 1.0f, 1.0f));
    const TextSpanAttributes red = first.GetCaptionTextSpan(5)->StyleAttributes();
    EXPECT_TRUE(red.IsUnderlined());
    EXPECT_EQ(red.textColor, CaptioningColor(1.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_THAT(
        Messages(result.warnings),
        ElementsAre("in.vtt:5:1: voice \"Ann\" dropped (its text is kept)",
                    "in.vtt:5:15: ruby text kept in parentheses after its base",
                    "in.vtt:5:45: timestamp tags dropped (the text shows at the cue's start)"));
}

TEST(WebVttReader, PlacesCuesByTheirSettings) {
    struct Case {
        const char* settings;
        const char* placement;
    };
    const Case cases[] = {
        {"", "P(align=1 anchor=7 at (unplaced))"},
        {"align:left", "P(align=0 anchor=6 at (unplaced))"},
        {"align:end line:0", "P(align=2 anchor=2 at (unplaced))"},
        {"line:50%,center position:0%", "P(align=1 anchor=3 at (unplaced))"},
        {"line:-1 position:100% align:start", "P(align=0 anchor=8 at (unplaced))"},
        {"position:12.5%,line-left line:80%,start align:right",
         "P(align=2 anchor=9 at (1/8, 4/5))"},
        {"position:0%,line-left line:0%", "P(align=1 anchor=9 at (0/1, 0/1))"},
        {"line:5", "P(align=1 anchor=9 at (1/2, 1/3))"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.settings);
        const ReadResult result =
            ReadVtt(std::string("WEBVTT\n\n00:01.000 --> 00:02.000 ") + test.settings + "\nx\ny\n");
        ASSERT_EQ(result.captions.size(), 1u);
        const std::string first = Describe(*result.captions[0]->GetCaptionTextParagraph(0));
        EXPECT_EQ(first.substr(0, first.find('[')), test.placement);
        const auto second = result.captions[0]->GetCaptionTextParagraph(1);
        EXPECT_EQ(second->GetParagraphStyleAttributes(),
                  result.captions[0]->GetCaptionTextParagraph(0)->GetParagraphStyleAttributes());
        EXPECT_EQ(second->GetCaptionPosition(), kPosition_Uninitialized);
    }
}

TEST(WebVttReader, ReportsDroppedSettingsAndSkippedBlocksWithTheirPlace) {
    const ReadResult result = ReadVtt("WEBVTT\n\nSTYLE\n::cue { color: red }\n\nREGION\nid:r\n\n"
                                      "00:01.000 --> 00:02.000 region:r size:50% vertical:rl "
                                      "bogus:1 line:5\nx\n\n"
                                      "just a stray block\n\n"
                                      "00:01.000 --> 00:0x.000\nbad end\n");
    ASSERT_TRUE(result.Succeeded());
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("in.vtt: STYLE blocks ignored (CSS is not applied)",
                            "in.vtt:9:55: cue setting \"bogus:1\" ignored",
                            "in.vtt:9: region dropped (the cue is placed by its own settings)",
                            "in.vtt:9: vertical text dropped (written horizontally)",
                            "in.vtt:9: cue box size dropped",
                            "in.vtt:9: line number approximated on a 15-line area",
                            "in.vtt:9: horizontal place approximated by the left edge",
                            "in.vtt:12:1: block skipped: it has no cue timing line",
                            "in.vtt:14:19: cue skipped: bad end time (expected [HH:]MM:SS.mmm)"));
    EXPECT_EQ(result.captions.size(), 1u);
}

TEST(WebVttReader, RejectsAFileWithoutTheSignatureNamingWhere) {
    for (const char* text :
         {"", "WEBVT", "WEBVTTX\n", "webvtt\n", "\xEF\xBB\xBF\xEF\xBB\xBFWEBVTT\n"}) {
        const ReadResult result = ReadVtt(text);
        EXPECT_THAT(Messages(result.errors),
                    ElementsAre(HasSubstr("in.vtt:1:1: not a WebVTT file")))
            << text;
        EXPECT_TRUE(result.captions.empty());
    }
}

TEST(WebVttReader, IgnoresNestingDeeperThanItFollows) {
    std::string tags;
    for (int i = 0; i < 100000; ++i) {
        tags += "<b>";
    }
    const ReadResult result = ReadVtt("WEBVTT\n\n00:01.000 --> 00:02.000\n" + tags + "deep\n");
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("deep"));
    EXPECT_THAT(Messages(result.warnings).front(),
                HasSubstr("tags nested deeper than 64 levels ignored"));
}

TEST(WebVttRoundTrip, RandomCaptionsSurviveWriteThenRead) {
    test::CaptionCapabilities vtt;
    vtt.bold = vtt.italic = vtt.underline = true;
    vtt.textColors = {CaptioningColor(1.0f, 1.0f, 0.0f, 1.0f),
                      CaptioningColor(0.0f, 1.0f, 1.0f, 1.0f),
                      CaptioningColor(0.0f, 0.0f, 0.0f, 1.0f)};
    vtt.gridAnchors = vtt.freePositions = true;
    vtt.freePositionPrecision = 800; // percentages with up to three decimals
    vtt.maxLines = 3;
    vtt.alphabet = U"abcXYZ019 .,-'!?&<>;é♪中\U0001F600";
    std::mt19937 random(77);
    const auto captions = test::RandomCaptions(random, 400, vtt);
    const WriteResult written = WebVttWriter().Write(captions, {"out.vtt"});
    ASSERT_TRUE(written.Succeeded());
    EXPECT_THAT(Messages(written.warnings), ElementsAre());
    const ReadResult read = ReadVtt(written.bytes);
    ASSERT_TRUE(read.Succeeded());
    EXPECT_THAT(Messages(read.warnings), ElementsAre());
    EXPECT_TRUE(test::SameCaptions(captions, read.captions));
}

TEST(WebVttWriter, ReportsColoursOutsideTheClassesAndRoundedPositions) {
    std::mt19937 random(3);
    test::CaptionCapabilities plain;
    plain.maxLines = 1;
    auto captions = test::RandomCaptions(random, 2, plain);
    TextSpanAttributes odd;
    odd.textColor = CaptioningColor(0.5f, 0.5f, 0.5f, 1.0f);
    captions[0]->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0)->SetTextSpanStyleAttributes(odd);
    ParagraphStyleAttributes free;
    free.SetAnchorID(kAnchorID_Free);
    captions[1]->GetCaptionTextParagraph(0)->SetParagraphStyleAttributes(free);
    captions[1]->GetCaptionTextParagraph(0)->SetCaptionPosition(
        Position(Rational(1, 3), Rational(1, 2)));
    const WriteResult written = WebVttWriter().Write(captions, {"out.vtt"});
    EXPECT_THAT(Messages(written.warnings),
                ElementsAre(HasSubstr("free position rounded into the area to nine decimals in 1 "
                                      "caption (first: caption 2"),
                            HasSubstr("text colour other than a WebVTT colour class dropped in 1 "
                                      "caption (first: caption 1")));
    EXPECT_THAT(written.bytes, HasSubstr("position:33.333333333%,line-left line:50%,start"));
}

// Markup characters are escaped wherever they stand in a span, short or long,
// plain or emphasised: the writer looks for them 16, 8 and 1 bytes at a time.
TEST(WebVttWriter, EscapesMarkupCharactersAtEveryPlace) {
    auto escaped = [](const std::string& text) {
        std::string out;
        for (char c : text) {
            out += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
        }
        return out;
    };
    std::vector<CaptionPtr> captions;
    std::string expected = "WEBVTT\n\n";
    for (std::size_t length = 1; length <= 40; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            std::string text(length, 'a');
            text[at] = "&<>"[at % 3];
            if (at + 9 < length) {
                text[at + 9] = "><&"[at % 3];
            }
            TextSpanAttributes style;
            style.SetItalicized(at % 2 == 1);
            CaptionTextParagraphPtr line(new CaptionTextParagraph);
            line->AppendCaptionTextSpan(new CaptionTextSpan(zelcore::ToUTF16(text), style));
            CaptionPtr caption(new Caption);
            caption->SetBeginTime(
                zelmediatypes::TickTime::FromSeconds(static_cast<std::int64_t>(captions.size())));
            caption->SetEndTime(caption->GetBeginTime() + zelmediatypes::TickTime::FromSeconds(1));
            caption->SetCaptionType(kCaptionType_Open);
            caption->AppendCaptionTextParagraph(line);
            captions.push_back(caption);
        }
    }
    const WriteResult written = WebVttWriter().Write(captions, {"out.vtt"});
    std::size_t index = 0;
    for (const CaptionPtr& caption : captions) {
        const CaptionTextSpan& span = *caption->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0);
        const std::string text = escaped(zelcore::ToUTF8(span.GetCaptionText()));
        const auto clock = [](std::size_t seconds) {
            char time[48];
            std::snprintf(time, sizeof time, "00:%02zu:%02zu.000", seconds / 60, seconds % 60);
            return std::string(time);
        };
        expected += clock(index) + " --> " + clock(index + 1) + "\n" +
                    (span.StyleAttributes().IsItalicized() ? "<i>" + text + "</i>" : text) + "\n\n";
        ++index;
    }
    EXPECT_EQ(written.bytes, expected);
    EXPECT_TRUE(written.warnings.empty());
}

} // namespace
