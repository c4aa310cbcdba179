#include "captionformats/EbuStlReader.h"
#include "captionformats/EbuStlWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "FrameDurations.h"
#include "RandomCaptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>

#include <random>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

ReadResult ReadSample(const char* relative) {
    const auto file = test::SamplesDir() / "ebu-stl" / relative;
    return EbuStlReader().Read(test::ReadBytes(file), {file.filename().string()});
}

using format_test::Messages;

std::string Text(const Caption& caption) {
    return zelcore::ToUTF8(caption.GetPlainText());
}

TEST(EbuStlReader, DecodesTheAstisubSampleToItsItems) {
    SKIP_WITHOUT_SAMPLES();
    const auto expected = test::ReadExpected(test::SamplesDir() / "ebu-stl/astisub-example");
    const ReadResult result = ReadSample("astisub-example/example-in.stl");
    ASSERT_TRUE(result.Succeeded());
    EXPECT_EQ(result.streamFormat, kStreamFormat_Teletext);
    ASSERT_EQ(result.captions.size(), expected.get<std::size_t>("item_count"));
    std::size_t index = 0;
    for (const auto& [unused, item] : expected.get_child("items")) {
        const Caption& caption = *result.captions[index++];
        EXPECT_EQ(caption.GetCaptionType(), kCaptionType_Subtitle);
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
    // Vertical position 20, one row per line (no double height), left justified.
    const Caption& second = *result.captions[1];
    EXPECT_EQ(second.GetCaptionTextParagraph(0)->GetCaptionPosition(),
              Position(Rational(0), Rational(19, 23)));
    EXPECT_EQ(second.GetCaptionTextParagraph(1)->GetCaptionPosition(),
              Position(Rational(0), Rational(20, 23)));
}

TEST(EbuStlReader, DecodesTheTtconvAndIrtSamples) {
    SKIP_WITHOUT_SAMPLES();
    EXPECT_EQ(Text(*ReadSample("ttconv-irt-text-field/requirement-0071-002.stl").captions.at(0)),
              "Test1 Test2");
    const ReadResult extension = ReadSample("ttconv-extension-blocks/multi_tti_subtitle.stl");
    ASSERT_EQ(extension.captions.size(), 1u);
    EXPECT_EQ(Text(*extension.captions[0]), "Foo Bar Baz");
    const auto attributes =
        extension.captions[0]->GetCaptionTextParagraph(0)->GetCaptionTextSpan(0)->StyleAttributes();
    EXPECT_EQ(attributes.textColor, CaptioningColor(0, 0, 1, 1)) << "04h: blue text";
    EXPECT_EQ(attributes.backgroundColor, CaptioningColor(1, 1, 0, 1))
        << "03h 1Dh: yellow background";

    const ReadResult red = ReadSample("ttconv-irt-alpha-red/requirement-0076-003.stl");
    const CaptionTextParagraph& line = *red.captions.at(0)->GetCaptionTextParagraph(0);
    ASSERT_EQ(line.GetNumSpans(), 2u);
    EXPECT_EQ(line.GetCaptionTextSpan(0)->StyleAttributes().textColor, kCaptioningColor_White);
    EXPECT_EQ(line.GetCaptionTextSpan(1)->StyleAttributes().textColor, CaptioningColor(1, 0, 0, 1));
    EXPECT_EQ(zelcore::ToUTF8(line.GetCaptionTextSpan(1)->GetCaptionText()), "RedOnBlack");

    const ReadResult groups =
        ReadSample("ttconv-irt-subtitle-groups/requirement-0056-001_modified.stl");
    std::vector<std::string> texts;
    for (const CaptionPtr& caption : groups.captions) {
        texts.push_back(Text(*caption));
    }
    EXPECT_THAT(texts, ElementsAre("Subtitle 1 Group 1", "Subtitle 2 Group 1", "Subtitle 3 Group 2",
                                   "Subtitle 4 Group 3"));
    const ReadResult cumulative = ReadSample("ttconv-cumulative/cumulative_set.stl");
    ASSERT_EQ(cumulative.captions.size(), 5u);
    EXPECT_EQ(cumulative.captions[1]->GetEndTime(), cumulative.captions[2]->GetEndTime())
        << "the subtitles of a cumulative set stay up together";
}

TEST(EbuStlReader, ReportsStartOfProgrammeAndOverlapsWithoutMovingTimes) {
    SKIP_WITHOUT_SAMPLES();
    const ReadResult offset =
        ReadSample("astisub-start-of-programme/example-in-nonzero-offset.stl");
    EXPECT_EQ(test::MillisecondsOf(offset.captions.at(0)->GetBeginTime()), 99000);
    EXPECT_THAT(
        Messages(offset.warnings),
        ElementsAre(
            "example-in-nonzero-offset.stl: byte 256: start of programme is 10000000; times "
            "are kept as written"));
    const ReadResult overlapping = ReadSample("ttconv-overlapping/overlapping_tti.stl");
    ASSERT_EQ(overlapping.captions.size(), 2u);
    EXPECT_EQ(overlapping.captions[1]->GetBeginTime(), formats_test::kPalFrame * 75);
    EXPECT_THAT(
        Messages(overlapping.warnings),
        ::testing::Contains(
            "overlapping_tti.stl: byte 1157: subtitle overlaps the one before; kept as written"));
}

TEST(EbuStlReader, DecodesTheLongGermanProgrammeWithIso6937Diacritics) {
    SKIP_WITHOUT_SAMPLES();
    const ReadResult result = ReadSample("pycaption-pr-long-german/test.stl");
    ASSERT_TRUE(result.Succeeded());
    ASSERT_EQ(result.captions.size(), 494u);
    EXPECT_THAT(test::LinesOf(*result.captions[2]),
                ElementsAre("Drei, Vier... -Hahaha...", "Vier, fünf... -Hahaha..."));
    for (const CaptionPtr& caption : result.captions) {
        EXPECT_EQ(Text(*caption).find("\xEF\xBF\xBD"), std::string::npos) << *caption;
    }
}

TEST(EbuStlReader, RefusesWhatIsNoStlFileAtItsByteOffset) {
    EXPECT_THAT(
        Messages(EbuStlReader().Read("850STL25.01", {"a.stl"}).errors),
        ElementsAre("a.stl: byte 0: not an EBU STL file: shorter than the 1024-byte GSI block"));
    std::string gsi(1024, ' ');
    gsi.replace(0, 11, "850STL24.01");
    EXPECT_THAT(
        Messages(EbuStlReader().Read(gsi, {"a.stl"}).errors),
        ElementsAre("a.stl: byte 3: not an EBU STL file: disk format code \"STL24.01\" is neither "
                    "STL25.01 nor STL30.01"));
    gsi.replace(3, 8, "STL25.01");
    gsi.replace(12, 2, "00");
    std::string block(128, '\x8F');
    block.replace(
        0, 16,
        std::string("\0\1\0\xFF\0\0\0\x3C\0\0\0\2\0\x14\2\0", 16)); // 60 seconds in: out of range
    const ReadResult result = EbuStlReader().Read(gsi + block + "partial", {"a.stl"});
    EXPECT_TRUE(result.Succeeded());
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("a.stl: byte 1029: subtitle skipped: time code out of range",
                            "a.stl: byte 1152: incomplete TTI block at the end ignored"));
}

