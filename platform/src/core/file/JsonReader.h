#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
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
//
// A member or element reader refers to the reader it came from and to the key
// it was asked for, and spells its path only when it fails: reading a large
// file builds no path strings. So a reader must not outlive its parent nor the
// key string, as holds for readers passed down a recursive descent.
class JsonReader {
public:
    // The reader of a document's top-level value; path names that value
    // (empty for the top level).
    JsonReader(QJsonValue value, std::string path)
        : value_(std::move(value))
        , rootPath_(std::move(path)) {}

    std::string GetPath() const;
    bool IsNull() const { return value_.isNull(); }

    // A member of an object; a missing member is an error.
    JsonReader Member(const char* key) const;
    // A member that may be left out; nothing when it is.
    std::optional<JsonReader> FindMember(const char* key) const;
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
    JsonReader(QJsonValue value, const JsonReader* parent, const char* key, std::size_t index)
        : value_(std::move(value))
        , parent_(parent)
        , key_(key)
        , index_(index) {}

    QJsonObject Object() const;
    QJsonArray Array() const;

    QJsonValue value_;
    const JsonReader* parent_ = nullptr; // null for the top-level reader
    const char* key_ = nullptr;          // the member's key; null for an array element
    std::size_t index_ = 0;              // the element's index in its array
    std::string rootPath_;               // the top-level reader's path
};

} // namespace platform::core
