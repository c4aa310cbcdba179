// A direct conversion must be indistinguishable from reading into captions
// and writing them: the same bytes, the same warnings and errors, the same
// caption count. Each case runs both paths on the same input. SubRip to
// WebVTT has its cases of its own beside these.
#include "captionformats/DirectConversion.h"
#include "captionformats/SccWriter.h"
#include "captionformats/SrtWriter.h"

#include "FormatSamples.h"
#include "ModelPathCheck.h"
#include "RandomCaptions.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using format_test::SameAsModelPath;

// A byte with odd parity, as CEA-608 sends it.
int WithParity(int byte) {
    int ones = 0;
    for (int bit = 0; bit < 7; ++bit) {
        ones += (byte >> bit) & 1;
    }
    return ones % 2 == 0 ? byte | 0x80 : byte;
}

// An SCC file of random CEA-608 traffic: text, preambles, mid-row codes,
// special and extended characters, every display command (pop-on, roll-up,
// paint-on, text mode, erasures, backspace), doubled controls, channel 2 and
// field 2 codes, parity errors, bad words and bad time codes. Time codes
// mostly move forwards.
std::string RandomScc(std::mt19937& random, int lines) {
    static const std::vector<int> controls = {
        0x1420, 0x142F, 0x142C, 0x142E, 0x1425, 0x1426, 0x1427, 0x1429, 0x142D,
        0x1421, 0x1424, 0x142A, 0x142B, 0x1428, 0x1721, 0x1722, 0x1723, 0x1140,
        0x1160, 0x1240, 0x1250, 0x1340, 0x1460, 0x1470, 0x1650, 0x1070, 0x1120,
        0x1121, 0x112E, 0x1124, 0x1137, 0x1130, 0x1220, 0x1232, 0x1320, 0x133F,
        0x1020, 0x102F, 0x1C20, 0x1C2F, 0x1520, 0x152F, 0x1D20, 0x1127, 0x1000};
    std::uniform_int_distribution<int> percent(0, 99);
    std::string file = percent(random) < 90 ? "Scenarist_SCC V1.0\n\n" : "";
    std::int64_t frame = 30;
    for (int line = 0; line < lines; ++line) {
        frame += percent(random) < 5 ? -40 : std::uniform_int_distribution<int>(0, 90)(random);
        frame = std::max<std::int64_t>(frame, 0);
        char timecode[32];
        std::snprintf(timecode, sizeof timecode, "%02d:%02d:%02d%c%02d",
                      static_cast<int>(frame / 108000), static_cast<int>(frame / 1800 % 60),
                      static_cast<int>(frame / 30 % 60), percent(random) < 50 ? ';' : ':',
                      static_cast<int>(frame % 30));
        file += percent(random) < 2 ? std::string("1:2:3") : std::string(timecode);
        const int words = std::uniform_int_distribution<int>(1, 24)(random);
        for (int word = 0; word < words; ++word) {
            int pair = 0;
            const int kind = percent(random);
            if (kind < 45) {
                pair = std::uniform_int_distribution<int>(0x20, 0x7F)(random) << 8 |
                       std::uniform_int_distribution<int>(0x20, 0x7F)(random);
            } else if (kind < 95) {
                pair = controls[std::uniform_int_distribution<std::size_t>(0, controls.size() -
                                                                                  1)(random)];
            }
            char hex[8];
            std::snprintf(hex, sizeof hex, "%02x%02x", WithParity(pair >> 8),
                          percent(random) < 2 ? pair & 0xFF : WithParity(pair & 0xFF));
            const std::string text = kind >= 98 ? "zz9" : hex;
            file += (word == 0 ? "\t" : " ") + text;
            if (kind >= 45 && kind < 95 && percent(random) < 60) {
                file += " " + text; // controls are usually sent twice
            }
        }
        file += "\n\n";
    }
    return file;
}

TEST(DirectConversion, SccToSrtMatchesTheModelPathOnEverySample) {
    SKIP_WITHOUT_SAMPLES();
    int files = 0;
    for (const auto& folder : test::CaseFolders(test::SamplesDir() / "scc")) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() == ".scc") {
                SCOPED_TRACE(entry.path().string());
                EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kScc, CaptionFileFormat::kSrt,
                                            test::ReadBytes(entry.path())));
                ++files;
            }
        }
    }
    EXPECT_GE(files, 10);
}

