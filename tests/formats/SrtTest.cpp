#include "captionformats/SrtReader.h"
#include "captionformats/SrtWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "RandomCaptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include <boost/property_tree/ptree.hpp>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

ReadResult ReadSrt(std::string_view text) {
    return SrtReader().Read(text, {"in.srt"});
}

using format_test::Messages;

// Every sample with listed items decodes to those items: times to the
// millisecond and the text of each line. The UTF-16 sample decodes to the
// items of the example it was converted from; the sample without cue numbers
// holds the same cues as the example too.
TEST(SrtReader, DecodesTheSamplesToTheirExpectedItems) {
    SKIP_WITHOUT_SAMPLES();
    const auto srt = test::SamplesDir() / "srt";
    const boost::property_tree::ptree example = test::ReadExpected(srt / "astisub-example");
    for (const auto& folder : test::CaseFolders(srt)) {
        SCOPED_TRACE(folder.filename().string());
        const bool hasExpected = std::filesystem::exists(folder / "expected.json");
        const auto expected = hasExpected ? test::ReadExpected(folder) : example;
        const auto& items = expected.get_child_optional("items") ? expected : example;
        std::filesystem::path file;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() == ".srt") {
                file = entry.path();
            }
        }
        const ReadResult result = SrtReader().Read(test::ReadBytes(file), {file.string()});
        ASSERT_TRUE(result.Succeeded()) << ::testing::PrintToString(Messages(result.errors));
        EXPECT_EQ(result.streamFormat, kStreamFormat_OpenCaptions);
        const auto& expectedItems = items.get_child("items");
        ASSERT_EQ(result.captions.size(), expectedItems.size());
        std::size_t index = 0;
        for (const auto& [unused, item] : expectedItems) {
            const Caption& caption = *result.captions[index++];
            if (const auto start = item.get_optional<std::string>("start")) {
                EXPECT_EQ(test::MillisecondsOf(caption.GetBeginTime()),
                          test::MillisecondsOf(*start));
                EXPECT_EQ(test::MillisecondsOf(caption.GetEndTime()),
                          test::MillisecondsOf(item.get<std::string>("end")));
            }
            if (const auto lines = item.get_child_optional("lines")) {
                std::vector<std::string> expectedLines;
                for (const auto& [unusedKey, line] : *lines) {
                    expectedLines.push_back(line.data());
                }
                EXPECT_EQ(test::LinesOf(caption), expectedLines) << "item " << index;
            }
        }
    }
}

TEST(SrtReader, KeepsTheStyledSampleTagsAsSpanAttributes) {
    SKIP_WITHOUT_SAMPLES();
    const auto file = test::SamplesDir() / "srt/astisub-styled/example-in-styled.srt";
    const ReadResult result = SrtReader().Read(test::ReadBytes(file), {file.string()});
    ASSERT_EQ(result.captions.size(), 10u);
    auto firstSpan = [&](std::size_t caption, std::uint64_t line) {
        return result.captions[caption]
            ->GetCaptionTextParagraph(line)
            ->GetCaptionTextSpan(0)
            ->StyleAttributes();
    };
    EXPECT_TRUE(firstSpan(0, 0).IsBolded());
    EXPECT_EQ(firstSpan(0, 0).textColor, CaptioningColor(0.0f, 1.0f, 0.0f, 1.0f));
    EXPECT_EQ(firstSpan(1, 0).textColor, CaptioningColor(1.0f, 0.0f, 1.0f, 1.0f));
    EXPECT_FALSE(firstSpan(1, 0).IsBolded());
    EXPECT_TRUE(firstSpan(3, 0).IsBolded() && firstSpan(3, 0).IsUnderlined());
    EXPECT_EQ(firstSpan(4, 0), TextSpanAttributes());
    EXPECT_FALSE(firstSpan(5, 0).IsItalicized());
    EXPECT_TRUE(firstSpan(5, 1).IsItalicized());
    EXPECT_TRUE(firstSpan(6, 0).IsItalicized() && firstSpan(6, 1).IsItalicized());
    EXPECT_TRUE(firstSpan(7, 0).IsItalicized());
    EXPECT_FALSE(firstSpan(8, 0).IsItalicized()) << "an unclosed <i> leaked into the next cue";
    const auto& line = *result.captions[9]->GetCaptionTextParagraph(0);
    ASSERT_EQ(line.GetNumSpans(), 4u);
    EXPECT_EQ(zelcore::ToUTF8(line.GetCaptionTextSpan(1)->GetCaptionText()), "^3 * ");
    EXPECT_TRUE(line.GetCaptionTextSpan(2)->StyleAttributes().IsItalicized());
    EXPECT_FALSE(line.GetCaptionTextSpan(3)->StyleAttributes().IsItalicized());
}

