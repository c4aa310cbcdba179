// SCC lines in the usual shape (a time code, a space or tab, words of four
// hex digits one space or tab apart) are read as they are cut; a line of any
// other shape is cut first and read word by word. Each case reads a file and
// the same file with a space before every line break, which leaves no line in
// the usual shape and changes nothing else: the captions and every finding,
// with its line and column, must be the same.
#include "captionformats/CaptionFileFormat.h"

#include "DiagnosticMessages.h"
#include "WithoutUsualShapes.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace captionformats;
using format_test::Messages;

struct Reading {
    std::size_t captions = 0;
    std::string srt;
    std::vector<std::string> warnings;
    std::vector<std::string> errors;

    friend bool operator==(const Reading&, const Reading&) = default;
};

Reading Read(std::string_view bytes) {
    const ReadResult read = MakeReader(CaptionFileFormat::kScc)->Read(bytes, {"in.scc"});
    Reading reading{read.captions.size(), {}, Messages(read.warnings), Messages(read.errors)};
    if (read.Succeeded()) {
        reading.srt = MakeWriter(CaptionFileFormat::kSrt)->Write(read.captions, {"out.srt"}).bytes;
    }
    return reading;
}

::testing::AssertionResult ReadsAsRespelled(const std::string& file) {
    const Reading usual = Read(file);
    const Reading respelled = Read(format_test::SccWithoutUsualLines(file));
    if (usual == respelled) {
        return ::testing::AssertionSuccess();
    }
    auto failure = ::testing::AssertionFailure() << usual.captions << " captions, respelled "
                                                 << respelled.captions << "\nSubRip:\n"
                                                 << usual.srt << "\nrespelled:\n"
                                                 << respelled.srt << "\nfindings:";
    for (const auto* list : {&usual.warnings, &usual.errors}) {
        for (const std::string& message : *list) {
            failure << "\n  " << message;
        }
    }
    failure << "\nrespelled:";
    for (const auto* list : {&respelled.warnings, &respelled.errors}) {
        for (const std::string& message : *list) {
            failure << "\n  " << message;
        }
    }
    return failure;
}

// Pop-on "HELLO" at row 15, shown by the end of caption.
const std::string kHello = "9420 9420 94f2 94f2 c845 4c4c 4f80 942f 942f";
// Erases the displayed memory.
const std::string kErase = "942c 942c";

// `count` words of two basic characters each.
std::string Letters(int count) {
    std::string words;
    for (int i = 0; i < count; ++i) {
        words += (i == 0 ? "" : " ") + std::string(i % 2 == 0 ? "c1c2" : "43c4");
    }
    return words;
}