// Files with time codes that run backwards may leave the direct path; all
// others must take it and match.
TEST(DirectConversion, SccToSrtMatchesTheModelPathOnRandomTraffic) {
    std::mt19937 random(608);
    int direct = 0;
    for (int file = 0; file < 300; ++file) {
        const std::string bytes = RandomScc(random, 1 + file % 30);
        SCOPED_TRACE("random file " + std::to_string(file) + ":\n" + bytes);
        if (ConvertDirectly(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, bytes, {"in"},
                            {"out"})) {
            ASSERT_TRUE(SameAsModelPath(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, bytes));
            ++direct;
        }
    }
    EXPECT_GT(direct, 150);
}

TEST(DirectConversion, SccToSrtMatchesTheModelPathOnWrittenFiles) {
    test::CaptionCapabilities scc;
    scc.type = kCaptionType_PopOn;
    scc.italic = scc.underline = true;
    scc.textColors = {CaptioningColor(1.0f, 1.0f, 0.0f, 1.0f)};
    scc.gridAnchors = true;
    scc.alphabet = U"abcXYZ019 .,-'!?éñ♪";
    scc.timeStepTicks = zelmediatypes::kTicksPerSecond;
    std::mt19937 random(21);
    const auto captions = test::RandomCaptions(random, 200, scc);
    const std::string bytes = SccWriter().Write(captions, {"in.scc"}).bytes;
    EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, bytes));
    EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, "not scc\n"));
}

// The words that send `text` as basic characters, two a word, the last
// padded.
std::string BasicWords(std::string_view text) {
    std::string words;
    for (std::size_t at = 0; at < text.size(); at += 2) {
        char word[8];
        std::snprintf(word, sizeof word, "%02x%02x ", WithParity(text[at]),
                      at + 1 < text.size() ? WithParity(text[at + 1]) : 0x80);
        words += word;
    }
    return words;
}

// Screens of plain cells are written straight from the cells, all others
// through spans: both must match the model path, and so must a file that
// mixes them. Each caption is one pop-on screen.
TEST(DirectConversion, SccToSrtMatchesTheModelPathOnPlainAndOtherScreens) {
    const std::string row13 = "1370 1370 ";
    const std::string row14 = "94d0 94d0 ";
    const std::vector<std::string> screens = {
        // plain, a gap of two columns (TO2), a second row
        row13 + BasicWords("Plain text") + "97a2 97a2 " + BasicWords("after a gap") + row14 +
            BasicWords("and below"),
        // runs of italics, italics and underline, underline, none
        row14 + BasicWords("a ") + "91ae 91ae " + BasicWords("slanted") + "912f 912f " +
            BasicWords("both") + "91a1 91a1 " + BasicWords("under") + "9120 9120 " +
            BasicWords("plain"),
        row13 + BasicWords("   ") + row14 + BasicWords("below a blank row"),
        row14 + BasicWords("    "), row14 + BasicWords("fish & chips <b>"),
        row14 + BasicWords("{\\an8} braces"),
        row14 + BasicWords("caf*"), // 0x2A is an accented letter
        row14 + BasicWords("green ") + "91a2 91a2 " + BasicWords("text"),
        row14 + BasicWords("a row of thirty-four characters!!"),
        row14 + "9137 9137 " + BasicWords(" la"),
        row14 + BasicWords("odd") + "94a1 94a1 " + BasicWords("x"), // backspace: "odx"
    };
    std::string file = "Scenarist_SCC V1.0\n\n";
    int second = 1;
    for (const std::string& screen : screens) {
        char timecode[32];
        std::snprintf(timecode, sizeof timecode, "00:00:%02d:00\t", second++);
        file += timecode + ("9420 9420 94ae 94ae " + screen + "942f 942f\n\n");
    }
    file += "00:00:59:00\t942c 942c\n";
    EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, file));
}

