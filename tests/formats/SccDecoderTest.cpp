// Our CEA-608 decoder on hand-made byte pairs, one feature at a time.
#include "captionformats/SccReader.h"
#include "captionformats/SccWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "FrameDurations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdio>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Words of one SCC line at 00:00:01:00 (frame 30).
ReadResult Decode(const std::string& words) {
    return SccReader().Read("Scenarist_SCC V1.0\n\n00:00:01:00\t" + words + "\n", {"t.scc"});
}

using format_test::Messages;

// RCL, PAC row 14 column 0 (94 d0), the words, EOC; then EDM four frames later.
std::string PopOn(const std::string& words) {
    return "9420 9420 94d0 94d0 " + words + " 942f 942f 8080 8080 942c 942c";
}

// The words that send `text` (basic characters) two at a time, with parity.
std::string TextWords(std::string_view text) {
    auto withParity = [](unsigned char byte) {
        return std::popcount(byte) % 2 == 0 ? byte | 0x80U : byte;
    };
    std::string words;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        char word[8];
        std::snprintf(
            word, sizeof word, "%02x%02x ", withParity(static_cast<unsigned char>(text[at])),
            at + 1 < text.size() ? withParity(static_cast<unsigned char>(text[at + 1])) : 0x80U);
        words += word;
    }
    return words;
}

TEST(Cea608Decoder, EditsTheLineWithBackspaceDeleteToEndAndTabOffsets) {
    // "Hello" BS BS "p!" -> "Help!"; then TO2 "x" -> two columns on; DER clears the rest.
    EXPECT_THAT(
        test::LinesOf(*Decode(PopOn("c8e5 ecec ef80 94a1 94a1 94a1 94a1 70a1")).captions.at(0)),
        ElementsAre("Help!"));
    const ReadResult tab = Decode(PopOn("c180 97a2 97a2 5880"));
    EXPECT_THAT(test::LinesOf(*tab.captions.at(0)), ElementsAre("A  X"));
    // "ABCD", PAC back to column 0, TO1, DER: only "A" stays.
    EXPECT_THAT(
        test::LinesOf(*Decode(PopOn("c1c2 43c4 94d0 94d0 97a1 97a1 94a4 94a4")).captions.at(0)),
        ElementsAre("A"));
}

// Text past column 31 stays in the row and takes the same edits as the rest.
TEST(Cea608Decoder, KeepsAndEditsTheTextOfARowThatRunsPastTheLastColumn) {
    const std::string full = "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345";
    // "67" past the end; BS takes the "7" back; "89" follows the "6".
    const ReadResult result =
        Decode(PopOn(TextWords(full + "67") + "94a1 94a1 " + TextWords("89")));
    EXPECT_THAT(test::LinesOf(*result.captions.at(0)), ElementsAre(full + "689"));
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("t.scc:3:113: a row runs past column 32; its text is kept whole"));
    // An extended character replaces the one before it, past the end too.
    EXPECT_THAT(test::LinesOf(*Decode(PopOn(TextWords(full + "a") + "9220 9220")).captions.at(0)),
                ElementsAre(full + "Á"));
    // DER from column 30 (PAC indent 28, TO2) cuts the row there, the text
    // past the end included; from column 0 it empties the row.
    EXPECT_THAT(
        test::LinesOf(*Decode(PopOn(TextWords(full + "678") + "945e 945e 97a2 97a2 94a4 94a4"))
                           .captions.at(0)),
        ElementsAre(full.substr(0, 30)));
    EXPECT_TRUE(Decode(PopOn(TextWords(full + "678") + "94d0 94d0 94a4 94a4")).captions.empty());
}