TEST(SrtReader, ToleratesNumberingAndLineEndsFoundInTheWild) {
    const char* variants[] = {
        "1\n00:00:01,000 --> 00:00:02,500\nHello\n\n2\n00:00:03,000 --> 00:00:04,000\nWorld\n",
        "\xEF\xBB\xBF"
        "7\r\n00:00:01.000 --> 00:00:02.500  \r\nHello  \r\n\r\n7\r\n"
        "00:00:03.000-->00:00:04.000\r\nWorld\r\n",
        "00:00:01,000 --> 00:00:02,500\rHello\r\r00:00:03,000 --> 00:00:04,000\rWorld",
        "\n\n1\n00:00:01,000 --> 00:00:02,500\nHello\n00:00:03,000 --> 00:00:04,000\nWorld\n\n\n",
        "0:0:1,0 --> 0:0:2,5\nHello\n\n3\n0:00:03 --> 0:00:04\nWorld\n",
    };
    for (const char* text : variants) {
        SCOPED_TRACE(text);
        const ReadResult result = ReadSrt(text);
        ASSERT_TRUE(result.Succeeded());
        EXPECT_THAT(Messages(result.warnings), ElementsAre());
        ASSERT_EQ(result.captions.size(), 2u);
        EXPECT_EQ(test::MillisecondsOf(result.captions[0]->GetBeginTime()), 1000);
        EXPECT_EQ(test::MillisecondsOf(result.captions[0]->GetEndTime()), 2500);
        EXPECT_EQ(test::MillisecondsOf(result.captions[1]->GetBeginTime()), 3000);
        EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("Hello"));
        EXPECT_THAT(test::LinesOf(*result.captions[1]), ElementsAre("World"));
        EXPECT_EQ(result.captions[0]->GetCaptionType(), kCaptionType_Open);
    }
}

// A timing line ends the text before it, however far it is indented; lines
// that hold "-->" but are no timing stay text.
TEST(SrtReader, EndsCueTextAtATimingLineHoweverIndented) {
    const ReadResult result = ReadSrt("1\n00:00:01,000 --> 00:00:02,000\nHello\n"
                                      " \t00:00:03,000 --> 00:00:04,000\nWorld\nA --> B\n-->\n"
                                      "5 --> 6\n\t 0:00:05 -->\n");
    ASSERT_TRUE(result.Succeeded());
    EXPECT_THAT(Messages(result.warnings), ElementsAre());
    ASSERT_EQ(result.captions.size(), 2u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("Hello"));
    EXPECT_EQ(test::MillisecondsOf(result.captions[1]->GetBeginTime()), 3000);
    EXPECT_THAT(test::LinesOf(*result.captions[1]),
                ElementsAre("World", "A --> B", "-->", "5 --> 6", "\t 0:00:05 -->"));
}