// A plain row's cells are copied several at a time: a cell SubRip cannot take
// as it is, a change of style or a gap may fall at any column among them, and a
// stretch of cells may end anywhere.
TEST(DirectConversion, SccToSrtMatchesTheModelPathWhereverARowChanges) {
    std::string file = "Scenarist_SCC V1.0\n\n";
    int second = 0;
    auto addScreen = [&](const std::string& words) {
        char timecode[32];
        std::snprintf(timecode, sizeof timecode, "00:%02d:%02d:00\t", second / 60, second % 60);
        file += timecode + ("9420 9420 94ae 94ae 94d0 94d0 " + words + "942f 942f\n\n");
        second += 2;
    };
    const std::string text = "abcdefghijklm";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string before = text.substr(0, at);
        const std::string after = text.substr(at + 1);
        for (const char* odd : {"&", "<", ">", "*", "\x7F"}) {
            addScreen(BasicWords(before + odd + after));
        }
        // "{\\", only sent as extended characters, each replacing a basic one
        addScreen(BasicWords(before + "x") + "1329 1329 " + BasicWords("y") + "13ab 13ab " +
                  BasicWords(after));
        addScreen(BasicWords(before) + "91ae 91ae " + BasicWords(after));
        addScreen(BasicWords(before) + "97a1 97a1 " + BasicWords(after));
    }
    file += "00:59:00:00\t942c 942c\n";
    EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, file));
}

// Long files are handed on in many pieces, each ending with a whole caption.
TEST(DirectConversion, LongFilesMatchTheModelPathInPieces) {
    test::CaptionCapabilities srt;
    srt.italic = true;
    srt.maxLines = 2;
    std::mt19937 random(5);
    const std::string srtBytes =
        SrtWriter().Write(test::RandomCaptions(random, 4000, srt), {"in.srt"}).bytes;
    test::CaptionCapabilities scc;
    scc.type = kCaptionType_PopOn;
    scc.timeStepTicks = zelmediatypes::kTicksPerSecond / 100; // a few hours in all
    const std::string sccBytes =
        SccWriter().Write(test::RandomCaptions(random, 4000, scc), {"in.scc"}).bytes;
    for (const auto& [from, to, bytes, separator] :
         {std::tuple{CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, srtBytes, "\n\n"},
          std::tuple{CaptionFileFormat::kScc, CaptionFileFormat::kSrt, sccBytes, "\r\n\r\n"}}) {
        EXPECT_TRUE(SameAsModelPath(from, to, bytes));
        std::vector<std::string> pieces;
        ConvertDirectly(from, to, bytes, {"in"}, {"out"},
                        [&pieces](std::string_view piece) { pieces.emplace_back(piece); });
        EXPECT_GT(pieces.size(), 3u);
        for (const std::string& piece : pieces) {
            EXPECT_TRUE(piece.ends_with(separator));
        }
    }
}

TEST(DirectConversion, FailedReadsMatchTheModelPath) {
    for (const std::string_view bytes :
         {std::string_view("no cues here\n"), std::string_view(""), std::string_view("\n \n"),
          std::string_view("1\n00:00:01,000 --> 00:00:02,000\n")}) {
        SCOPED_TRACE(std::string(bytes));
        EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, bytes));
    }
}

// The WebVTT writer orders captions by begin time; a SubRip file out of order
// is left to the model path, as is every pair without a direct path.
TEST(DirectConversion, DeclinesWhatItCannotConvertExactly) {
    const std::string outOfOrder = "1\n00:00:05,000 --> 00:00:06,000\nlate\n\n"
                                   "2\n00:00:01,000 --> 00:00:02,000\nearly\n";
    EXPECT_FALSE(ConvertDirectly(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, outOfOrder,
                                 {"in"}, {"out"}));
    const std::string sameBegin = "1\n00:00:01,000 --> 00:00:03,000\na\n\n"
                                  "2\n00:00:01,000 --> 00:00:02,000\nb\n";
    EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, sameBegin));
    EXPECT_FALSE(ConvertDirectly(CaptionFileFormat::kWebVtt, CaptionFileFormat::kSrt,
                                 "WEBVTT\n\n00:01.000 --> 00:02.000\nx\n", {"in"}, {"out"}));
    // A pop-on caption shown from 00:00:10 to 00:00:11, then time codes back
    // at 00:00:01 for the next one.
    const std::string backwards = "Scenarist_SCC V1.0\n\n"
                                  "00:00:10:00\t9420 9420 c1c1 942f 942f\n\n"
                                  "00:00:11:00\t942c 942c\n\n"
                                  "00:00:01:00\t9420 9420 c2c2 942f 942f\n\n"
                                  "00:00:02:00\t942c 942c\n";
    EXPECT_FALSE(ConvertDirectly(CaptionFileFormat::kScc, CaptionFileFormat::kSrt, backwards,
                                 {"in"}, {"out"}));
}

} // namespace