// Pop-on and paint-on share the cursor but not the memory, so the cursor can
// come back past the last column without erasing there: a cell written into a
// gap lands between its neighbours, and DER cuts the cells after it.
TEST(Cea608Decoder, EditsPastTheLastColumnBehindTheCursor) {
    const std::string full = "ABCDEFGHIJKLMNOPQRSTUVWXYZ012345";
    // RDC, PAC; the row, "a" at 32, TO1, "b" at 34; RCL and two BS move the
    // cursor back to 33 in the other memory; RDC again, "c" at 33; EDM.
    const ReadResult result =
        Decode("9429 9429 94d0 94d0 " + TextWords(full + "a") + "97a1 97a1 " + TextWords("b") +
               "9420 9420 94a1 94a1 94a1 94a1 9429 9429 " + TextWords("c") + "942c 942c");
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre(full + "acb"));
    // "678" at 32-34; RCL, two BS: the cursor at 33; RDC, DER.
    const ReadResult cut = Decode("9429 9429 94d0 94d0 " + TextWords(full + "678") +
                                  "9420 9420 94a1 94a1 94a1 94a1 9429 9429 94a4 94a4 942c 942c");
    ASSERT_EQ(cut.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*cut.captions[0]), ElementsAre(full + "6"));
}

TEST(Cea608Decoder, IgnoresOnlyTheImmediateRepeatOfAControlCode) {
    // A special character sent twice is one character; four times, two.
    EXPECT_THAT(test::LinesOf(*Decode(PopOn("9137 9137")).captions.at(0)), ElementsAre("♪"));
    EXPECT_THAT(test::LinesOf(*Decode(PopOn("9137 9137 9137 9137")).captions.at(0)),
                ElementsAre("♪♪"));
    // Padding between two copies makes the second a new code.
    EXPECT_THAT(test::LinesOf(*Decode(PopOn("9137 8080 9137")).captions.at(0)), ElementsAre("♪♪"));
}

TEST(Cea608Decoder, StylesWithPreamblesMidRowCodesAndBackgrounds) {
    // PAC row 15 red underline (14 e9), "Ab", mid-row italics (91 ae), "c",
    // background blue semi-transparent (10 25), "d", mid-row white (91 20), "e".
    const ReadResult result = Decode("9420 9420 94c9 94c9 c162 91ae 91ae e380 1025 1025 6480 9120 "
                                     "9120 e580 942f 942f 8080 942c 942c");
    ASSERT_EQ(result.captions.size(), 1u);
    const CaptionTextParagraph& line = *result.captions[0]->GetCaptionTextParagraph(0);
    EXPECT_EQ(zelcore::ToUTF8(line.GetText()), "Ab cd e");
    ASSERT_EQ(line.GetNumSpans(), 4u);
    const TextSpanAttributes red = line.GetCaptionTextSpan(0)->StyleAttributes();
    EXPECT_EQ(red.textColor, CaptioningColor(1, 0, 0, 1));
    EXPECT_TRUE(red.IsUnderlined());
    const TextSpanAttributes italic = line.GetCaptionTextSpan(1)->StyleAttributes();
    EXPECT_TRUE(italic.IsItalicized() && !italic.IsUnderlined());
    EXPECT_EQ(italic.textColor, CaptioningColor(1, 0, 0, 1)) << "italics keep the colour";
    EXPECT_EQ(line.GetCaptionTextSpan(2)->StyleAttributes().backgroundColor,
              CaptioningColor(0, 0, 1, 0.5f));
    const TextSpanAttributes white = line.GetCaptionTextSpan(3)->StyleAttributes();
    EXPECT_EQ(white.textColor, kCaptioningColor_White);
    EXPECT_FALSE(white.IsItalicized()) << "a colour code turns italics off";
}

TEST(Cea608Decoder, PlacesLinesByPreambleRowsAndIndents) {
    // Row 1 indent 4 (91 52), row 11 column 0 (10 40), row 15 indent 28 (94 fe).
    const ReadResult result = Decode(PopOn("9152 9152 c180 1040 1040 c280 94fe 94fe 4380"));
    ASSERT_EQ(result.captions.size(), 1u);
    std::vector<Position> positions;
    for (std::uint64_t p = 0; p < result.captions[0]->GetNumParagraphs(); ++p) {
        positions.push_back(result.captions[0]->GetCaptionTextParagraph(p)->GetCaptionPosition());
    }
    EXPECT_THAT(positions, ElementsAre(Position(Rational(4, 32), Rational(0)),
                                       Position(Rational(0), Rational(10, 15)),
                                       Position(Rational(28, 32), Rational(14, 15))));
}