// The usual "HH:MM:SS,mmm --> HH:MM:SS,mmm" line is read by a shortcut; the
// same times spelled any other way take the general scan. Both must give the
// same ticks, and what the shortcut must not take still fails as before.
TEST(SrtReader, ReadsTheUsualTimingLikeAnyOtherSpelling) {
    const std::int64_t times[] = {0, 1, 999, 1000, 59'999, 3'599'999, 3'600'000, 359'999'999};
    auto clock = [](std::int64_t ms, const char* separator, const char* extraDigit) {
        char text[48];
        std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld%s%03lld%s",
                      static_cast<long long>(ms / 3'600'000),
                      static_cast<long long>(ms / 60'000 % 60),
                      static_cast<long long>(ms / 1000 % 60), separator,
                      static_cast<long long>(ms % 1000), extraDigit);
        return std::string(text);
    };
    for (const std::int64_t begin : times) {
        for (const std::int64_t end : times) {
            const std::string usual = clock(begin, ",", "") + " --> " + clock(end, ".", "");
            const ReadResult read = ReadSrt("1\n" + usual + "\nx\n");
            const ReadResult spelled = ReadSrt("1\n " + clock(begin, ",", "0") + "-->" +
                                               clock(end, ",", "00") + "\tX1:2\nx\n");
            ASSERT_EQ(read.captions.size(), 1u) << usual;
            ASSERT_EQ(spelled.captions.size(), 1u) << usual;
            EXPECT_EQ(read.captions[0]->GetBeginTime(), spelled.captions[0]->GetBeginTime());
            EXPECT_EQ(read.captions[0]->GetEndTime(), spelled.captions[0]->GetEndTime());
            EXPECT_EQ(test::MillisecondsOf(read.captions[0]->GetBeginTime()), begin);
            EXPECT_EQ(test::MillisecondsOf(read.captions[0]->GetEndTime()), end);
        }
    }
    const ReadResult refused = ReadSrt("1\n00:60:00,000 --> 01:00:00,000\nx\n\n"
                                       "2\n00:00:01,000 --> 00:00:02,000x\nx\n\n"
                                       "3\n00:00:01:000 --> 00:00:02,000\tX1:5\nkept\n");
    EXPECT_THAT(Messages(refused.warnings),
                ElementsAre("in.srt:2:4: cue skipped: minutes of the begin time must be 00 to 59",
                            "in.srt:6:30: cue skipped: unexpected character after the end time"));
    ASSERT_EQ(refused.captions.size(), 1u);
    EXPECT_EQ(test::MillisecondsOf(refused.captions[0]->GetBeginTime()), 1000);
}

TEST(SrtReader, PlacesCaptionsByKeypadTags) {
    const ReadResult result =
        ReadSrt("1\n00:00:01,000 --> 00:00:02,000\n{\\an7}Top left\nsecond\n\n"
                "2\n00:00:03,000 --> 00:00:04,000\n{\\an6}Middle right\n\n"
                "3\n00:00:05,000 --> 00:00:06,000\nBottom\n");
    ASSERT_EQ(result.captions.size(), 3u);
    auto style = [&](std::size_t caption, std::uint64_t line) {
        return result.captions[caption]
            ->GetCaptionTextParagraph(line)
            ->GetParagraphStyleAttributes();
    };
    EXPECT_EQ(style(0, 0).GetAnchorID(), kAnchorID_TopLeft);
    EXPECT_EQ(style(0, 1).GetAnchorID(), kAnchorID_TopLeft);
    EXPECT_EQ(style(0, 0).GetTextAlignment(), kTextAlignment_Left);
    EXPECT_EQ(style(1, 0).GetAnchorID(), 5);
    EXPECT_EQ(style(1, 0).GetTextAlignment(), kTextAlignment_Right);
    EXPECT_EQ(style(2, 0).GetAnchorID(), kAnchorID_BottomCenter);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("Top left", "second"));
}