// Teletext subtitles as our reader gives them: lines on 23 rows, one or two
// apart, justified, with teletext colours changing after a space.
std::vector<CaptionPtr> RandomSubtitles(std::mt19937& random, int count) {
    auto draw = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const CaptioningColor colors[] = {
        {1, 1, 1, 1}, {1, 0, 0, 1}, {0, 1, 0, 1}, {1, 1, 0, 1}, {0, 1, 1, 1}};
    const std::u16string alphabet = u"abcXYZ019.,-'!?äöüßéÆøŁ♪¿«»½";
    std::vector<CaptionPtr> captions;
    int frame = draw(0, 100);
    for (int c = 0; c < count; ++c) {
        CaptionPtr caption(new Caption);
        caption->SetCaptionType(kCaptionType_Subtitle);
        frame += draw(0, 200);
        caption->SetBeginTime(formats_test::kPalFrame * frame);
        frame += draw(1, 100);
        caption->SetEndTime(formats_test::kPalFrame * frame);
        const int lines = draw(1, 3);
        const int step = lines == 1 ? 2 : draw(1, 2);
        int row = draw(1, 23 - step * (lines - 1));
        const auto alignment = static_cast<TextAlignmentType>(draw(0, 2));
        for (int l = 0; l < lines; ++l, row += step) {
            CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
            TextSpanAttributes attributes;
            std::u16string text;
            const int length = draw(1, 30);
            for (int i = 0; i < length; ++i) {
                text += alphabet[static_cast<std::size_t>(
                    draw(0, static_cast<int>(alphabet.size()) - 1))];
                if (i + 1 < length && draw(0, 5) == 0) {
                    TextSpanAttributes next = attributes;
                    next.SetItalicized(draw(0, 1) == 1);
                    next.SetUnderlined(draw(0, 1) == 1);
                    if (draw(0, 1) == 0) {
                        next.textColor = colors[draw(0, 4)];
                        text += u' '; // the colour code's cell
                    }
                    if (next != attributes) {
                        paragraph->AppendCaptionTextSpan(new CaptionTextSpan(
                            zelcore::UTF16String(text.begin(), text.end()), attributes));
                        text.clear();
                        attributes = next;
                    }
                }
            }
            paragraph->AppendCaptionTextSpan(
                new CaptionTextSpan(zelcore::UTF16String(text.begin(), text.end()), attributes));
            ParagraphStyleAttributes style;
            style.SetAnchorID(kAnchorID_Free);
            style.SetTextAlignment(alignment);
            paragraph->SetParagraphStyleAttributes(style);
            const int width = static_cast<int>(paragraph->GetParagraphTextLength());
            const int column = alignment == kTextAlignment_Left     ? 0
                               : alignment == kTextAlignment_Center ? (40 - width) / 2
                                                                    : 40 - width;
            paragraph->SetCaptionPosition(Position(Rational(column, 40), Rational(row - 1, 23)));
            caption->AppendCaptionTextParagraph(paragraph);
        }
        captions.push_back(caption);
    }
    return captions;
}