TEST(Cea608Decoder, TimesPopOnCaptionsFromEndOfCaptionToErase) {
    const ReadResult result = Decode(PopOn("c8e9"));
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_EQ(result.captions[0]->GetBeginTime(), formats_test::kNtscFrame * (30 + 5));
    EXPECT_EQ(result.captions[0]->GetEndTime(), formats_test::kNtscFrame * (30 + 9));
    EXPECT_EQ(result.captions[0]->GetCaptionType(), kCaptionType_PopOn);
}

TEST(Cea608Decoder, RollsUpWithinItsDepthAndMovesTheWindowWithTheBaseRow) {
    // RU2, CR, PAC row 15 (94 70), "A"; CR, "B"; CR, "C": three captions, two lines deep.
    const ReadResult result =
        Decode("9425 9425 94ad 94ad 9470 9470 c180 94ad 94ad 9470 9470 c280 94ad 94ad "
               "9470 9470 4380 942c 942c");
    ASSERT_EQ(result.captions.size(), 3u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("A"));
    EXPECT_THAT(test::LinesOf(*result.captions[1]), ElementsAre("A", "B"));
    EXPECT_THAT(test::LinesOf(*result.captions[2]), ElementsAre("B", "C"));
    EXPECT_EQ(result.captions[2]->GetCaptionType(), kCaptionType_RollUp2);
    EXPECT_EQ(result.captions[2]->GetCaptionTextParagraph(1)->GetCaptionPosition().GetY(),
              Rational(14, 15));
    // A PAC to row 6 (15 70) moves both lines up with the base row; its
    // column 0 puts "C" over "B".
    const ReadResult moved =
        Decode("9425 9425 94ad 94ad 9470 9470 c180 94ad 94ad 9470 9470 c280 1570 1570 "
               "4380 942c 942c");
    ASSERT_EQ(moved.captions.size(), 2u);
    EXPECT_THAT(test::LinesOf(*moved.captions[1]), ElementsAre("A", "C"));
    EXPECT_EQ(moved.captions[1]->GetCaptionTextParagraph(0)->GetCaptionPosition().GetY(),
              Rational(4, 15));
    EXPECT_EQ(moved.captions[1]->GetCaptionTextParagraph(1)->GetCaptionPosition().GetY(),
              Rational(5, 15));
}

TEST(Cea608Decoder, PaintsOnDirectlyAndSkipsTextModeFlashAndChannelTwo) {
    // RDC, PAC, "Hi": shown at once; TR and RTD switch to text mode, whose
    // characters are no captions; FON is reported; a channel 2 RCL and its text are skipped.
    const ReadResult result =
        Decode("9429 9429 94d0 94d0 c8e9 94a8 94a8 942a 942a 5880 1c20 1c20 d980 942c 942c");
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("Hi"));
    EXPECT_EQ(result.captions[0]->GetCaptionType(), kCaptionType_PaintOn);
    EXPECT_EQ(result.captions[0]->GetBeginTime(), formats_test::kNtscFrame * (30 + 2));
    EXPECT_THAT(Messages(result.warnings), ElementsAre("t.scc:3:38: flashing text shown steady",
                                                       "t.scc:3:48: text mode data skipped",
                                                       "t.scc:3:63: data channel 2 (CC2) skipped"));
}

TEST(Cea608Decoder, ReportsBadWordsAndTimeCodesWithTheirPlace) {
    const ReadResult result = SccReader().Read("Scenarist_SCC V1.0\n\n00:00:01:00\t9420 94zz 20\n"
                                               "00:01:00;01\t9420\n00:00:61:00\t9420\nnonsense\n",
                                               {"t.scc"});
    EXPECT_TRUE(result.Succeeded());
    EXPECT_THAT(
        Messages(result.warnings),
        ElementsAre(
            "t.scc:3:18: word \"94zz\" skipped: not four hex digits",
            "t.scc:3:23: word \"20\" skipped: not four hex digits",
            "t.scc:4:1: line skipped: \"00:01:00;01\" is no time code (HH:MM:SS:FF or HH:MM:SS;FF)",
            "t.scc:5:1: line skipped: \"00:00:61:00\" is no time code (HH:MM:SS:FF or HH:MM:SS;FF)",
            "t.scc:6:1: line skipped: \"nonsense\" is no time code (HH:MM:SS:FF or HH:MM:SS;FF)"));
    EXPECT_THAT(Messages(SccReader().Read("WEBVTT\n", {"t.scc"}).errors),
                ElementsAre(HasSubstr("t.scc:1:1: not an SCC file")));
}

