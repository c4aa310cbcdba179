#include "file/JsonReader.h"
#include "file/JsonNumbers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace {

using platform::core::JsonReader;
using platform::core::JsonValueError;

// The parsed trees outlive the test's readers.
JsonReader Parse(const char* json) {
    static std::deque<platform::core::JsonTree> trees;
    std::optional<platform::core::JsonSyntaxError> error;
    trees.push_back(platform::core::JsonTree::Parse(json, error));
    EXPECT_FALSE(error) << error->problem;
    return JsonReader(trees.back(), "");
}

// The path and problem of the error the read throws.
template <typename Read> std::string ThrownErrorOf(Read read) {
    try {
        read();
    } catch (const JsonValueError& e) {
        return e.GetPath() + ": " + e.what();
    }
    return "no error";
}

TEST(JsonReaderTest, ErrorsNameTheMemberPath) {
    const JsonReader root = Parse(R"({"bins":[{"clips":[{"name":5}]}]})");
    EXPECT_EQ(ThrownErrorOf([&] {
                  root.Member("bins").Element(0).Member("clips").Element(0).Member("name").String();
              }),
              "bins[0].clips[0].name: expected a string");
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("bins").Element(0).Member("sequences"); }),
              "bins[0].sequences: missing");
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("bins").Element(0).Member("clips").Member("x"); }),
              "bins[0].clips: expected an object");
}

TEST(JsonReaderTest, WholeNumbersAreCheckedForFractionAndRange) {
    const JsonReader root = Parse(R"({"a":2.5,"b":7,"c":-1,"d":"7"})");
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("a").Integer(0, 10); }),
              "a: expected a whole number from 0 to 10");
    EXPECT_EQ(root.Member("b").Integer(0, 10), 7);
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("c").Integer(0, 10); }),
              "c: expected a whole number from 0 to 10");
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("d").Integer(0, 10); }), "d: expected a number");
}

TEST(JsonReaderTest, SixtyFourBitValuesTravelExactlyInStrings) {
    // 2^53 + 1 is the first integer a double cannot hold.
    const JsonReader root = Parse(
        R"({"t":"9007199254740993","min":"-9223372036854775808","over":"9223372036854775808",)"
        R"("junk":"12x","r":"-9007199254740997/254016000000","zero":"1/0"})");
    EXPECT_EQ(root.Member("t").Int64String(), 9007199254740993LL);
    EXPECT_EQ(root.Member("min").Int64String(), std::numeric_limits<std::int64_t>::min());
    EXPECT_NE(ThrownErrorOf([&] { root.Member("over").Int64String(); }), "no error");
    EXPECT_NE(ThrownErrorOf([&] { root.Member("junk").Int64String(); }), "no error");
    const auto r = root.Member("r").RationalString();
    EXPECT_EQ(r.numerator(), -9007199254740997LL);
    EXPECT_EQ(r.denominator(), 254016000000LL);
    EXPECT_NE(ThrownErrorOf([&] { root.Member("zero").RationalString(); }), "no error");
}

// Where and why the parser refuses a text: the offset just past the character
// at which it went wrong, or the text's end.
std::string SyntaxErrorOf(std::string_view text) {
    std::optional<platform::core::JsonSyntaxError> error;
    platform::core::JsonTree::Parse(text, error);
    return error ? std::to_string(error->offset) + " " + error->problem : "no error";
}

