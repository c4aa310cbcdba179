// A direct conversion must be indistinguishable from reading into captions
// and writing them: the same bytes, the same warnings and errors, the same
// caption count. Each case runs both paths on the same input.
#include "captionformats/DirectConversion.h"
#include "captionformats/SccWriter.h"
#include "captionformats/SrtWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "RandomCaptions.h"
#include "SrtWithoutUsualCues.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using format_test::Messages;

::testing::AssertionResult SameAsModelPath(CaptionFileFormat from, CaptionFileFormat to,
                                           std::string_view bytes) {
    const ReadOptions readOptions{"in"};
    const WriteOptions writeOptions{"out"};
    const std::optional<Conversion> direct =
        ConvertDirectly(from, to, bytes, readOptions, writeOptions);
    if (!direct) {
        return ::testing::AssertionFailure() << "no direct conversion";
    }
    const ReadResult read = MakeReader(from)->Read(bytes, readOptions);
    WriteResult written;
    if (read.Succeeded()) {
        written = MakeWriter(to)->Write(read.captions, writeOptions);
    }
    if (direct->captionCount != read.captions.size()) {
        return ::testing::AssertionFailure()
               << direct->captionCount << " captions, the model path " << read.captions.size();
    }
    if (direct->read.streamFormat != read.streamFormat) {
        return ::testing::AssertionFailure() << "stream formats differ";
    }
    const std::pair<const char*, std::pair<std::vector<std::string>, std::vector<std::string>>>
        findings[] = {
            {"read warnings", {Messages(direct->read.warnings), Messages(read.warnings)}},
            {"read errors", {Messages(direct->read.errors), Messages(read.errors)}},
            {"write warnings", {Messages(direct->written.warnings), Messages(written.warnings)}},
            {"write errors", {Messages(direct->written.errors), Messages(written.errors)}},
        };
    for (const auto& [kind, lists] : findings) {
        if (lists.first != lists.second) {
            auto failure = ::testing::AssertionFailure() << kind << " differ; direct:";
            for (const std::string& message : lists.first) {
                failure << "\n  " << message;
            }
            failure << "\nmodel path:";
            for (const std::string& message : lists.second) {
                failure << "\n  " << message;
            }
            return failure;
        }
    }
    // Handed on in pieces, the bytes are the same, and none are kept.
    std::string pieces;
    const std::optional<Conversion> inPieces =
        ConvertDirectly(from, to, bytes, readOptions, writeOptions,
                        [&pieces](std::string_view piece) { pieces.append(piece); });
    if (!inPieces || !inPieces->written.bytes.empty() ||
        (read.Succeeded() && pieces != direct->written.bytes)) {
        return ::testing::AssertionFailure() << "the bytes handed on in pieces differ";
    }
    if (direct->written.bytes != written.bytes) {
        const auto& a = direct->written.bytes;
        const auto& b = written.bytes;
        const auto differ = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
        const auto at = static_cast<std::size_t>(differ.first - a.begin());
        return ::testing::AssertionFailure()
               << "bytes differ at " << at << ": direct \"" << a.substr(at, 60)
               << "\", model path \"" << b.substr(at, 60) << "\"";
    }
    return ::testing::AssertionSuccess();
}