// A word is skipped whichever of its four digits is not hex, and takes its
// frame; upper and lower case digits read alike, so a doubled code may mix them.
TEST(Cea608Decoder, SkipsWordsWithABadDigitInAnyPlace) {
    const ReadResult result = Decode("9420 94AE g420 9g20 94g0 942g 94D0 94d0 C1c1 942F 942f");
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("t.scc:3:23: word \"g420\" skipped: not four hex digits",
                            "t.scc:3:28: word \"9g20\" skipped: not four hex digits",
                            "t.scc:3:33: word \"94g0\" skipped: not four hex digits",
                            "t.scc:3:38: word \"942g\" skipped: not four hex digits",
                            "t.scc: the last caption is still shown at the end of the file; "
                            "it ends with the file's last word"));
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("AA"));
    EXPECT_EQ(result.captions[0]->GetBeginTime(), formats_test::kNtscFrame * 39);
}

// A word of valid UTF-8 that is not ASCII is quoted as written, however long.
TEST(Cea608Decoder, QuotesAWordOfValidUtf8AsWritten) {
    const ReadResult result = SccReader().Read(
        "Scenarist_SCC V1.0\n\n00:00:01:00\t9420 d\xC3\xA9j\xC3\xA0-vu-tr\xC3\xA8s-long 942f\n",
        {"t.scc"});
    ASSERT_TRUE(result.Succeeded());
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("t.scc:3:18: word \"d\u00E9j\u00E0-vu-tr\u00E8s-long\" skipped: not "
                            "four hex digits"));
}

// Bytes that are not UTF-8 and NUL are read as U+FFFD wherever they fall, and
// columns count the text so read; a byte order mark is dropped at the start of
// the file only; lines end at CR LF, a lone CR or a lone LF.
TEST(Cea608Decoder, LocatesWordsInTextThatIsNotAscii) {
    const ReadResult result =
        SccReader().Read(std::string("\xEF\xBB\xBFScenarist_SCC V1.0\r\n\r\n00:00:01:00\t9420 \xFF"
                                     "420 c1c1 \xC3\xA9zz 942f 942f\r00:00:0\0:00\t9420\n\n"
                                     "00:00:03:00\t942c \xEF\xBB\xBF"
                                     "1 \xC3 942c\r\n",
                                     115),
                         {"t.scc"});
    ASSERT_TRUE(result.Succeeded());
    EXPECT_THAT(
        Messages(result.warnings),
        ElementsAre("t.scc:3:18: word \"\uFFFD420\" skipped: not four hex digits",
                    "t.scc:3:30: word \"\u00E9zz\" skipped: not four hex digits",
                    "t.scc:4:1: line skipped: \"00:00:0\uFFFD:00\" is no time code (HH:MM:SS:FF "
                    "or HH:MM:SS;FF)",
                    "t.scc:6:18: word \"\uFEFF1\" skipped: not four hex digits",
                    "t.scc:6:23: word \"\uFFFD\" skipped: not four hex digits"));
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("AA"));
    EXPECT_EQ(result.captions[0]->GetEndTime(), formats_test::kNtscFrame * 90);
}

// Words may be apart by any run of spaces and tabs, and the time code by a
// space; a word of five hex digits is no word, but takes its frame.
TEST(Cea608Decoder, ReadsWordsAcrossAnySpacing) {
    const ReadResult result =
        SccReader().Read("Scenarist_SCC V1.0\n\n00:00:01:00\t9420  9420\t\t94d0 94200 c1c1 942f "
                         "942f \n00:00:02:00 942c\n",
                         {"t.scc"});
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("t.scc:3:30: word \"94200\" skipped: not four hex digits"));
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("AA"));
    EXPECT_EQ(result.captions[0]->GetBeginTime(), formats_test::kNtscFrame * 35);
    EXPECT_EQ(result.captions[0]->GetEndTime(), formats_test::kNtscFrame * 60);
}

