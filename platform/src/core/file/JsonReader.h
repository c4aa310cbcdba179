#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <stdexcept>
#include <string>

#include <boost/rational.hpp>

namespace platform::core {

// A wrong value in a project file: where (a member path) and what is wrong.
class JsonValueError : public std::runtime_error {
public:
    JsonValueError(std::string path, const std::string& problem)
        : std::runtime_error(problem)
        , path_(std::move(path)) {}
    const std::string& GetPath() const { return path_; }

private:
    std::string path_;
};

// A JSON value and the member path that led to it, with typed reads that
// throw JsonValueError naming the path and what was expected.
class JsonReader {
public:
    JsonReader(QJsonValue value, std::string path)
        : value_(std::move(value))
        , path_(std::move(path)) {}

    const std::string& GetPath() const { return path_; }
    bool IsNull() const { return value_.isNull(); }

    // A member of an object; a missing member is an error.
    JsonReader Member(const char* key) const;
    // The elements of an array; index must be below ArraySize.
    std::size_t ArraySize() const;
    JsonReader Element(std::size_t index) const;

    std::string String() const;
    // The same string without a conversion to UTF-8.
    QString QtString() const;
    bool Bool() const;
    // A JSON number that is a whole number within the range.
    std::int64_t Integer(std::int64_t min, std::int64_t max) const;
    // A JSON number within a float's range, rounded to the nearest float.
    float Float() const;
    // A whole number written as a decimal string, for 64-bit values a JSON
    // number would round.
    std::int64_t Int64String() const;
    // "numerator/denominator" with a positive denominator, both 64-bit.
    boost::rational<std::int64_t> RationalString() const;

    [[noreturn]] void Fail(const std::string& problem) const;

private:
    QJsonObject Object() const;
    QJsonArray Array() const;

    QJsonValue value_;
    std::string path_;
};

} // namespace platform::core