// A SubRip file such as editors and the wild produce: every tag and override
// we read or drop, references, words in angle brackets, lines of tags alone,
// cues without text, bad timings, missing numbers, mixed line ends, non-ASCII
// and invalid bytes. Begin times never decrease.
std::string RandomSrt(std::mt19937& random, int cues) {
    static const std::vector<std::string> pieces = {
        "word",
        " ",
        "Ünïcödé ♪",
        "中文",
        "\U0001F600",
        "<i>",
        "</i>",
        "<b>",
        "</b>",
        "<u>",
        "</u>",
        "<I>",
        "</B>",
        "<font color=\"#ff0000\">",
        "<font color=yellow>",
        "<font color=\"nonsense\">",
        "<font face=\"Arial\" size=3>",
        "</font>",
        "<span>",
        "</span>",
        "<c.red>",
        "<LAUGHING & WHOOPS!>",
        "{\\an8}",
        "{\\an1}",
        "{\\an5}",
        "{\\pos(1,2)}",
        "{not an override}",
        "&amp;",
        "&lt;tag&gt;",
        "&#9835;",
        "&#xD800;",
        "&bogus;",
        "&",
        "<",
        ">",
        "{",
        "\xC3",
        "\xFF\xFE",
        std::string("nul\0byte", 8),
        "\t",
        "  ",
    };
    static const std::vector<std::string> lineEnds = {"\n", "\r\n", "\r"};
    std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
    std::uniform_int_distribution<int> percent(0, 99);
    auto pick = [&random](const std::vector<std::string>& from) -> const std::string& {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(random)];
    };
    auto clock = [](std::int64_t ms, char separator) {
        char text[32];
        std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld%c%03lld",
                      static_cast<long long>(ms / 3600000), static_cast<long long>(ms / 60000 % 60),
                      static_cast<long long>(ms / 1000 % 60), separator,
                      static_cast<long long>(ms % 1000));
        return std::string(text);
    };
    std::string file = percent(random) < 20 ? "\xEF\xBB\xBF" : "";
    std::int64_t begin = 0;
    for (int cue = 0; cue < cues; ++cue) {
        const std::string& end = pick(lineEnds);
        if (percent(random) < 85) {
            file += std::to_string(cue + 1) + end;
        }
        begin += std::uniform_int_distribution<std::int64_t>(0, 4000)(random);
        const std::int64_t length = std::uniform_int_distribution<std::int64_t>(-500, 5000)(random);
        if (percent(random) < 4) {
            file += clock(begin, ',') + " -> " + clock(begin + length, ',') + end; // bad timing
        } else {
            file += clock(begin, percent(random) < 80 ? ',' : '.') + " --> " +
                    clock(std::max<std::int64_t>(begin + length, 0), ',') +
                    (percent(random) < 10 ? " X1:10 Y1:20" : "") + end;
        }
        const int lines = std::uniform_int_distribution<int>(0, 3)(random);
        for (int line = 0; line < lines; ++line) {
            const int count = std::uniform_int_distribution<int>(1, 8)(random);
            std::string text;
            for (int k = 0; k < count; ++k) {
                text += pieces[piece(random)];
            }
            if (text.find_first_not_of(" \t") == std::string::npos) {
                text = "x";
            }
            file += text + end;
        }
        file += percent(random) < 5 ? "stray text" + end : "";
        file += end;
    }
    return file;
}

// A SubRip file whose cues mostly hold only text and emphasis tags, which the
// direct path writes straight from their lines: tags nested, crossed, stray,
// repeated, left open across lines and in any case, lines of tags alone, '>'
// in text, trailing blanks, and the timings and text beside them that send a
// cue the general way (other times' forms, references, overrides, other
// tags). Begin times never decrease.
std::string EmphasisSrt(std::mt19937& random, int cues) {
    static const std::vector<std::string> usual = {"word", " ",    "x > y", "Ünï ♪", "<i>", "</i>",
                                                   "<b>",  "</b>", "<u>",   "</u>",  "<I>", "</B>",
                                                   "</U>", "\t",   ">",     "<i><b>"};
    static const std::vector<std::string> unusual = {
        "&amp;", "&", "{\\an8}", "{x}", "<font color=red>", "</font>", "<", "<i", "<x>", "<b/>"};
    static const std::vector<std::string> lineEnds = {"\n", "\r\n", "\r"};
    std::uniform_int_distribution<int> percent(0, 99);
    auto pick = [&random](const std::vector<std::string>& from) -> const std::string& {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(random)];
    };
    // Mostly HH:MM:SS,mmm; now and then a form read by the general scan, and
    // past 100 hours after a jump.
    auto clock = [&](std::int64_t ms) {
        const int form = percent(random);
        const long long hours = ms / 3600000;
        char text[40];
        std::snprintf(text, sizeof text,
                      form < 4 ? "%lld:%02lld:%02lld%c%03lld0" : "%02lld:%02lld:%02lld%c%03lld",
                      hours, static_cast<long long>(ms / 60000 % 60),
                      static_cast<long long>(ms / 1000 % 60),
                      form < 6 ? ':' : (form < 30 ? '.' : ','), static_cast<long long>(ms % 1000));
        return std::string(text);
    };
    std::string file;
    std::int64_t begin = 0;
    for (int cue = 0; cue < cues; ++cue) {
        const std::string& end = pick(lineEnds);
        file += std::to_string(cue + 1) + end;
        begin += std::uniform_int_distribution<std::int64_t>(0, 4000)(random) +
                 (percent(random) < 1 ? 100 * 3600000 : 0);
        const std::int64_t length = std::uniform_int_distribution<std::int64_t>(-200, 5000)(random);
        file += clock(begin) + " --> " + clock(std::max<std::int64_t>(begin + length, 0)) +
                (percent(random) < 5 ? " X1:1" : "") + end;
        const int lines = std::uniform_int_distribution<int>(0, 3)(random);
        for (int line = 0; line < lines; ++line) {
            const int count = std::uniform_int_distribution<int>(1, 7)(random);
            std::string text;
            for (int k = 0; k < count; ++k) {
                text += percent(random) < 2 ? pick(unusual) : pick(usual);
            }
            if (text.find_first_not_of(" \t") == std::string::npos) {
                text = "y";
            }
            file += text + end;
        }
        file += end;
    }
    return file;
}

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