// A long line reaches the decoder in several runs of words: a doubled code
// split between two runs is still one code, and the words of later runs are
// located by their own columns (word i of the line starts at column 13 + 5i).
TEST(Cea608Decoder, ReadsLongLinesAcrossRunsOfWords) {
    std::vector<std::string> words(150, "8080");
    words[0] = words[1] = "9420";
    words[2] = words[3] = "94d0";
    words[4] = "c1c1";
    for (const std::size_t at :
         {std::size_t{63}, std::size_t{64}, std::size_t{127}, std::size_t{128}}) {
        words[at] = "942f"; // EOC twice, each sent twice
    }
    words[70] = "4141";  // even parity
    words[140] = "zzzz"; // no word
    std::string line = "00:00:01:00\t";
    for (const std::string& word : words) {
        line += word + " ";
    }
    const ReadResult result =
        SccReader().Read("Scenarist_SCC V1.0\n\n" + line + "\n00:00:09:00\t942c 942c\n", {"t.scc"});
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("t.scc:3:363: parity errors: the bytes are decoded without their "
                            "parity bit",
                            "t.scc:3:713: word \"zzzz\" skipped: not four hex digits"));
    // "AA" shown at word 63; the second EOC shows the "AA" of word 70 in its
    // place (row 14 kept the cursor) until the erase.
    ASSERT_EQ(result.captions.size(), 2u);
    EXPECT_THAT(test::LinesOf(*result.captions[0]), ElementsAre("AA"));
    EXPECT_EQ(result.captions[0]->GetBeginTime(), formats_test::kNtscFrame * (30 + 63));
    EXPECT_EQ(result.captions[0]->GetEndTime(), formats_test::kNtscFrame * (30 + 127));
    EXPECT_THAT(test::LinesOf(*result.captions[1]), ElementsAre("AA"));
    EXPECT_EQ(result.captions[1]->GetBeginTime(), formats_test::kNtscFrame * (30 + 127));
    EXPECT_EQ(result.captions[1]->GetEndTime(), formats_test::kNtscFrame * 270);
}

// A time code is four two-digit fields; drop-frame labels skip frames 0 and
// 1 of each minute but every tenth (00:10:00;02 is frame 17,984).
TEST(Cea608Decoder, ReadsTimeCodesOfTwoDigitFieldsOnly) {
    const ReadResult result = SccReader().Read(
        "Scenarist_SCC V1.0\n\n0a:00:01:00\t9420\n00:00:01:3x\t9420\n00:00:01:30\t9420\n"
        "00:10:00;02\t9420 9420 c1c1 942f 942f\n00:10:01;00\t942c 942c\n",
        {"t.scc"});
    const std::string noTimeCode = "\" is no time code (HH:MM:SS:FF or HH:MM:SS;FF)";
    EXPECT_THAT(Messages(result.warnings),
                ElementsAre("t.scc:3:1: line skipped: \"0a:00:01:00" + noTimeCode,
                            "t.scc:4:1: line skipped: \"00:00:01:3x" + noTimeCode,
                            "t.scc:5:1: line skipped: \"00:00:01:30" + noTimeCode));
    ASSERT_EQ(result.captions.size(), 1u);
    EXPECT_EQ(result.captions[0]->GetBeginTime(), formats_test::kNtscFrame * 17987);
    EXPECT_EQ(result.captions[0]->GetEndTime(), formats_test::kNtscFrame * 18012);
}

TEST(SccWriter, WritesAPaintOnCaptionFromItsBeginFrame) {
    const ReadResult painted = Decode("9429 9429 94d0 94d0 c8e9 942c 942c");
    ASSERT_EQ(painted.captions.size(), 1u);
    const WriteResult written = SccWriter().Write(painted.captions, {"out.scc", false});
    const ReadResult read = SccReader().Read(written.bytes, {});
    ASSERT_EQ(read.captions.size(), 1u);
    EXPECT_EQ(read.captions[0]->GetCaptionType(), kCaptionType_PaintOn);
    EXPECT_EQ(read.captions[0]->GetBeginTime(), painted.captions[0]->GetBeginTime());
    EXPECT_EQ(read.captions[0]->GetEndTime(), painted.captions[0]->GetEndTime());
    EXPECT_THAT(test::LinesOf(*read.captions[0]), ElementsAre("Hi"));
}

} // namespace
