#include "JsonReader.h"

#include "JsonNumbers.h"

#include <cmath>

namespace platform::core {

void JsonReader::Fail(const std::string& problem) const {
    throw JsonValueError(path_, problem);
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
    const QJsonObject object = Object();
    const std::string memberPath = path_.empty() ? key : path_ + "." + key;
    const auto found = object.constFind(QLatin1String(key));
    if (found == object.constEnd()) {
        throw JsonValueError(memberPath, "missing");
    }
    return JsonReader(*found, memberPath);
}

std::size_t JsonReader::ArraySize() const {
    return static_cast<std::size_t>(Array().size());
}

JsonReader JsonReader::Element(std::size_t index) const {
    return JsonReader(Array().at(static_cast<qsizetype>(index)),
                      path_ + "[" + std::to_string(index) + "]");
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