TEST(DirectConversion, SrtToWebVttMatchesTheModelPathOnEverySample) {
    SKIP_WITHOUT_SAMPLES();
    int files = 0;
    for (const auto& folder : test::CaseFolders(test::SamplesDir() / "srt")) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() == ".srt") {
                SCOPED_TRACE(entry.path().string());
                EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt,
                                            test::ReadBytes(entry.path())));
                ++files;
            }
        }
    }
    EXPECT_GE(files, 6);
}

TEST(DirectConversion, SrtToWebVttMatchesTheModelPathOnRandomFiles) {
    std::mt19937 random(77);
    for (int file = 0; file < 200; ++file) {
        const std::string bytes = RandomSrt(random, 1 + file % 40);
        SCOPED_TRACE("random file " + std::to_string(file));
        ASSERT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, bytes));
    }
}

// Cues of text and emphasis tags are written from their lines; the cues around
// them, and the cues that turn out otherwise, the general way.
TEST(DirectConversion, SrtToWebVttMatchesTheModelPathOnEmphasisedText) {
    std::mt19937 random(11);
    for (int file = 0; file < 300; ++file) {
        const std::string bytes = EmphasisSrt(random, 1 + file % 30);
        SCOPED_TRACE("emphasis file " + std::to_string(file));
        ASSERT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, bytes));
    }
    for (const char* text : {"<i>a</i><i>b</i>",
                             "<i>a<b></b>b</i>",
                             "<b><i>x</i></b>",
                             "<i><b>x</b></i>",
                             "</i>a<i>b",
                             "<i>a\nb</i>c",
                             "<u></u>\nz",
                             "<i></i>",
                             "a <i> </i> b",
                             "a>b>>",
                             "x \t<i>",
                             "<I>y</i>z</I>",
                             "<b><b>w</b>v</b>u",
                             "a<i>",
                             "a</i>",
                             ">",
                             "<i>>a</i>>",
                             "<b>a</b><i>b</i>",
                             "<i>x</i> \t",
                             "<i>a</i><I>b</I>",
                             "<b><i>a</i>b</b>",
                             "<i>a</i>b\n<i>c",
                             "x>i>y</i>",
                             "<i>x</i>>b>",
                             "<u>{b>z</u>",
                             "<b>v</i>w"}) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt,
                                    std::string("1\n00:00:01,000 --> 00:00:02,000\n") + text +
                                        "\n\n2\n00:00:03.000 --> 00:00:04,000\nafter\n"));
    }
}

TEST(DirectConversion, SrtToWebVttMatchesTheModelPathOnWrittenFiles) {
    test::CaptionCapabilities srt;
    srt.bold = srt.italic = srt.underline = true;
    srt.textColors = {CaptioningColor(1.0f, 1.0f, 0.0f, 1.0f),
                      CaptioningColor(0.2f, 0.4f, 0.6f, 1.0f)};
    srt.gridAnchors = true;
    srt.maxLines = 3;
    srt.alphabet = U"abcXYZ019 .,-'!?&<>{}\\#;é♪中\U0001F600";
    std::mt19937 random(3);
    const auto captions = test::RandomCaptions(random, 500, srt);
    const std::string bytes = SrtWriter().Write(captions, {"in.srt"}).bytes;
    EXPECT_TRUE(SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, bytes));
}