TEST(JsonTreeTest, MalformedTextsNameTheOffsetAndTheProblem) {
    const struct {
        std::string_view text;
        std::string error;
    } cases[] = {
        {"", "0 illegal value"},
        {"{\"a\":1,,}", "8 unterminated object"},
        {"{\"a\" 1}", "6 missing name separator"},
        {"[1 2]", "4 unterminated array"},
        {"[1,]", "4 illegal value"},
        {"[tru]", "2 illegal value"},
        {"[01]", "3 illegal number"},
        {"[1.]", "4 illegal number"},
        {"[-]", "3 illegal number"},
        {"[1e]", "4 illegal number"},
        {"[1e999]", "6 illegal number"},
        {"[\"a\\x\"]", "5 invalid escape sequence"},
        {"[\"\\u12G4\"]", "7 invalid escape sequence"},
        {"[\"a\nb\"]", "4 illegal value"},
        {"[\"\xC0\xAF\"]", "3 invalid UTF8 string"},     // an overlong '/'
        {"[\"\xED\xA0\x80\"]", "3 invalid UTF8 string"}, // a surrogate
        {"[\"abc", "5 unterminated string"},
        {"{} {}", "4 garbage at the end of the document"},
        {std::string_view("[\"\0\"]", 5), "3 illegal value"},
        {std::string_view("[\"\\\0\"]", 6), "4 invalid escape sequence"},
        {"[18446744073709551616]", "21 whole number beyond 64 bits"},
        {"[-9223372036854775809]", "21 whole number beyond 64 bits"},
        // An unpaired surrogate is taken, and the error after it still found.
        {"[\"\\ud800\", 1 2]", "14 unterminated array"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(SyntaxErrorOf(c.text), c.error) << c.text;
    }
    EXPECT_EQ(SyntaxErrorOf(std::string(513, '[') + std::string(513, ']')),
              "513 too deeply nested document");
    EXPECT_EQ(SyntaxErrorOf(std::string(512, '[') + std::string(512, ']')), "no error");
    EXPECT_EQ(SyntaxErrorOf("[18446744073709551615, -9223372036854775808, 1e300]"), "no error");
}

TEST(JsonTreeTest, UnpairedSurrogateEscapesReadAsReplacementCharacters) {
    // An escaped backslash before "ud800" is no escape of a surrogate.
    const JsonReader root = Parse(R"({"lone": ["\udc00x\ud800", "\\ud800", "\ud83d\ude00"]})");
    const JsonReader lone = root.Member("lone");
    EXPECT_EQ(lone.Element(0).String(), "\xEF\xBF\xBDx\xEF\xBF\xBD");
    EXPECT_EQ(lone.Element(1).String(), "\\ud800");
    EXPECT_EQ(lone.Element(2).String(), "😀");
}

TEST(JsonTreeTest, StringsDecodeEscapesAndValuesKeepTheirTypes) {
    const JsonReader root =
        Parse(R"( {"s": "tab\t quote\" slash\/ \u00e9 \ud83d\ude00 lone \ud800!", "raw": "é😀",)"
              R"( "t": true, "f": false, "n": null, "x": -1.5e2, "k": 1, "k": 2, "a": [[], {}]} )");
    EXPECT_EQ(root.Member("s").String(), "tab\t quote\" slash/ é 😀 lone \xEF\xBF\xBD!");
    EXPECT_EQ(root.Member("raw").String(), "é😀");
    EXPECT_EQ(root.Member("raw").StringView(), "é😀");
    EXPECT_TRUE(root.Member("t").Bool());
    EXPECT_FALSE(root.Member("f").Bool());
    EXPECT_TRUE(root.Member("n").IsNull());
    EXPECT_EQ(root.Member("x").Integer(-1000, 0), -150);
    EXPECT_EQ(root.Member("k").Integer(0, 9), 2) << "a repeated key keeps its last value";
    EXPECT_EQ(root.Member("a").ArraySize(), 2u);
    EXPECT_EQ(root.Member("a").Element(0).ArraySize(), 0u);
    EXPECT_FALSE(root.Member("a").Element(1).FindMember("k"));
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("a").Element(1).Member("k"); }), "a[1].k: missing");
    EXPECT_EQ(ThrownErrorOf([&] { root.Member("t").String(); }), "t: expected a string");
}

TEST(JsonNumbersTest, FloatsAreWrittenInTheirShortestFormAndReadBackIdentical) {
    for (const float value : {0.8f, 0.1f, 42.0f, 1.0f / 3.0f, 1e-7f, 3.4e38f}) {
        const double written = platform::core::FloatAsShortestDouble(value);
        const QByteArray text = QJsonDocument(QJsonArray{written}).toJson(QJsonDocument::Compact);
        const double reread = QJsonDocument::fromJson(text).array().at(0).toDouble();
        EXPECT_EQ(platform::core::NarrowToFloat(reread), value) << text.toStdString();
    }
    EXPECT_EQ(QJsonDocument(QJsonArray{platform::core::FloatAsShortestDouble(0.8f)})
                  .toJson(QJsonDocument::Compact),
              "[0.8]");
    EXPECT_FALSE(platform::core::NarrowToFloat(1e39));
}

} // namespace
