#include "captionformats/SrtReader.h"
#include "captionformats/TtmlReader.h"
#include "captionformats/TtmlWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "RandomCaptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

ReadResult ReadTtml(std::string_view text) {
    return TtmlReader().Read(text, {"in.ttml"});
}

using format_test::Messages;

std::int64_t Microseconds(zelmediatypes::TickTime time) {
    return time.GetTicks() / (zelmediatypes::kTicksPerSecond / 1'000'000);
}

TEST(TtmlReader, DecodesTheAstisubSampleWithItsStyles) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "ttml/astisub-example";
    const auto expected = test::ReadExpected(folder);
    const ReadResult result =
        TtmlReader().Read(test::ReadBytes(folder / "example-in.ttml"), {"example-in.ttml"});
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
        EXPECT_EQ(test::LinesOf(caption), lines) << "item " << index;
    }
    // Styles by reference: white centred sans-serif text at the top of a band
    // from 87% down (displayAlign before, the default).
    const CaptionTextParagraph& first = *result.captions[0]->GetCaptionTextParagraph(0);
    const TextSpanAttributes attributes = first.GetCaptionTextSpan(0)->StyleAttributes();
    EXPECT_EQ(attributes.textColor, kCaptioningColor_White);
    EXPECT_EQ(zelcore::ToUTF8(attributes.GetFontName()), "sansSerif");
    EXPECT_EQ(first.GetParagraphStyleAttributes().GetAnchorID(), kAnchorID_Free);
    EXPECT_EQ(first.GetCaptionPosition(), Position(Rational(0), Rational(87, 100)));
    EXPECT_EQ(first.GetParagraphStyleAttributes().GetTextAlignment(), kTextAlignment_Center);
}

TEST(TtmlReader, MergesReferencedInheritedAndInlineStyles) {
    SKIP_WITHOUT_SAMPLES();
    const auto file =
        test::SamplesDir() / "ttml/astisub-merging-style/example-in-merging-style.ttml";
    const ReadResult result = TtmlReader().Read(test::ReadBytes(file), {});
    ASSERT_EQ(result.captions.size(), 4u);
    auto colorOf = [&](std::size_t caption) {
        return result.captions[caption]
            ->GetCaptionTextParagraph(0)
            ->GetCaptionTextSpan(0)
            ->StyleAttributes()
            .textColor;
    };
    const CaptioningColor yellow(1, 1, 0, 1);
    EXPECT_EQ(colorOf(0), yellow) << "the div's inline tts:color is over its referenced style";
    EXPECT_EQ(colorOf(1), kCaptioningColor_White);
    EXPECT_EQ(colorOf(2), kCaptioningColor_White) << "tt:color is in the core namespace: no style";
    EXPECT_EQ(colorOf(3), kCaptioningColor_White)
        << "the span's style reference is over the div's blue";
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("text1.0 text1.1"));
}

TEST(TtmlReader, ReadsEveryKindOfTimeExpression) {
    SKIP_WITHOUT_SAMPLES();
    for (const char* name :
         {"pycaption-frame-timing", "pycaption-frame-rate-multiplier", "pycaption-tick-rate"}) {
        SCOPED_TRACE(name);
        const auto folder = test::SamplesDir() / "ttml" / name;
        const auto expected = test::ReadExpected(folder);
        const ReadResult result =
            TtmlReader().Read(test::ReadBytes(folder / expected.get<std::string>("file")), {});
        ASSERT_EQ(result.captions.size(), 1u);
        const auto& timing = expected.get_child("start_end_microseconds").begin()->second;
        // pycaption truncates to whole microseconds.
        EXPECT_EQ(Microseconds(result.captions[0]->GetBeginTime()),
                  timing.begin()->second.get_value<std::int64_t>());
        EXPECT_EQ(Microseconds(result.captions[0]->GetEndTime()),
                  std::next(timing.begin())->second.get_value<std::int64_t>());
        EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("ABC"));
    }
    const ReadResult formats = TtmlReader().Read(
        test::ReadBytes(test::SamplesDir() /
                        "ttml/pycaption-timing-formats/pycaption-timing-formats.dfxp"),
        {});
    ASSERT_EQ(formats.captions.size(), 2u);
    EXPECT_EQ(test::MillisecondsOf(formats.captions[0]->GetBeginTime()), 1900);
    EXPECT_EQ(test::MillisecondsOf(formats.captions[0]->GetEndTime()), 3050);
    EXPECT_EQ(test::MillisecondsOf(formats.captions[1]->GetBeginTime()), 4000);
    EXPECT_EQ(test::MillisecondsOf(formats.captions[1]->GetEndTime()), 5200);
}

TEST(TtmlReader, GivesTheDfxpSampleTheTextOfItsSrtConversion) {
    SKIP_WITHOUT_SAMPLES();
    const auto folder = test::SamplesDir() / "ttml/pycaption-dfxp-to-srt";
    const ReadResult result = TtmlReader().Read(test::ReadBytes(folder / "sample_dfxp.dfxp"), {});
    const ReadResult expected = SrtReader().Read(test::ReadBytes(folder / "expected.srt"), {});
    ASSERT_EQ(result.captions.size(), expected.captions.size());
    for (std::size_t i = 0; i < result.captions.size(); ++i) {
        EXPECT_EQ(test::LinesOf(*result.captions[i]), test::LinesOf(*expected.captions[i])) << i;
        EXPECT_EQ(test::MillisecondsOf(result.captions[i]->GetBeginTime()),
                  test::MillisecondsOf(expected.captions[i]->GetBeginTime()))
            << i;
    }
}