TEST(SrtReader, ReadsTagNamesInAnyCase) {
    const ReadResult result =
        ReadSrt("1\n00:00:01,000 --> 00:00:02,000\n"
                "<B>b</b><I>i</I><uU>x</Uu><FoNt color=\"red\">r</FONT><S x=1>s</S>\n");
    ASSERT_EQ(result.captions.size(), 1u);
    const auto& line = *result.captions[0]->GetCaptionTextParagraph(0);
    ASSERT_EQ(line.GetNumSpans(), 5u);
    EXPECT_EQ(zelcore::ToUTF8(line.GetCaptionTextSpan(0)->GetCaptionText()), "b");
    EXPECT_TRUE(line.GetCaptionTextSpan(0)->StyleAttributes().IsBolded());
    EXPECT_TRUE(line.GetCaptionTextSpan(1)->StyleAttributes().IsItalicized());
    EXPECT_EQ(zelcore::ToUTF8(line.GetCaptionTextSpan(2)->GetCaptionText()), "x")
        << "a longer name that starts like u is not underline";
    EXPECT_EQ(line.GetCaptionTextSpan(2)->StyleAttributes(), TextSpanAttributes());
    EXPECT_EQ(line.GetCaptionTextSpan(3)->StyleAttributes().textColor,
              CaptioningColor(1.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_EQ(line.GetCaptionTextSpan(4)->StyleAttributes(), TextSpanAttributes());
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("in.srt:3:17: unsupported tag <uu> dropped",
                            "in.srt:3:22: unsupported tag </uu> dropped",
                            "in.srt:3:53: unsupported tag <s> dropped",
                            "in.srt:3:61: unsupported tag </s> dropped"));
}

// Emphasis tags count: a nested one keeps its style open until the last
// close, and a close without an open changes nothing.
TEST(SrtReader, CountsNestedAndStrayEmphasisTags) {
    const ReadResult result = ReadSrt("1\n00:00:01,000 --> 00:00:02,000\n"
                                      "</b></B><b>x</b>a<i><I>y</i>z</I>b<U>w</u>c</i>\n");
    ASSERT_EQ(result.captions.size(), 1u);
    const auto& line = *result.captions[0]->GetCaptionTextParagraph(0);
    std::vector<std::string> spans;
    for (std::uint64_t s = 0; s < line.GetNumSpans(); ++s) {
        const TextSpanAttributes& style = line.GetCaptionTextSpan(s)->StyleAttributes();
        spans.push_back(std::string(style.IsBolded() ? "b" : "") +
                        (style.IsItalicized() ? "i" : "") + (style.IsUnderlined() ? "u" : "") +
                        ":" + zelcore::ToUTF8(line.GetCaptionTextSpan(s)->GetCaptionText()));
    }
    EXPECT_THAT(spans, ElementsAre("b:x", ":a", "i:yz", ":b", "u:w", ":c"));
    EXPECT_TRUE(result.warnings.empty());
}

TEST(SrtReader, KeepsWhatIsNotMarkupAsTextAndDecodesReferences) {
    const ReadResult result = ReadSrt(
        "1\n00:00:01,000 --> 00:00:02,000\na < b {x} & c &lt;i&gt; &#9834; &#x266A; &bogus;\n"
        "<not <i>a tag</i> <b>one</b> two three four five six -- seven<u>eight</u>>\n");
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]),
                ElementsAre("a < b {x} & c <i> \u266A \u266A &bogus;",
                            "<not a tag one two three four five six -- seveneight>"));
    const auto& second = *result.captions[0]->GetCaptionTextParagraph(1);
    ASSERT_EQ(second.GetNumSpans(), 7u) << "a '<' before the next '>' starts no tag";
    EXPECT_TRUE(second.GetCaptionTextSpan(1)->StyleAttributes().IsItalicized());
    EXPECT_TRUE(second.GetCaptionTextSpan(3)->StyleAttributes().IsBolded());
    EXPECT_TRUE(second.GetCaptionTextSpan(5)->StyleAttributes().IsUnderlined());
    EXPECT_EQ(zelcore::ToUTF8(second.GetCaptionTextSpan(5)->GetCaptionText()), "eight");
    EXPECT_TRUE(result.warnings.empty());
}

