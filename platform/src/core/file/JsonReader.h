#pragma once

#include "JsonSyntax.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <boost/rational.hpp>
#include <simdjson.h>

namespace platform::core {

// A JSON text (RFC 8259, UTF-8) parsed by simdjson into its tape, which holds
// the values and the strings decoded; the text need not outlive the tree.
// Beyond simdjson's rules the tree takes what FindJsonSyntaxError takes: a \u
// escape of an unpaired surrogate stands for U+FFFD.
class JsonTree {
public:
    // A tree, or the syntax error with the place FindJsonSyntaxError finds
    // for it; texts of 4 GB and more are refused.
    static JsonTree Parse(std::string_view text, std::optional<JsonSyntaxError>& error);

    simdjson::dom::element Root() const { return root_; }

private:
    // Owns the tape root_ points into; on the heap so that moves keep it.
    std::unique_ptr<simdjson::dom::parser> parser_;
    simdjson::dom::element root_;
};

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
    // The reader of the tree's top-level value; path names that value (empty
    // for the top level). The tree and the path's text must outlive the reader.
    JsonReader(const JsonTree& tree, std::string_view path)
        : value_(tree.Root())
        , rootPath_(path) {}

    std::string GetPath() const;
    bool IsNull() const { return value_.is_null(); }

    // A member of an object; a missing member is an error. When the key
    // repeats, the last member of that key counts.
    JsonReader Member(const char* key) const;
    // A member that may be left out; nothing when it is.
    std::optional<JsonReader> FindMember(const char* key) const;
    // Calls visit(key, member) for each member of an object in turn: one
    // pass for an object with many optional members. A repeated key is
    // visited each time, so the last one counts.
    template <typename Visit> void ForEachMember(const Visit& visit) const {
        for (const simdjson::dom::key_value_pair member : Object()) {
            // The tree ends each key with a zero byte.
            visit(member.key, JsonReader(member.value, this, member.key.data(), 0));
        }
    }
    std::size_t ArraySize() const;
    // One element, found by walking the array: for small arrays of a known
    // size. index must be below ArraySize.
    JsonReader Element(std::size_t index) const;
    // Calls visit(element, index) for each element of an array in turn.
    template <typename Visit> void ForEachElement(const Visit& visit) const {
        std::size_t index = 0;
        for (const simdjson::dom::element element : Array()) {
            visit(JsonReader(element, this, nullptr, index), index);
            ++index;
        }
    }

    std::string String() const;
    // The same string where the tree holds it.
    std::string_view StringView() const;
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
    JsonReader(simdjson::dom::element value, const JsonReader* parent, const char* key,
               std::size_t index)
        : value_(value)
        , parent_(parent)
        , key_(key)
        , index_(index) {}

    simdjson::dom::object Object() const;
    simdjson::dom::array Array() const;
    double Number() const;

    simdjson::dom::element value_;
    const JsonReader* parent_ = nullptr; // null for the top-level reader
    const char* key_ = nullptr;          // the member's key; null for an array element
    std::size_t index_ = 0;              // the element's index in its array
    std::string_view rootPath_;          // the top-level reader's path
};

} // namespace platform::core
