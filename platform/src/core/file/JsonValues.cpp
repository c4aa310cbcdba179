#include "JsonValues.h"

#include "JsonNumbers.h"

#include <cmath>

namespace platform::core {

QString ToQString(const zelcore::UTF16String& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QJsonValue FloatToJson(float value, const std::string& path) {
    if (!std::isfinite(value)) {
        throw JsonValueError(path, "a project file holds only finite numbers");
    }
    return QJsonValue(FloatAsShortestDouble(value));
}

QJsonValue CountToJson(std::uint64_t value, const std::string& path) {
    if (value > static_cast<std::uint64_t>(kLargestExactJsonInteger)) {
        throw JsonValueError(path, "a project file holds counts up to 2^53");
    }
    return QJsonValue(static_cast<qint64>(value));
}

zelcore::UTF16String ReadText(const JsonReader& reader) {
    return zelcore::ToUTF16(reader.StringView());
}

} // namespace platform::core