TEST(SrtReader, ReportsWhatItSkipsWithLineAndColumn) {
    const ReadResult result =
        ReadSrt("1\n00:00:01,000 --> 00:00:02,000\n<s>struck</s> {\\pos(1,2)}x\n\n"
                "garbage here\n\n"
                "2\n00:00:03,000 --> 00:61:04,000\nbad minutes\n\n"
                "3\n00:00:05,000 -> 00:00:06,000\nno arrow\n\n"
                "4\n00:00:07,000 --> 00:00:08,000\n<font color=\"#zz\" face=\"Arial\">ok</font>\n");
    ASSERT_TRUE(result.Succeeded());
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("in.srt:3:1: unsupported tag <s> dropped",
                            "in.srt:3:10: unsupported tag </s> dropped",
                            "in.srt:3:15: override block {\\pos(1,2)} dropped",
                            "in.srt:5:1: line skipped: expected a cue number or a timing line",
                            "in.srt:8:21: cue skipped: minutes of the end time must be 00 to 59",
                            "in.srt:11:1: line skipped: expected a cue number or a timing line",
                            "in.srt:12:1: line skipped: expected a cue number or a timing line",
                            "in.srt:13:1: line skipped: expected a cue number or a timing line",
                            "in.srt:17:1: unknown font colour \"#zz\" ignored",
                            "in.srt:17:1: font face ignored"));
    ASSERT_EQ(result.captions.size(), 2u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("struck x"));
    EXPECT_THAT(test::LinesOf(*result.captions[1]), ElementsAre("ok"));
}

TEST(SrtReader, RefusesInputWithoutCuesAndNeverCrashesOnBinary) {
    const ReadResult text = ReadSrt("just some\ntext\n");
    EXPECT_THAT(Messages(text.errors), ElementsAre(HasSubstr("in.srt:1:1: no SubRip cue found")));
    EXPECT_TRUE(ReadSrt("").Succeeded());
    EXPECT_TRUE(ReadSrt("").captions.empty());

    std::mt19937 random(12);
    for (int round = 0; round < 200; ++round) {
        std::string bytes(static_cast<std::size_t>(random() % 200), '\0');
        for (char& byte : bytes) {
            byte = "0123456789:,.-> \n\r<>/bi{}\\an&#;\xC3\xA9\xFF"[random() % 30];
        }
        const ReadResult result = ReadSrt(bytes);
        for (const CaptionPtr& caption : result.captions) {
            ASSERT_NE(caption, nullptr);
        }
    }
}

TEST(SrtRoundTrip, RandomCaptionsSurviveWriteThenRead) {
    test::CaptionCapabilities srt;
    srt.bold = srt.italic = srt.underline = true;
    srt.textColors = {CaptioningColor(1.0f, 1.0f, 0.0f, 1.0f),
                      CaptioningColor(0.2f, 0.4f, 0.6f, 1.0f)};
    srt.gridAnchors = srt.alignmentFollowsColumn = true;
    srt.maxLines = 3;
    srt.alphabet = U"abcXYZ019 .,-'!?&<>{}\\#;é♪中\U0001F600";
    std::mt19937 random(2024);
    const auto captions = test::RandomCaptions(random, 300, srt);
    const WriteResult written = SrtWriter().Write(captions, {"out.srt"});
    ASSERT_TRUE(written.Succeeded());
    EXPECT_THAT(Messages(written.warnings), ElementsAre());
    const ReadResult read = ReadSrt(written.bytes);
    EXPECT_THAT(Messages(read.warnings), ElementsAre());
    EXPECT_TRUE(test::SameCaptions(captions, read.captions));
}