// Cues of the usual shape (a line of digits, "HH:MM:SS,mmm --> HH:MM:SS,mmm",
// text, a blank line) are read straight from the bytes, all others line by
// line: a file must read the same either way, cue by cue and warning by
// warning, whichever cues leave the usual shape and wherever in the file.
::testing::AssertionResult ReadsAsWithoutUsualCues(std::string_view bytes) {
    const std::string spelled = format_test::SrtWithoutUsualCues(bytes);
    for (const std::string_view file : {bytes, std::string_view(spelled)}) {
        if (auto same = SameAsModelPath(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, file);
            !same) {
            return same << (file == bytes ? " (as written)" : " (without usual cues)");
        }
    }
    const auto usual = ConvertDirectly(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, bytes,
                                       {"in"}, {"out"});
    const auto other = ConvertDirectly(CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, spelled,
                                       {"in"}, {"out"});
    if (usual->captionCount != other->captionCount ||
        Messages(usual->read.warnings) != Messages(other->read.warnings) ||
        Messages(usual->read.errors) != Messages(other->read.errors) ||
        Messages(usual->written.warnings) != Messages(other->written.warnings) ||
        usual->written.bytes != other->written.bytes) {
        auto failure = ::testing::AssertionFailure() << "read otherwise without usual cues:";
        for (const auto* conversion : {&*usual, &*other}) {
            failure << "\n" << conversion->captionCount << " captions, warnings:";
            for (const std::string& message : Messages(conversion->read.warnings)) {
                failure << "\n  " << message;
            }
            failure << "\n" << conversion->written.bytes;
        }
        return failure;
    }
    return ::testing::AssertionSuccess();
}

TEST(DirectConversion, SrtCuesReadTheSameInTheUsualShapeAndOtherwise) {
    const std::string timing = "00:00:01,000 --> 00:00:02,000";
    const std::string later = "00:00:03,000 --> 00:00:04,500";
    for (const std::string& file : std::vector<std::string>{
             // cue numbers of any length, line ends of every kind and mixed
             "0001\n" + timing + "\nx\n\n18446744073709551616999\r\n" + later + "\r\ny\r\n",
             "1\r" + timing + "\ntext\r\n\r2\r\n" + later + "\rz\r",
             "1\r\r\n" + timing + "\nafter an empty line\n\n2\n" + later + "\nz\n",
             // cue numbers with blanks, timing lines with anything after them
             " 1\n" + timing + "\nx\n\n2\t\n" + later + " \ny\n\n3\n" + later + "\tX1:5\nz\n",
             // blank lines of spaces, several blank lines, none at the end
             "1\n" + timing + "\nx\n \t \n\n\n2\n" + later + "\ny",
             "1\r" + timing + "\rx\r \t\r2\r\n" + later + "\r\ny\r\n \r\nstray\r\n",
             "1\r" + timing + "\r\nx\r\n\r\n2\n" + later + "\r\ny\r\n",
             "1\n" + timing + "\n\n2\n" + later + "\n   \n",
             "1\n" + timing,
             "1\n" + timing + "\n",
             "\n\n1\n" + timing + "\nx\n\n",
             // lines of digits as text, as cue numbers with no timing, and
             // before the next cue without a blank line
             "1\n" + timing + "\n42\n  7  \nafter\n\n2\n" + later + "\n99 bottles\n",
             "1\n" + timing + "\ntext\n2\n" + later + "\nmore\n",
             "5\n\n1\n" + timing + "\nx\n",
             "1\n" + timing + "\nx\n\n7\n8\n" + later + "\ny\n",
             // "-->" in text, good and bad timing lines ending the text
             "1\n" + timing + "\na --> b\nc-->\n-- >\n->\n--\n\n2\n" + later + "\nd\n",
             "1\n" + timing + "\nx\n" + later + "\ny\n\n2\n" + later + "\nz\n",
             "1\n" + timing + "\nx\n 00:00:09,000 -> 1\ny\n\n2\n" + later + "\nz\n",
             // an end before the begin, a bad timing, a missing number
             "1\n00:00:05,000 --> 00:00:01,000\nx\n\n2\n00:00:06,000 --> 00:00:07,000\ny\n",
             "1\n00:00:05,000 --> 00:00:01,00x\nx\n\n2\n" + later + "\ny\n",
             "1\n" + timing + "\nx\n\n" + later + "\ny\n\n3\n00:00:05,000 --> 00:00:06,000\nz\n",
             // stray lines between cues, text with trailing blanks and tags at
             // line ends, '>' in text
             "stray\n1\n" + timing + "\nx  \n\t\nstray\n\n2\n" + later + "\n<i>a</i> \t\nb<i>\n",
             "1\n" + timing + "\n> a >> b\n<b>x</b>>\n<I>up</I>\n\n2\n" + later + "\n&amp;>\n",
         }) {
        SCOPED_TRACE(file);
        EXPECT_TRUE(ReadsAsWithoutUsualCues(file));
    }
    std::mt19937 random(2024);
    for (int file = 0; file < 100; ++file) {
        SCOPED_TRACE("random file " + std::to_string(file));
        ASSERT_TRUE(ReadsAsWithoutUsualCues(RandomSrt(random, 1 + file % 20)));
        ASSERT_TRUE(ReadsAsWithoutUsualCues(EmphasisSrt(random, 1 + file % 20)));
    }
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
