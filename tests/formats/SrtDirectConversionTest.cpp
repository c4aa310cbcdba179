// SubRip to WebVTT converted directly must be indistinguishable from reading
// into captions and writing them, for files from the wild, emphasis-heavy
// files and our own, and whichever cues the reader takes straight from the
// bytes.
#include "captionformats/DirectConversion.h"
#include "captionformats/SrtWriter.h"

#include "DiagnosticMessages.h"
#include "FormatSamples.h"
#include "ModelPathCheck.h"
#include "RandomCaptions.h"
#include "WithoutUsualShapes.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace captionformats;
using namespace zelcaptioning;
using format_test::Messages;
using format_test::SameAsModelPath;

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

} // namespace