TEST(TtmlReader, NestsBeginTimesAndPlacesByRegion) {
    const ReadResult result = ReadTtml(
        R"(<tt xmlns="http://www.w3.org/ns/ttml" xmlns:tts="http://www.w3.org/ns/ttml#styling">
<head><layout>
<region xml:id="top" tts:origin="0% 0%" tts:extent="100% 100%" tts:displayAlign="before"/>
<region xml:id="free" tts:origin="12.5% 80%" tts:extent="50% 10%"/>
</layout></head>
<body begin="10s"><div begin="1s">
<p begin="1s" dur="2s" region="top" tts:textAlign="right">a</p>
<p begin="0s" end="1s" region="free">b<br/>c</p>
</div></body></tt>)");
    ASSERT_TRUE(result.Succeeded());
    ASSERT_EQ(result.captions.size(), 2u);
    EXPECT_EQ(test::MillisecondsOf(result.captions[0]->GetBeginTime()), 12000);
    EXPECT_EQ(test::MillisecondsOf(result.captions[0]->GetEndTime()), 14000);
    EXPECT_EQ(
        result.captions[0]->GetCaptionTextParagraph(0)->GetParagraphStyleAttributes().GetAnchorID(),
        2);
    const auto free = result.captions[1]->GetCaptionTextParagraph(0);
    EXPECT_EQ(free->GetParagraphStyleAttributes().GetAnchorID(), kAnchorID_Free);
    EXPECT_EQ(free->GetCaptionPosition(), Position(Rational(1, 8), Rational(4, 5)));
    EXPECT_EQ(result.captions[1]->GetCaptionTextParagraph(1)->GetCaptionPosition(),
              kPosition_Uninitialized);
}

TEST(TtmlReader, LocatesXmlErrorsAndReportsWhatItSkips) {
    EXPECT_THAT(Messages(ReadTtml("<tt>\n  <body><p>\n</tt>").errors),
                ElementsAre(HasSubstr("in.ttml:3:3: not well-formed XML")));
    EXPECT_THAT(
        Messages(ReadTtml("<html/>").errors),
        ElementsAre("in.ttml:1:1: not a TTML document: the root element is <html>, not <tt>"));
    const ReadResult result = ReadTtml(R"(<tt xmlns:tts="http://www.w3.org/ns/ttml#styling">
<body><div>
<p begin="1s" end="2x" style="nope" tts:color="plaid" tts:wrapOption="noWrap">a<span begin="1s">b</span></p>
<p begin="1s">no end</p>
</div></body></tt>)");
    EXPECT_TRUE(result.Succeeded());
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("in.ttml:3:1: style \"nope\" is not defined",
                            "in.ttml:3:1: tts:color=\"plaid\" not understood; ignored",
                            "in.ttml:3:1: style tts:wrapOption dropped",
                            "in.ttml:3:1: end=\"2x\" is no time expression; ignored",
                            "in.ttml:3:1: paragraph without an end skipped",
                            "in.ttml:4:1: paragraph without an end skipped"));
}

TEST(TtmlReader, SkipsNestingDeeperThanItFollows) {
    std::string open;
    std::string close;
    for (int i = 0; i < 100000; ++i) {
        open += "<span>";
        close += "</span>";
    }
    const ReadResult result = ReadTtml("<tt><body><div><p begin=\"1s\" end=\"2s\">a<span>b</span>" +
                                       open + "deep" + close + "</p></div></body></tt>");
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("ab"));
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre(HasSubstr("elements nested deeper than 64 levels skipped")));
}

TEST(TtmlRoundTrip, RandomCaptionsSurviveWriteThenRead) {
    test::CaptionCapabilities ttml;
    ttml.bold = ttml.italic = ttml.underline = true;
    ttml.textColors = {CaptioningColor(1.0f, 0.2f, 0.6f, 1.0f),
                       CaptioningColor(0.0f, 1.0f, 1.0f, 51.0f / 255.0f)};
    ttml.gridAnchors = ttml.alignmentFollowsColumn = ttml.freePositions = true;
    ttml.maxLines = 3;
    ttml.alphabet = U"abcXYZ019 .,-'!?&<>\"é♪中\U0001F600";
    ttml.timeStepTicks = zelmediatypes::kTicksPerSecond / 30000; // times off the millisecond too
    std::mt19937 random(1001);
    auto captions = test::RandomCaptions(random, 300, ttml);
    TextSpanAttributes rich;
    rich.SetFontName(zelcore::ToUTF16("Lucida Sans"));
    rich.SetFontSize(31.5f);
    rich.backgroundColor = CaptioningColor(0.0f, 0.0f, 0.0f, 102.0f / 255.0f);
    rich.SetTextEdge(TextSpanAttributes::kTextEdge_Uniform);
    rich.edgeColor = kCaptioningColor_Black;
    rich.edgeWidth = 2.0f;
    captions[7]->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0)->SetTextSpanStyleAttributes(
        rich);
    const WriteResult written = TtmlWriter().Write(captions, {"out.ttml"});
    ASSERT_TRUE(written.Succeeded());
    EXPECT_THAT(Messages(written.warnings), ElementsAre());
    const ReadResult read = ReadTtml(written.bytes);
    ASSERT_TRUE(read.Succeeded()) << read.errors.front();
    EXPECT_THAT(Messages(read.warnings), ElementsAre());
    EXPECT_TRUE(test::SameCaptions(captions, read.captions));
}

} // namespace
