#include "file/JsonReader.h"
#include "file/JsonNumbers.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using platform::core::JsonReader;
using platform::core::JsonValueError;

JsonReader Parse(const char* json) {
    return JsonReader(QJsonDocument::fromJson(json).object(), "");
}

// The path and problem of the error the read throws.
template <typename Read> std::string ErrorOf(Read read) {
    try {
        read();
    } catch (const JsonValueError& e) {
        return e.GetPath() + ": " + e.what();
    }
    return "no error";
}

TEST(JsonReaderTest, ErrorsNameTheMemberPath) {
    const JsonReader root = Parse(R"({"bins":[{"clips":[{"name":5}]}]})");
    EXPECT_EQ(ErrorOf([&] {
                  root.Member("bins").Element(0).Member("clips").Element(0).Member("name").String();
              }),
              "bins[0].clips[0].name: expected a string");
    EXPECT_EQ(ErrorOf([&] { root.Member("bins").Element(0).Member("sequences"); }),
              "bins[0].sequences: missing");
    EXPECT_EQ(ErrorOf([&] { root.Member("bins").Element(0).Member("clips").Member("x"); }),
              "bins[0].clips: expected an object");
}

TEST(JsonReaderTest, WholeNumbersAreCheckedForFractionAndRange) {
    const JsonReader root = Parse(R"({"a":2.5,"b":7,"c":-1,"d":"7"})");
    EXPECT_EQ(ErrorOf([&] { root.Member("a").Integer(0, 10); }),
              "a: expected a whole number from 0 to 10");
    EXPECT_EQ(root.Member("b").Integer(0, 10), 7);
    EXPECT_EQ(ErrorOf([&] { root.Member("c").Integer(0, 10); }),
              "c: expected a whole number from 0 to 10");
    EXPECT_EQ(ErrorOf([&] { root.Member("d").Integer(0, 10); }), "d: expected a number");
}

TEST(JsonReaderTest, SixtyFourBitValuesTravelExactlyInStrings) {
    // 2^53 + 1 is the first integer a double cannot hold.
    const JsonReader root = Parse(
        R"({"t":"9007199254740993","min":"-9223372036854775808","over":"9223372036854775808",)"
        R"("junk":"12x","r":"-9007199254740997/254016000000","zero":"1/0"})");
    EXPECT_EQ(root.Member("t").Int64String(), 9007199254740993LL);
    EXPECT_EQ(root.Member("min").Int64String(), std::numeric_limits<std::int64_t>::min());
    EXPECT_NE(ErrorOf([&] { root.Member("over").Int64String(); }), "no error");
    EXPECT_NE(ErrorOf([&] { root.Member("junk").Int64String(); }), "no error");
    const auto r = root.Member("r").RationalString();
    EXPECT_EQ(r.numerator(), -9007199254740997LL);
    EXPECT_EQ(r.denominator(), 254016000000LL);
    EXPECT_NE(ErrorOf([&] { root.Member("zero").RationalString(); }), "no error");
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
