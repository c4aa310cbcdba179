#pragma once

#include "EnumNames.h"
#include "JsonReader.h"
#include "zelcore/UTF16String.h"

#include <QJsonValue>
#include <QString>

#include <optional>
#include <string>
#include <string_view>

namespace platform::core {

// Conversions between model values and JSON values shared by the project
// file's writer and reader. Writers throw JsonValueError, naming the member
// path, for a model value that a project file cannot hold.

QString ToQString(const zelcore::UTF16String& text);

// A float in its shortest decimal form; throws for infinities and NaN.
QJsonValue FloatToJson(float value, const std::string& path);

// A whole number up to 2^53, which a JSON number holds exactly; throws beyond.
QJsonValue CountToJson(std::uint64_t value, const std::string& path);
inline constexpr std::int64_t kLargestExactJsonInteger = std::int64_t{1} << 53;

// The name of an enumeration value (see EnumNames.h); throws for a value
// without one.
template <typename Enum> QJsonValue NameToJson(Enum value, const std::string& path) {
    const std::optional<std::string_view> name = NameOf(value);
    if (!name) {
        throw JsonValueError(path, "value " + std::to_string(static_cast<long long>(value)) +
                                       " has no name in project files");
    }
    return QJsonValue(QLatin1String(name->data(), static_cast<qsizetype>(name->size())));
}

// The enumeration value the member names; fails naming the member otherwise.
template <typename Enum>
Enum ReadNamed(const JsonReader& reader, std::optional<Enum> (*lookup)(std::string_view)) {
    const std::string name = reader.String();
    const std::optional<Enum> value = lookup(name);
    if (!value) {
        reader.Fail("unknown name \"" + name + "\"");
    }
    return *value;
}

zelcore::UTF16String ReadText(const JsonReader& reader);

} // namespace platform::core
