#include "file/JsonText.h"

#include "file/JsonNumbers.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <string>

namespace {

using platform::core::AppendJsonNumber;
using platform::core::AppendJsonString;

// What QJsonDocument writes for the value, unwrapped from a one-element array.
std::string QtWrites(const QJsonValue& value) {
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2).toStdString();
}

std::string Streamed(std::u16string_view text) {
    std::string out;
    AppendJsonString(text, out);
    return out;
}

std::string Streamed(double value) {
    std::string out;
    AppendJsonNumber(value, out);
    return out;
}

TEST(JsonTextTest, StringsAreEscapedAsQJsonDocumentEscapesThem) {
    const std::u16string cases[] = {u"",
                                    u"plain",
                                    u"\"quoted\" \\ back/slash",
                                    u"\b\f\n\r\t\x01\x1f\x7f",
                                    u"caf\u00e9 \u266a \u4e2d",
                                    u"\U0001F3B5 music",
                                    u"\xD800 lone high",
                                    u"lone low \xDC00",
                                    u"\xDC00\xD800 reversed pair"};
    for (const std::u16string& text : cases) {
        const QString q = QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
        EXPECT_EQ(Streamed(text), QtWrites(q)) << QtWrites(q);
    }
    std::mt19937 random(11);
    for (int n = 0; n < 2000; ++n) {
        std::u16string text;
        for (int i = 0; i < 12; ++i) {
            text += static_cast<char16_t>(random() % 4 == 0 ? random() % 0x80 : random() % 0x10000);
        }
        const QString q = QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
        ASSERT_EQ(Streamed(text), QtWrites(q)) << "case " << n;
    }
}

TEST(JsonTextTest, NumbersAreWrittenAsQJsonDocumentWritesThem) {
    const double cases[] = {0,
                            -0.0,
                            1,
                            48,
                            0.85,
                            1.5,
                            100000,
                            1e21,
                            1e-5,
                            123456789012.0,
                            0.1f,
                            3.4028234663852886e38,
                            1.17549435e-38};
    for (const double value : cases) {
        EXPECT_EQ(Streamed(value), QtWrites(value)) << value;
    }
    std::mt19937 random(12);
    for (int n = 0; n < 20000; ++n) {
        const float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (!std::isfinite(value)) {
            continue;
        }
        // Floats are written as the double of their shortest digits.
        for (const double widened :
             {static_cast<double>(value), platform::core::FloatAsShortestDouble(value)}) {
            ASSERT_EQ(Streamed(widened), QtWrites(widened)) << "case " << n;
        }
    }
}

} // namespace
