#include "JsonReader.h"

#include "JsonNumbers.h"

#include <cmath>

namespace platform::core {

std::string JsonReader::GetPath() const {
    if (!parent_) {
        return rootPath_;
    }
    std::string path = parent_->GetPath();
    if (!key_) {
        return path + "[" + std::to_string(index_) + "]";
    }
    return path.empty() ? std::string(key_) : path + "." + key_;
}

void JsonReader::Fail(const std::string& problem) const {
    throw JsonValueError(GetPath(), problem);
}

QJsonObject JsonReader::Object() const {
    if (!value_.isObject()) {
        Fail("expected an object");
    }
    return value_.toObject();
}

QJsonArray JsonReader::Array() const {
    if (!value_.isArray()) {
        Fail("expected an array");
    }
    return value_.toArray();
}

JsonReader JsonReader::Member(const char* key) const {
    std::optional<JsonReader> member = FindMember(key);
    if (!member) {
        JsonReader(QJsonValue(), this, key, 0).Fail("missing");
    }
    return std::move(*member);
}

std::optional<JsonReader> JsonReader::FindMember(const char* key) const {
    const QJsonObject object = Object();
    const auto found = object.constFind(QLatin1String(key));
    if (found == object.constEnd()) {
        return std::nullopt;
    }
    return JsonReader(*found, this, key, 0);
}

std::size_t JsonReader::ArraySize() const {
    return static_cast<std::size_t>(Array().size());
}

JsonReader JsonReader::Element(std::size_t index) const {
    return JsonReader(Array().at(static_cast<qsizetype>(index)), this, nullptr, index);
}

std::string JsonReader::String() const {
    if (!value_.isString()) {
        Fail("expected a string");
    }
    return value_.toString().toStdString();
}

QString JsonReader::QtString() const {
    if (!value_.isString()) {
        Fail("expected a string");
    }
    return value_.toString();
}

bool JsonReader::Bool() const {
    if (!value_.isBool()) {
        Fail("expected true or false");
    }
    return value_.toBool();
}

std::int64_t JsonReader::Integer(std::int64_t min, std::int64_t max) const {
    if (!value_.isDouble()) {
        Fail("expected a number");
    }
    const double number = value_.toDouble();
    if (number != std::floor(number) || number < static_cast<double>(min) ||
        number > static_cast<double>(max)) {
        Fail("expected a whole number from " + std::to_string(min) + " to " + std::to_string(max));
    }
    return static_cast<std::int64_t>(number);
}

float JsonReader::Float() const {
    if (!value_.isDouble()) {
        Fail("expected a number");
    }
    const auto narrowed = NarrowToFloat(value_.toDouble());
    if (!narrowed) {
        Fail("number beyond the range of a 32-bit float");
    }
    return *narrowed;
}

std::int64_t JsonReader::Int64String() const {
    const auto parsed = ParseInt64(String());
    if (!parsed) {
        Fail("expected a whole number in a string, within 64 bits");
    }
    return *parsed;
}

boost::rational<std::int64_t> JsonReader::RationalString() const {
    const auto parsed = ParseRational(String());
    if (!parsed) {
        Fail("expected \"numerator/denominator\" with a positive denominator, within 64 bits");
    }
    return *parsed;
}

} // namespace platform::core