TEST(SccLineShapes, EveryLineBreakAndEveryShapeOfLineReadsAsCutFirst) {
    const std::string header = "Scenarist_SCC V1.0";
    const std::string one = "00:00:01:00\t" + kHello;
    const std::string two = "00:00:03;00\t" + kErase;
    for (const std::string& file : std::vector<std::string>{
             // line breaks of every kind, mixed, several, none at the end
             header + "\n\n" + one + "\n\n" + two + "\n",
             header + "\r\n\r\n" + one + "\r\n\r\n" + two + "\r\n",
             header + "\r\r" + one + "\r\r" + two + "\r",
             header + "\n\r" + one + "\r\n\n\r\r\n" + two,
             header + "\n" + one + "\n" + two,
             header + "\r\n" + one + "\r\n00:00:03:00\t942c zz9 942c\r\n",
             one + "\n" + two + "\r\n",
             "\n\r\n" + one + "\r" + two,
             // a line break inside a line's words, a line cut inside a word
             header + "\n" + one.substr(0, 26) + "\r" + one.substr(27) + "\n" + two + "\n",
             header + "\n" + one + "\n" + two.substr(0, 18),
             header + "\n" + one + "\n" + two.substr(0, 16) + "\r\n",
             header + "\n" + one + "\n00:00:03:00\t9",
             header + "\n" + one + "\n00:00:03:00\t",
             header + "\n" + one + "\n00:00:03:00\n",
             header + "\n" + one + "\n00:00:03:00",
             // time codes followed by a space, by two blanks, bad or early
             header + "\n00:00:01:00 " + kHello + "\n00:00:03:00\t\t" + kErase + "\n",
             header + "\n" + one + "\n00:00:03:0x\t" + kErase + "\n00:00:04:00 " + kErase + "\n",
             header + "\n" + one + "\n00:00:01:02\t" + kErase + "\n",
             header + "\n" + one + "\n00:00:01:02\t" + kHello + "\n" + two + "\n",
             // words of other shapes: blanks between them, bad digits, five
             // digits, three, upper case, parity errors, bytes to decode
             header + "\n00:00:01:00\t9420  9420\t94f2 94f2 c845\t\t4c4c 4f80 942f 942f\n",
             header + "\n00:00:01:00\t" + kHello + " zz9 94200 942 942F\n" + two + "\n",
             header + "\n00:00:01:00\t9420 9420 94f2 94f2 4845 4c4c 4f80 142f 942f\n" + two,
             header + "\n00:00:01:00\t9420 \xC3\xA9 94f2 c845 4c4c \x01 942f 942f\n" + two,
             header + "\n00:00:01:00\t9420 9420 94f2 94f2 c845 4c4c 4f80 942f 942f\xC3\n" + two,
             // lines of as many words as the usual reading takes and more
             header + "\n00:00:01:00\t9420 " + Letters(254) + " 942f\n" + two + "\n",
             header + "\n00:00:01:00\t9420 " + Letters(255) + " 942f\n" + two + "\n",
             header + "\n00:00:01:00\t9420 " + Letters(256) + " 942f\r\n" + two + "\r\n",
             header + "\n00:00:01:00\t9420 9420 94f2 " + Letters(300) + " 942f\n" + two + "\n",
         }) {
        SCOPED_TRACE(file);
        EXPECT_TRUE(ReadsAsRespelled(file));
    }
    // The usual lines make their captions.
    const Reading hello = Read(header + "\r\n\r\n" + one + "\r\n\r\n" + two + "\r\n");
    EXPECT_EQ(hello.captions, 1U);
    EXPECT_EQ(hello.srt, "1\r\n00:00:01,235 --> 00:00:03,003\r\nHELLO\r\n\r\n");
    EXPECT_TRUE(hello.warnings.empty());
}

// Random lines of good and bad words, separators and line breaks of all kinds.
std::string RandomLines(std::mt19937& random, int lines) {
    static const std::vector<std::string> words = {
        "9420", "942f", "942c", "94ae", "94f2", "1370", "97a2",  "91ae", "c845",    "4c4c",
        "4f80", "2080", "9425", "94ad", "zz9",  "94",   "94200", "942F", "\xC3\xA9"};
    static const std::vector<std::string> breaks = {"\n", "\r\n", "\r", "\n\n", "\r\n\r\n", ""};
    std::uniform_int_distribution<int> percent(0, 99);
    std::string file = percent(random) < 80 ? "Scenarist_SCC V1.0\r\n\r\n" : "";
    int frame = 0;
    for (int line = 0; line < lines; ++line) {
        frame += std::uniform_int_distribution<int>(0, 60)(random);
        char timecode[16];
        std::snprintf(timecode, sizeof timecode, "00:%02d:%02d;%02d", frame / 1800 % 60,
                      frame / 30 % 60, std::max(2, frame % 30));
        file += percent(random) < 3 ? "00:00:0x:00" : timecode;
        const int count = percent(random) < 5 ? std::uniform_int_distribution<int>(250, 270)(random)
                                              : std::uniform_int_distribution<int>(0, 40)(random);
        for (int word = 0; word < count; ++word) {
            const int separator = percent(random);
            file += separator < 90 ? " " : separator < 97 ? "\t" : "  ";
            file += percent(random) < 95 ? words[static_cast<std::size_t>(percent(random)) % 13]
                                         : words[std::uniform_int_distribution<std::size_t>(
                                               0, words.size() - 1)(random)];
        }
        file += breaks[std::uniform_int_distribution<std::size_t>(0, breaks.size() - 1)(random)];
    }
    return file;
}

TEST(SccLineShapes, RandomLinesReadAsCutFirst) {
    std::mt19937 random(608);
    for (int file = 0; file < 200; ++file) {
        const std::string bytes = RandomLines(random, 1 + file % 25);
        SCOPED_TRACE("random file " + std::to_string(file) + ":\n" + bytes);
        ASSERT_TRUE(ReadsAsRespelled(bytes));
    }
}

} // namespace