TEST(SrtWriter, ReportsWhatSubRipCannotCarryOncePerKind) {
    std::mt19937 random(5);
    test::CaptionCapabilities rich;
    rich.freePositions = true;
    rich.maxLines = 1;
    auto captions = test::RandomCaptions(random, 3, rich);
    TextSpanAttributes sized;
    sized.SetFontSize(30.0f);
    sized.backgroundColor = kCaptioningColor_Black;
    captions[1]->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0)->SetTextSpanStyleAttributes(
        sized);
    const WriteResult written = SrtWriter().Write(captions, {"out.srt"});
    EXPECT_THAT(
        Messages(written.warnings),
        ElementsAre(HasSubstr("background colour dropped in 1 caption (first: caption 2 at"),
                    HasSubstr("font size dropped in 1 caption (first: caption 2"),
                    HasSubstr("free position dropped (written bottom centre) in 3 captions "
                              "(first: caption 1")));
    EXPECT_EQ(ReadSrt(written.bytes).captions.size(), 3u);
}

// Markup is escaped wherever it falls in a span: among its first bytes,
// further on, at its end; a '{' only before a backslash.
TEST(SrtWriter, EscapesMarkupWhereverItFalls) {
    const std::pair<std::string, std::string> cases[] = {
        {"plain text, twenty-two", "plain text, twenty-two"},
        {"a&b", "a&amp;b"},
        {"abcdefgh&ijklmno<pqrstuvw>x{\\y{z", "abcdefgh&amp;ijklmno&lt;pqrstuvw&gt;x&#123;\\y{z"},
        {"0123456789abcde>", "0123456789abcde&gt;"},
    };
    for (const auto& [text, escaped] : cases) {
        SCOPED_TRACE(text);
        CaptionPtr caption(new Caption);
        caption->SetBeginTime(zelmediatypes::TickTime::FromSeconds(1));
        caption->SetEndTime(zelmediatypes::TickTime::FromSeconds(2));
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(zelcore::ToUTF16(text), {}));
        caption->AppendCaptionTextParagraph(paragraph);
        const WriteResult written = SrtWriter().Write({caption}, {"out.srt"});
        EXPECT_EQ(written.bytes, "1\r\n00:00:01,000 --> 00:00:02,000\r\n" + escaped + "\r\n\r\n");
        EXPECT_THAT(test::LinesOf(*ReadSrt(written.bytes).captions.at(0)), ElementsAre(text));
    }
}

// Times are rounded to the millisecond, halves up, times before zero are
// written as zero, and hours take two digits or as many more as they need.
TEST(SrtWriter, WritesTimesOfAnyHours) {
    const auto ticks = [](std::int64_t milliseconds, std::int64_t rest = 0) {
        return zelmediatypes::TickTime(zelmediatypes::kTicksPerSecond / 1000 * milliseconds + rest);
    };
    const std::int64_t halfMillisecond = zelmediatypes::kTicksPerSecond / 2000;
    const std::int64_t hour = 3'600'000;
    const std::tuple<zelmediatypes::TickTime, zelmediatypes::TickTime, std::string> cases[] = {
        {ticks(0), ticks(7, halfMillisecond - 1), "00:00:00,000 --> 00:00:00,007"},
        {ticks(-2 * hour), ticks(0, halfMillisecond), "00:00:00,000 --> 00:00:00,001"},
        {ticks(9 * hour + 59 * 60'000 + 59'999), ticks(10 * hour, halfMillisecond),
         "09:59:59,999 --> 10:00:00,001"},
        {ticks(100 * hour - 1, halfMillisecond), ticks(1234 * hour + 5 * 60'000 + 6'078),
         "100:00:00,000 --> 1234:05:06,078"},
    };
    for (const auto& [begin, end, timing] : cases) {
        SCOPED_TRACE(timing);
        CaptionPtr caption(new Caption);
        caption->SetBeginTime(begin);
        caption->SetEndTime(end);
        CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(zelcore::ToUTF16("x"), {}));
        caption->AppendCaptionTextParagraph(paragraph);
        EXPECT_EQ(SrtWriter().Write({caption}, {"out.srt"}).bytes,
                  "1\r\n" + timing + "\r\nx\r\n\r\n");
    }
}

} // namespace