TEST(EbuStlRoundTrip, RandomSubtitlesSurviveWriteThenRead) {
    std::mt19937 random(3264);
    const auto captions = RandomSubtitles(random, 300);
    const WriteResult written = EbuStlWriter().Write(captions, {"out.stl"});
    ASSERT_TRUE(written.Succeeded());
    EXPECT_THAT(Messages(written.warnings), ElementsAre());
    const ReadResult read = EbuStlReader().Read(written.bytes, {"out.stl"});
    ASSERT_TRUE(read.Succeeded());
    EXPECT_THAT(Messages(read.warnings), ElementsAre());
    EXPECT_TRUE(test::SameCaptions(captions, read.captions));
    EXPECT_EQ(EbuStlWriter().Write(read.captions, {}).bytes, written.bytes);
}

TEST(EbuStlWriter, WritesThirtyFramesPerSecondAndRefusesOtherRates) {
    std::mt19937 random(30);
    const auto captions = RandomSubtitles(random, 20);
    WriteOptions thirty;
    thirty.framesPerSecond = 30;
    const WriteResult written = EbuStlWriter().Write(captions, thirty);
    EXPECT_EQ(written.bytes.substr(3, 8), "STL30.01");
    const ReadResult read = EbuStlReader().Read(written.bytes, {});
    ASSERT_EQ(read.captions.size(), captions.size());
    for (std::size_t i = 0; i < captions.size(); ++i) {
        // 25 fps frames fall on 30 fps frames only at whole fifths of a second.
        const auto thirtieth = zelmediatypes::TickTime(zelmediatypes::kTicksPerSecond / 30);
        EXPECT_EQ(read.captions[i]->GetBeginTime(),
                  captions[i]->GetBeginTime().AlignToFrame(thirtieth));
    }
    WriteOptions twentyFour;
    twentyFour.framesPerSecond = 24;
    EXPECT_THAT(Messages(EbuStlWriter().Write(captions, twentyFour).errors),
                ElementsAre("<input>: EBU STL runs at 25 or 30 frames per second, not 24"));
}

TEST(EbuStlWriter, SplitsLongTextIntoExtensionBlocksAndReportsLosses) {
    CaptionPtr caption(new Caption);
    caption->SetBeginTime(formats_test::kPalFrame * 10 + zelmediatypes::TickTime(1));
    caption->SetEndTime(formats_test::kPalFrame * 50);
    CaptionTextParagraphPtr line(new CaptionTextParagraph);
    TextSpanAttributes bold;
    bold.SetBolded(true);
    line->AppendCaptionTextSpan(
        new CaptionTextSpan(zelcore::ToUTF16(std::string(150, 'x') + "€"), bold));
    caption->AppendCaptionTextParagraph(line);
    const WriteResult written = EbuStlWriter().Write({caption}, {"out.stl"});
    EXPECT_EQ(written.bytes.size(), 1024u + 2 * 128u);
    EXPECT_EQ(static_cast<unsigned char>(written.bytes[1024 + 3]), 0x00u)
        << "first extension block";
    EXPECT_EQ(static_cast<unsigned char>(written.bytes[1024 + 128 + 3]), 0xFFu) << "last block";
    EXPECT_THAT(Messages(written.warnings),
                ElementsAre(HasSubstr("bold dropped in 1 caption"),
                            HasSubstr("characters outside ISO 6937 written as '?'"),
                            HasSubstr("times rounded down to frames")));
    const ReadResult read = EbuStlReader().Read(written.bytes, {});
    ASSERT_EQ(read.captions.size(), 1u);
    EXPECT_EQ(Text(*read.captions[0]), std::string(150, 'x') + "?");
    EXPECT_EQ(read.captions[0]->GetBeginTime(), formats_test::kPalFrame * 10);
}

} // namespace
